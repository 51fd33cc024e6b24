// The named objects of a process: writers and readers.
#pragma once

#include "logfiles/ErrorLog.h"

#include <cstring>

namespace logfiles
{

// Room for ten objects with SetFilePath and GetFilePath, in the order in which their names came up. They
// are made with the registry, and none is ever removed.
template <typename Object> class Registry
{
public:
    // `operation` is the name under which a name beyond the room is reported.
    explicit Registry(const char* operation) : m_operation(operation) {}

    // The object for `name`, byte for byte; a new one gets the name first. An object without a name where
    // the name is null or refused, or the room is used up.
    Object& Define(const char* name)
    {
        if (!name)
            name = "";
        for (int i = 0; i < m_count; ++i)
        {
            if (std::strcmp(m_objects[i].GetFilePath(), name) == 0)
                return m_objects[i];
        }
        if (m_count == kCapacity)
        {
            Refuse(0, m_operation, "no room for an eleventh log", name);
            return m_unnamed;
        }
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

    const char* m_operation;
    Object m_objects[kCapacity];
    Object m_unnamed;
    int m_count = 0;
};

} // namespace logfiles
