// The array of the framework.
#pragma once

#include "afx.h"

#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

// An array that grows on demand. Indexes are counted from 0; one outside the array raises the
// invalid-argument exception, and so does a negative size. Running out of memory raises the memory exception
// and leaves the array as it was.
template <typename TYPE, typename ARG_TYPE = const TYPE&> class CArray : public CObject
{
public:
    INT_PTR GetSize() const { return static_cast<INT_PTR>(m_items.size()); }
    INT_PTR GetCount() const { return GetSize(); }
    bool IsEmpty() const { return m_items.empty(); }
    INT_PTR GetUpperBound() const { return GetSize() - 1; }

    // New elements are value-initialised. `growBy` is a hint that this array has no use for.
    void SetSize(INT_PTR size, INT_PTR growBy = -1)
    {
        static_cast<void>(growBy);
        Check(size >= 0);
        Grow([&] { m_items.resize(static_cast<std::size_t>(size)); });
    }

    const TYPE& GetAt(INT_PTR index) const { return m_items[Index(index)]; }
    TYPE& GetAt(INT_PTR index) { return m_items[Index(index)]; }
    void SetAt(INT_PTR index, ARG_TYPE element) { m_items[Index(index)] = element; }
    TYPE& ElementAt(INT_PTR index) { return m_items[Index(index)]; }
    const TYPE& operator[](INT_PTR index) const { return GetAt(index); }
    TYPE& operator[](INT_PTR index) { return GetAt(index); }

    // The elements in order; null when there are none. Valid until the size changes.
    const TYPE* GetData() const { return m_items.empty() ? nullptr : m_items.data(); }
    TYPE* GetData() { return m_items.empty() ? nullptr : m_items.data(); }

    // Grows the array as far as `index` needs it.
    void SetAtGrow(INT_PTR index, ARG_TYPE element)
    {
        Check(index >= 0);
        TYPE copy = element; // may lie in this array
        if (index >= GetSize())
            SetSize(index + 1);
        m_items[static_cast<std::size_t>(index)] = std::move(copy);
    }

    // The index of the new element.
    INT_PTR Add(ARG_TYPE element)
    {
        Grow([&] { m_items.push_back(element); });
        return GetUpperBound();
    }

    // Appends the other array's elements, which may be this one's; the index of the first.
    INT_PTR Append(const CArray& other)
    {
        const INT_PTR first = GetSize();
        InsertCopy(first, other.m_items);
        return first;
    }

    void Copy(const CArray& other)
    {
        if (this != &other)
            Grow([&] { m_items = std::vector<TYPE>(other.m_items); });
    }

    // Inserts before `index`; beyond the end the array first grows to it.
    void InsertAt(INT_PTR index, ARG_TYPE element, INT_PTR count = 1)
    {
        Check(index >= 0 && count >= 0);
        Grow([&] { InsertCopy(index, std::vector<TYPE>(static_cast<std::size_t>(count), element)); });
    }
    void InsertAt(INT_PTR index, CArray* other)
    {
        Check(index >= 0 && other);
        InsertCopy(index, other->m_items);
    }

    void RemoveAt(INT_PTR index, INT_PTR count = 1)
    {
        Check(index >= 0 && count >= 0 && index <= GetSize() && count <= GetSize() - index);
        m_items.erase(m_items.begin() + index, m_items.begin() + index + count);
    }
    void RemoveAll() { m_items = {}; }

private:
    static void Check(bool valid)
    {
        if (!valid)
            AfxThrowInvalidArgException();
    }

    std::size_t Index(INT_PTR index) const
    {
        Check(index >= 0 && index < GetSize());
        return static_cast<std::size_t>(index);
    }

    template <typename Change> static void Grow(Change change)
    {
        try
        {
            change();
        }
        catch (const std::bad_alloc&)
        {
            AfxThrowMemoryException();
        }
        catch (const std::length_error&)
        {
            AfxThrowMemoryException();
        }
    }

    // Takes the elements by value: they may be this array's own.
    void InsertCopy(INT_PTR index, const std::vector<TYPE>& elements)
    {
        Grow([&] {
            std::vector<TYPE> copy(elements);
            const bool beyond = index > GetSize();
            m_items.reserve(static_cast<std::size_t>(beyond ? index : GetSize()) + copy.size());
            if (beyond)
                SetSize(index);
            m_items.insert(m_items.begin() + index, std::make_move_iterator(copy.begin()),
                           std::make_move_iterator(copy.end()));
        });
    }

    std::vector<TYPE> m_items;
};
