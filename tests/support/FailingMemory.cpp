// The linker sends what calls operator new here (--wrap), so that the sanitizer's own stays in use.
#include "tests/support/FailingMemory.h"

// operator new and operator new[] as the compiler names them
extern "C" void* __real__Znwm(std::size_t size);
extern "C" void* __wrap__Znwm(std::size_t size);
extern "C" void* __real__Znam(std::size_t size);
extern "C" void* __wrap__Znam(std::size_t size);

namespace
{

void Count()
{
    if (g_allocationsLeft == 0)
        throw std::bad_alloc();
    g_allocationsLeft -= g_allocationsLeft > 0 ? 1 : 0;
}

} // namespace

void* __wrap__Znwm(std::size_t size)
{
    Count();
    return __real__Znwm(size);
}

void* __wrap__Znam(std::size_t size)
{
    Count();
    return __real__Znam(size);
}
