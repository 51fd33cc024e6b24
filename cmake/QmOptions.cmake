# qm_options: what every target of this project is compiled and linked with.
# Targets link it as $<BUILD_INTERFACE:qm_options>, so that it never reaches a customer.
add_library(qm_options INTERFACE)
target_compile_features(qm_options INTERFACE cxx_std_20)

# The resource compiler takes none of these options.
target_compile_options(qm_options INTERFACE
    "$<$<COMPILE_LANGUAGE:CXX>:-Wall;-Wextra;-Wshadow;-Wconversion;-Werror>")

# Clang counts changes of sign as conversions and GCC does not; here the word means the same for both.
target_compile_options(qm_options INTERFACE $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>)

# A wrong index into a standard container ends the process instead of reading beyond it.
target_compile_definitions(qm_options INTERFACE _GLIBCXX_ASSERTIONS)

if(WIN32)
    target_compile_definitions(qm_options INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN)

    # The stack protector is an option of compiling only, and its few functions come from the static
    # library: as a link option it would bring in one more run-time DLL. Fortified calls exist only where
    # the optimiser runs.
    target_compile_options(qm_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fstack-protector-strong>)
    target_compile_definitions(qm_options INTERFACE $<$<NOT:$<CONFIG:Debug>>:_FORTIFY_SOURCE=2>)
    target_link_libraries(qm_options INTERFACE -Wl,-Bstatic -lssp -Wl,-Bdynamic)
    target_link_options(qm_options INTERFACE -Wl,--dynamicbase,--high-entropy-va,--nxcompat)
endif()

# What tests are compiled with besides: they are compiled more often than they run, and their debug information is
# there for names and lines. Fortified calls need the optimiser.
add_library(qm_test_options INTERFACE)
target_link_libraries(qm_test_options INTERFACE qm_options)
target_compile_options(qm_test_options INTERFACE -O0 -g1 -U_FORTIFY_SOURCE)

# Precompiled headers hold those of the system only. A compiler cache makes nothing of them and does better without.
if(CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
endif()

# Modules reuse one. It is made without any macro of theirs, or the compiler would not take it.
file(CONFIGURE OUTPUT precompiled.cpp CONTENT "")
add_library(qm_precompiled OBJECT EXCLUDE_FROM_ALL ${CMAKE_CURRENT_BINARY_DIR}/precompiled.cpp)
target_link_libraries(qm_precompiled PRIVATE qm_options)
set(precompiled <algorithm> <functional> <memory> <optional> <ostream> <string> <vector>)
if(WIN32)
    list(PREPEND precompiled <windows.h> <commctrl.h>)
endif()
target_precompile_headers(qm_precompiled PRIVATE ${precompiled})

option(QM_COVERAGE "Count how often each line runs" OFF)
if(WIN32 AND NOT QM_COVERAGE)
    # What ships names its sources by their path from this folder, wherever it was built. The last map that fits counts.
    add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>
                        $<$<COMPILE_LANGUAGE:CXX>:-ffile-prefix-map=${CMAKE_BINARY_DIR}=.>)
endif()
if(QM_COVERAGE)
    target_compile_options(qm_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:--coverage>)
    target_link_options(qm_options INTERFACE --coverage)
endif()
