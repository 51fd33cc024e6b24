# The modules of the library, and what each of them can see.

# qm_sees(TARGET BASE FOLDER...): the target's sources can include the headers of these folders below BASE, by their
# path from there, and of no others: an include against the arrows of docs/architecture.md finds no file.
# The include folder is one of links.
function(qm_sees target base)
    set(root ${CMAKE_BINARY_DIR}/sees/${target})
    foreach(folder IN LISTS ARGN)
        cmake_path(GET folder PARENT_PATH parent)
        file(MAKE_DIRECTORY ${root}/${parent})
        file(CREATE_LINK ${base}/${folder} ${root}/${folder} SYMBOLIC)
    endforeach()
    target_include_directories(${target} PRIVATE ${root})
    if(QM_COVERAGE) # a header is counted once, whoever includes it by a link
        foreach(folder IN LISTS ARGN)
            target_compile_options(${target} PRIVATE
                $<$<COMPILE_LANGUAGE:CXX>:-ffile-prefix-map=${root}/${folder}=${base}/${folder}>)
        endforeach()
    elseif(WIN32)
        target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-ffile-prefix-map=${root}=.>)
    endif()
endfunction()

# qm_add_part(NAME SOURCE...): a module that becomes part of QmLog.dll, with include folders of its own.
function(qm_add_part name)
    add_library(${name} OBJECT ${ARGN})
    target_compile_definitions(${name} PRIVATE QMLOG_BUILD)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/include)
    target_link_libraries(${name} PRIVATE QmPlatform qm_options)
    target_sources(QmLog PRIVATE $<TARGET_OBJECTS:${name}>)
    target_precompile_headers(${name} REUSE_FROM qm_precompiled)
endfunction()
