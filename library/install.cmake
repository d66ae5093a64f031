# What `cmake --install` leaves for programs: headers, the library, a CMake package and a pkg-config file.
option(MERVANE_INSTALL "Install the library." ${PROJECT_IS_TOP_LEVEL})
if(NOT MERVANE_INSTALL)
  return()
endif()

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

mervane_require_built(mervane COMPONENT development)

# The headers keep their folders under a root of the major version, since they include each other by folder.
set(header_root ${CMAKE_INSTALL_INCLUDEDIR}/mervane-${PROJECT_VERSION_MAJOR})
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/mervane)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/mervane DESTINATION ${header_root} COMPONENT development
  FILES_MATCHING PATTERN "*.h")
install(FILES ${PROJECT_SOURCE_DIR}/component/network_engine/network_engine.h
  DESTINATION ${header_root}/component/network_engine COMPONENT development)
# For a program that is a spreadsheet host itself: the ports, and where a thread is given its services.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/spreadsheet ${PROJECT_SOURCE_DIR}/platform/headless
  DESTINATION ${header_root} COMPONENT development FILES_MATCHING PATTERN "*.h")
file(GLOB port_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/platform/*.h)
install(FILES ${port_headers} DESTINATION ${header_root}/platform COMPONENT development)
install(FILES ${PROJECT_SOURCE_DIR}/support/globals.h ${PROJECT_SOURCE_DIR}/support/error_handler.h
  DESTINATION ${header_root}/support COMPONENT development)

install(TARGETS mervane EXPORT mervane
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  INCLUDES DESTINATION ${header_root})
install(EXPORT mervane NAMESPACE mervane:: FILE mervane-targets.cmake DESTINATION ${package_folder}
  COMPONENT development)
configure_package_config_file(mervane-config.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/mervane-config.cmake
  INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/mervane-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/mervane-config.cmake ${CMAKE_CURRENT_BINARY_DIR}/mervane-config-version.cmake
  DESTINATION ${package_folder} COMPONENT development)

# The pkg-config file finds its prefix from its own place, so that the tree can be moved.
file(RELATIVE_PATH prefix_from_pkgconfig /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(mervane.pc.in ${CMAKE_CURRENT_BINARY_DIR}/mervane.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/mervane.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT development)
