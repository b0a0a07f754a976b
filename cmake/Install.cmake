# Install rules: headers, the three shared libraries, the tool and its manual page, a CMake
# package (find_package(FoundationNetwork) -> foundation::network) and a pkg-config file; and a
# Debian package of all of it (cmake/Package.cmake).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(FNET_CMAKE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/FoundationNetwork")

set_target_properties(foundation_network PROPERTIES EXPORT_NAME network)
set_target_properties(foundation_core PROPERTIES EXPORT_NAME core)
set_target_properties(fl_i18n PROPERTIES EXPORT_NAME fl_i18n)
# The libraries find each other in their own directory wherever the tree is installed.
set_target_properties(foundation_network foundation_core fl_i18n PROPERTIES INSTALL_RPATH "$ORIGIN")

install(TARGETS foundation_network foundation_core fl_i18n
    EXPORT FoundationNetworkTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
if(TARGET fnet)
    file(RELATIVE_PATH _fn_bin_to_lib "/prefix/${CMAKE_INSTALL_BINDIR}" "/prefix/${CMAKE_INSTALL_LIBDIR}")
    set_target_properties(fnet PROPERTIES INSTALL_RPATH "$ORIGIN/${_fn_bin_to_lib}")
    install(TARGETS fnet RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
    if(FNET_MAN_PAGE)
        install(FILES ${FNET_MAN_PAGE} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT runtime)
    endif()
endif()

install(EXPORT FoundationNetworkTargets
    NAMESPACE foundation::
    DESTINATION ${FNET_CMAKE_DIR} COMPONENT development)
configure_package_config_file(cmake/FoundationNetworkConfig.cmake.in
    "${PROJECT_BINARY_DIR}/FoundationNetworkConfig.cmake"
    INSTALL_DESTINATION ${FNET_CMAKE_DIR})
write_basic_package_version_file("${PROJECT_BINARY_DIR}/FoundationNetworkConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/FoundationNetworkConfig.cmake"
    "${PROJECT_BINARY_DIR}/FoundationNetworkConfigVersion.cmake"
    DESTINATION ${FNET_CMAKE_DIR} COMPONENT development)

# The .pc file finds its prefix from its own place, so an installed tree may be moved.
file(RELATIVE_PATH FNET_PC_TO_PREFIX "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file(cmake/foundation-network.pc.in "${PROJECT_BINARY_DIR}/foundation-network.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/foundation-network.pc"
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

include(${PROJECT_SOURCE_DIR}/cmake/Package.cmake)
