# The compiler's run-time DLLs, stripped (24 MB become 2), beside everything that is built and installed.
# They are shared and not linked in: exceptions cross the modules only with one run-time in the process.
set(runtimeDlls)
foreach(name libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
                    OUTPUT_VARIABLE source OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    set(stripped ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name})
    add_custom_command(OUTPUT ${stripped}
                       COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}
                       COMMAND ${CMAKE_STRIP} -o ${stripped} ${source}
                       DEPENDS ${source} COMMENT "Stripping ${name}" VERBATIM)
    list(APPEND runtimeDlls ${stripped})
endforeach()
add_custom_target(runtime_dlls ALL DEPENDS ${runtimeDlls})
install(PROGRAMS ${runtimeDlls} TYPE BIN)
