# find_package(QmLog) gives QmLog::QmLog, which brings QmLog::QmPlatform.
#
# Classes and strings cross the border of the DLLs, so the caller's compiler has to lay them out in the same way.
if(NOT MINGW OR NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU" OR NOT CMAKE_SIZEOF_VOID_P EQUAL 8)
    string(CONCAT QmLog_NOT_FOUND_MESSAGE
        "QmLog can be used with MinGW-w64 GCC for 64-bit Windows, not with ${CMAKE_CXX_COMPILER_ID} for "
        "${CMAKE_SYSTEM_NAME} ${CMAKE_SYSTEM_PROCESSOR}: configure in a fresh folder, on Debian with "
        "-DCMAKE_TOOLCHAIN_FILE=${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake. Other compilers for 64-bit Windows take "
        "QmLogC.h or QmLog.hpp, and link lib/QmLog.lib")
    set(QmLog_FOUND FALSE)
    return()
endif()

include(${CMAKE_CURRENT_LIST_DIR}/QmLogTargets.cmake)
