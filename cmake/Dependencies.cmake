# The libraries that we build on, as tools/dependencies.sh has put them into build/deps. All are linked statically, and
# none shows in an exported header. Our warnings do not apply to them: imported targets are system headers.
set(QM_DEPS ${PROJECT_SOURCE_DIR}/build/deps)
foreach(folder pcre2-10.42/.ready sqlite3-3.40.1/.ready utf8proc-2.8.0/.ready include/date)
    if(NOT EXISTS ${QM_DEPS}/${folder})
        message(FATAL_ERROR "The libraries in build/deps are missing: run tools/setup.sh")
    endif()
endforeach()
enable_language(C)

# Command lines.
add_library(QmDeps::CLI11 INTERFACE IMPORTED GLOBAL)
target_include_directories(QmDeps::CLI11 INTERFACE ${QM_DEPS}/include)

# Calendar arithmetic and dates as texts. JSON.
foreach(library Date JSON)
    add_library(QmDeps::${library} INTERFACE IMPORTED GLOBAL)
    target_include_directories(QmDeps::${library} INTERFACE ${QM_DEPS}/include)
endforeach()

# Regular expressions. For Windows it is built here like a part of ours.
add_library(QmDeps::PCRE2 INTERFACE IMPORTED GLOBAL)
target_compile_definitions(QmDeps::PCRE2 INTERFACE PCRE2_CODE_UNIT_WIDTH=8)
function(qm_build_pcre2)
    set(CMAKE_POLICY_DEFAULT_CMP0077 NEW) # its options are what we set here
    set(CMAKE_POLICY_DEFAULT_CMP0126 NEW)
    set(CMAKE_WARN_DEPRECATED OFF)
    set(BUILD_SHARED_LIBS OFF)
    set(CMAKE_UNITY_BUILD OFF)
    set(PCRE2_SUPPORT_JIT ON)
    set(PCRE2_BUILD_PCRE2GREP OFF)
    set(PCRE2_BUILD_TESTS OFF)
    set(PCRE2_SHOW_REPORT OFF)
    add_subdirectory(${QM_DEPS}/pcre2-10.42 ${CMAKE_BINARY_DIR}/pcre2 EXCLUDE_FROM_ALL)
    # The code that its compiler makes does the matching. How that one is optimised and what matches where there is
    # no such code counts little, and takes as long as all the rest.
    target_compile_options(pcre2-8-static PRIVATE -g0)
    set_source_files_properties(
        ${QM_DEPS}/pcre2-10.42/src/pcre2_jit_compile.c ${QM_DEPS}/pcre2-10.42/src/pcre2_match.c
        TARGET_DIRECTORY pcre2-8-static PROPERTIES COMPILE_OPTIONS -O1)
    target_link_libraries(QmDeps::PCRE2 INTERFACE pcre2-8-static)
    target_include_directories(QmDeps::PCRE2 INTERFACE ${CMAKE_BINARY_DIR}/pcre2)
endfunction()
if(WIN32)
    qm_build_pcre2()
else()
    find_library(QM_PCRE2 libpcre2-8.a REQUIRED) # Debian's, of the same version
    target_link_libraries(QmDeps::PCRE2 INTERFACE ${QM_PCRE2})
endif()

# Databases. For Windows it is compiled here from its one file. Optimising further takes twice as long and makes
# saving and reading a tenth faster.
add_library(QmDeps::SQLite INTERFACE IMPORTED GLOBAL)
if(WIN32)
    add_library(sqlite3 STATIC EXCLUDE_FROM_ALL ${QM_DEPS}/sqlite3-3.40.1/sqlite3.c)
    # A connection is used by one thread at a time, no extension is ever loaded, and temporary data stays in memory.
    target_compile_definitions(sqlite3 PRIVATE
        SQLITE_THREADSAFE=2 SQLITE_DQS=0 SQLITE_DEFAULT_MEMSTATUS=0 SQLITE_LIKE_DOESNT_MATCH_BLOBS
        SQLITE_MAX_EXPR_DEPTH=0 SQLITE_TEMP_STORE=3 SQLITE_OMIT_DECLTYPE SQLITE_OMIT_DEPRECATED SQLITE_OMIT_JSON
        SQLITE_OMIT_LOAD_EXTENSION SQLITE_OMIT_PROGRESS_CALLBACK SQLITE_OMIT_SHARED_CACHE SQLITE_UNTESTABLE)
    target_compile_options(sqlite3 PRIVATE -O1 -g0)
    set_target_properties(sqlite3 PROPERTIES UNITY_BUILD OFF)
    target_link_libraries(QmDeps::SQLite INTERFACE sqlite3)
else()
    find_library(QM_SQLITE libsqlite3.a REQUIRED) # Debian's, of the same version
    target_link_libraries(QmDeps::SQLite INTERFACE ${QM_SQLITE} m)
endif()
target_include_directories(QmDeps::SQLite INTERFACE ${QM_DEPS}/sqlite3-3.40.1)

# What Unicode tells of characters: which of them are one to a reader, how wide they are, their capitals.
add_library(utf8proc STATIC EXCLUDE_FROM_ALL ${QM_DEPS}/utf8proc-2.8.0/utf8proc.c)
target_compile_definitions(utf8proc PUBLIC UTF8PROC_STATIC)
target_compile_options(utf8proc PRIVATE -O2 -g0)
target_include_directories(utf8proc SYSTEM PUBLIC ${QM_DEPS}/utf8proc-2.8.0)
set_target_properties(utf8proc PROPERTIES UNITY_BUILD OFF)
add_library(QmDeps::utf8proc ALIAS utf8proc)

install(DIRECTORY ${QM_DEPS}/licences DESTINATION ${CMAKE_INSTALL_DOCDIR})
