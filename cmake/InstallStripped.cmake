# qm_install(TARGET [ARGUMENTS...]) installs a DLL or a program, as install(TARGETS) does, without its symbols.
# They go into bin/.debug, where gdb and addr2line find them by the link that the stripped file carries.
function(qm_install target)
    install(TARGETS ${target} ${ARGN})
    install(CODE "
        set(bin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
        set(built \"$<TARGET_FILE:${target}>\")
        set(name \"$<TARGET_FILE_NAME:${target}>\")
        file(MAKE_DIRECTORY \"\${bin}/.debug\")
        foreach(options IN ITEMS \"--only-keep-debug;\${built};\${name}.debug\"
                                 \"--strip-all;--add-gnu-debuglink=\${name}.debug;\${built};../\${name}\")
            execute_process(COMMAND \"${CMAKE_OBJCOPY}\" \${options}
                            WORKING_DIRECTORY \"\${bin}/.debug\" COMMAND_ERROR_IS_FATAL ANY)
        endforeach()")
endfunction()
