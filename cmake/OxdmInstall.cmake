# Installs liboxdm, its public headers under include/oxdm/, and a CMake
# package so that another project can find_package(oxdm CONFIG) and link
# oxdm::oxdm.
include(CMakePackageConfigHelpers)

install(TARGETS oxdm EXPORT oxdmTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/oxdm DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h")
install(EXPORT oxdmTargets NAMESPACE oxdm::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/oxdm)

configure_package_config_file(cmake/oxdmConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/oxdmConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/oxdm)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/oxdmConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/oxdmConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/oxdmConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/oxdm)
