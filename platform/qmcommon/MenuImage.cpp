#include "qmcommon/MenuImage.h"

#include <mutex>
#include <set>
#include <string>

namespace qmcommon
{
namespace
{

// Few, for programs have few pictures.
struct ImageNames
{
    std::mutex mutex;
    std::set<std::string> names; // which stay where they are
};

ImageNames& KnownImages()
{
    static ImageNames known;
    return known;
}

} // namespace

ULONG_PTR ImageData(const char* name)
{
    if (!name)
        return 0;
    ImageNames& known = KnownImages();
    const std::lock_guard lock(known.mutex);
    return reinterpret_cast<ULONG_PTR>(&*known.names.insert(name).first);
}

const char* ImageOf(ULONG_PTR data)
{
    ImageNames& known = KnownImages();
    const std::lock_guard lock(known.mutex);
    for (const std::string& name : known.names)
        if (reinterpret_cast<ULONG_PTR>(&name) == data)
            return name.c_str();
    return nullptr;
}

} // namespace qmcommon
