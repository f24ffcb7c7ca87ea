# The Debian packages: the shared libraries, and what programs are built with.
get_target_property(soversion tree800 SOVERSION)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tree800)
set(CPACK_PACKAGE_CONTACT "tree800 developers <tree800@example.org>")
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL library development)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "Shared libraries.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Headers, CMake package, pkg-config file, guides and examples.")
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS library)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)  # the development files need the same version

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libtree800-${soversion})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtree800-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)

include(CPack)
