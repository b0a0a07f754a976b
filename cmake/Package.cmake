# `cpack -G DEB` (from the build directory) makes one Debian package of everything the install
# rules put in place, under /usr: the libraries, the headers, the CMake and pkg-config files,
# fnet and its manual page. dpkg-shlibdeps finds the run-time dependencies (libicu72, libstdc++6,
# libc6...) from the binaries themselves.
set(CPACK_PACKAGE_NAME foundation-network)
set(CPACK_PACKAGE_VENDOR "foundation-network")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "IRIs, internationalized domain names, IP addresses and network interfaces for C++")
set(CPACK_PACKAGE_DESCRIPTION
    "The foundation::network shared library (IRI, IdnConverter, InetAddress, NetworkInterface), its C++17 headers, CMake and pkg-config files, and the fnet command-line tool.")
set(CPACK_PACKAGE_CONTACT "foundation-network maintainers <maintainers@foundation-network.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The libraries find one another in their own directory; dpkg-shlibdeps must too.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    "${PROJECT_BINARY_DIR}/src;${PROJECT_BINARY_DIR}/core;${PROJECT_BINARY_DIR}/i18n")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEB_COMPONENT_INSTALL OFF)
set(CPACK_OUTPUT_FILE_PREFIX "${PROJECT_BINARY_DIR}/packages")
include(CPack)
