include(CMakePackageConfigHelpers)

get_property(tessel_targets GLOBAL PROPERTY TESSEL_INSTALLED_TARGETS)
install(TARGETS ${tessel_targets} EXPORT TesselTcamManagerTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# Headers keep their path from the repository root, so installed code
# includes them exactly as the project does ("manager/TesselTcamGroupManager.h").
foreach(dir platform sdk ${TESSEL_PRODUCT_DIRS})
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/${dir}
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/TesselTcamManager
    FILES_MATCHING PATTERN "*.h")
endforeach()

install(EXPORT TesselTcamManagerTargets
  NAMESPACE TesselTcamManager::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/TesselTcamManager)
configure_package_config_file(cmake/TesselTcamManagerConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/TesselTcamManagerConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/TesselTcamManager)
write_basic_package_version_file(
  ${CMAKE_CURRENT_BINARY_DIR}/TesselTcamManagerConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/TesselTcamManagerConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/TesselTcamManagerConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/TesselTcamManager)
