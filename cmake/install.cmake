# What is installed, and how other projects find it. Every path is relative to the file that names
# it, so an installed tree may be moved.
include(CMakePackageConfigHelpers)

install(TARGETS tree800 tree800_host
    EXPORT tree800Config
    LIBRARY COMPONENT library NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development)
install(DIRECTORY include/tree DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

# The guides follow the examples, so that these lie beside them as in the sources.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md
    DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development
    FILES_MATCHING PATTERN "*.md" PATTERN "*.cpp" PATTERN "*.h" PATTERN "*.txt" PATTERN "*.csv"
    PATTERN CMakeLists.txt EXCLUDE)

# The library depends on no other package, so the exported targets are the whole of its CMake
# package.
set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/tree800)
write_basic_package_version_file(tree800ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(EXPORT tree800Config NAMESPACE tree800:: DESTINATION ${packageDir} COMPONENT development)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tree800ConfigVersion.cmake
    DESTINATION ${packageDir} COMPONENT development)

set(pcDir ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH prefixFromPc ${pcDir} ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH libdirFromPrefix ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH includedirFromPrefix ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
set(checkedFlag "")
if(TREE800_CHECKED)
    set(checkedFlag " -DTREE800_CHECKED")
endif()
configure_file(cmake/tree800.pc.in tree800.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tree800.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
