// The named objects of a process: writers and readers.
#pragma once

#include <cstring>

namespace logfiles
{

// Room for ten objects with SetFilePath and GetFilePath, in the order in which their names came up. They
// are made with the registry, and none is ever removed.
template <typename Object> class Registry
{
public:
    // The object for `name`, byte for byte; a new one gets the name first. An object without a name where
    // the name is null or refused, or the room is used up.
    Object& Define(const char* name)
    {
        if (name == nullptr)
            return m_unnamed;
        for (int i = 0; i < m_count; ++i)
        {
            if (std::strcmp(m_objects[i].GetFilePath(), name) == 0)
                return m_objects[i];
        }
        if (m_count == kCapacity)
            return m_unnamed;
        Object& object = m_objects[m_count];
        object.SetFilePath(name);
        if (*object.GetFilePath() == '\0')
            return m_unnamed;
        ++m_count;
        return object;
    }

    Object* begin() { return m_objects; }
    Object* end() { return m_objects + m_count; }

private:
    static constexpr int kCapacity = 10;

    Object m_objects[kCapacity];
    Object m_unnamed;
    int m_count = 0;
};

} // namespace logfiles
