// The linker sends what calls operator new here (--wrap), so that the sanitizer's own stays in use.
#include "tests/support/FailingMemory.h"

extern "C" void* __real__Znwm(std::size_t size); // operator new as the compiler names it
extern "C" void* __wrap__Znwm(std::size_t size);

void* __wrap__Znwm(std::size_t size)
{
    if (g_allocationsLeft == 0)
        throw std::bad_alloc();
    g_allocationsLeft -= g_allocationsLeft > 0 ? 1 : 0;
    return __real__Znwm(size);
}
