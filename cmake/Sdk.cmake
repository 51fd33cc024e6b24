# What is installed beside the DLLs, programs and headers: the packages by which CMake and pkg-config find them, the
# tool chain, documents, examples and licences.
include(CMakePackageConfigHelpers)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/QmLog)

# The package itself says which compilers it suits, in words; the version file would only say that it does not fit.
write_basic_package_version_file(QmLogConfigVersion.cmake COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
install(FILES cmake/QmLogConfig.cmake cmake/mingw-w64.cmake ${CMAKE_CURRENT_BINARY_DIR}/QmLogConfigVersion.cmake
        DESTINATION ${package})
install(EXPORT QmLogTargets NAMESPACE QmLog:: DESTINATION ${package})

configure_file(cmake/qmlog.pc.in qmlog.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/qmlog.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# Documents and examples lie to each other as they do here, for their links.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md TYPE DOC)
install(DIRECTORY docs examples TYPE DOC)

# The examples' command lines come along: a customer need not have them, and where Debian puts them the cross
# compiler must not look.
install(DIRECTORY ${QM_DEPS}/include/CLI/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples/include/CLI)

# Of the run-time DLLs, and of what the compiler links from the system's libraries. Those of the libraries in
# build/deps come with them.
install(FILES /usr/share/doc/gcc-mingw-w64-base/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR}/licences RENAME gcc.txt)
install(FILES /usr/share/doc/mingw-w64-common/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR}/licences RENAME mingw-w64.txt)
install(FILES /usr/share/common-licenses/GPL-3 DESTINATION ${CMAKE_INSTALL_DOCDIR}/licences RENAME GPL-3.txt)
