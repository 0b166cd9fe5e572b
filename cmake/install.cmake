# The installed package: find_package(VGui) gives vgui::vgui, and mfc::mfc with it.
include(CMakePackageConfigHelpers)
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/VGui")

install(TARGETS vgui EXPORT VGuiTargets
  FILE_SET headers DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(EXPORT VGuiTargets NAMESPACE vgui:: DESTINATION "${package_dir}")

if(MINGW)
  install(TARGETS mfc EXPORT VGuiMfcTargets
    FILE_SET headers DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/mfcsubset"
    FILE_SET header_parts DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/mfcsubset")
  if(TARGET mfc_main)
    install(TARGETS mfc_main EXPORT VGuiMfcTargets)
  endif()
  install(FILES ${VGUI_RUNTIME_DLLS} DESTINATION "${CMAKE_INSTALL_BINDIR}")
else()
  install(TARGETS mfc EXPORT VGuiMfcTargets)
endif()
install(EXPORT VGuiMfcTargets NAMESPACE mfc:: DESTINATION "${package_dir}")

configure_package_config_file(cmake/VGuiConfig.cmake.in "${PROJECT_BINARY_DIR}/VGuiConfig.cmake"
  INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/VGuiConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/VGuiConfig.cmake"
  "${PROJECT_BINARY_DIR}/VGuiConfigVersion.cmake"
  DESTINATION "${package_dir}")
