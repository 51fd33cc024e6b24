// Which object stands for which handle of the system.
#pragma once

#include <memory>
#include <unordered_map>
#include <utility>

// Permanent objects have attached the handle and are their owner's; temporary ones were made to have an
// object at all, belong to the map and give up their handle before they go. `Object` has Detach.
template <typename Object> class HandleMap
{
public:
    void Add(void* handle, Object* object) { m_permanent[handle] = object; }

    // Another object may have attached the handle: it stays.
    void Remove(void* handle, const Object* object)
    {
        const auto found = m_permanent.find(handle);
        if (found != m_permanent.end() && found->second == object)
            m_permanent.erase(found);
    }

    Object* FindPermanent(void* handle) const
    {
        const auto found = m_permanent.find(handle);
        return found == m_permanent.end() ? nullptr : found->second;
    }

    // The permanent object, else the temporary one, else null.
    Object* Find(void* handle) const
    {
        if (Object* const permanent = FindPermanent(handle))
            return permanent;
        const auto found = m_temporary.find(handle);
        return found == m_temporary.end() ? nullptr : found->second.get();
    }

    // Takes `object`, which has the handle; an older temporary one goes.
    Object* AddTemporary(void* handle, std::unique_ptr<Object> object)
    {
        std::unique_ptr<Object>& place = m_temporary[handle];
        Release(place);
        place = std::move(object);
        return place.get();
    }

    void DeleteTemporary()
    {
        auto objects = std::exchange(m_temporary, {});
        for (auto& [handle, object] : objects)
            Release(object);
    }

private:
    static void Release(std::unique_ptr<Object>& object)
    {
        if (object)
            object->Detach();
        object.reset();
    }

    std::unordered_map<void*, Object*> m_permanent;
    std::unordered_map<void*, std::unique_ptr<Object>> m_temporary;
};
