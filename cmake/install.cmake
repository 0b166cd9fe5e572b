# The installed package: find_package(vgui) gives vgui::vgui, which brings the framework with it as vgui::mfc.
# The tree may be moved.
include(CMakePackageConfigHelpers)
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/vgui")

install(TARGETS vgui EXPORT vguiTargets
  FILE_SET headers DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
if(MINGW)
  install(TARGETS mfc mfc_main EXPORT vguiTargets
    FILE_SET headers DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/mfcsubset"
    FILE_SET header_parts DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/mfcsubset")
  install(FILES ${VGUI_RUNTIME_DLLS} DESTINATION "${CMAKE_INSTALL_BINDIR}")
  set(VGUI_BUILT_WITH_MINGW TRUE)
else()
  install(TARGETS mfc EXPORT vguiTargets)
  set(VGUI_BUILT_WITH_MINGW FALSE)
endif()
install(EXPORT vguiTargets NAMESPACE vgui:: DESTINATION "${package_dir}")

configure_package_config_file(cmake/vguiConfig.cmake.in "${PROJECT_BINARY_DIR}/vguiConfig.cmake"
  INSTALL_DESTINATION "${package_dir}"
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/vguiConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/vguiConfig.cmake"
  "${PROJECT_BINARY_DIR}/vguiConfigVersion.cmake"
  DESTINATION "${package_dir}")
