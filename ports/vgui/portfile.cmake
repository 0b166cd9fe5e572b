# An overlay port: it builds the sources that it lies in.
vcpkg_check_linkage(ONLY_DYNAMIC_LIBRARY ONLY_DYNAMIC_CRT)
get_filename_component(source_path "${CMAKE_CURRENT_LIST_DIR}/../.." ABSOLUTE)

vcpkg_cmake_configure(
  SOURCE_PATH "${source_path}"
  OPTIONS -DVGUI_BUILD_GALLERY=OFF -DVGUI_BUILD_TESTS=OFF -DVGUI_BUILD_BENCH=OFF)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME vgui CONFIG_PATH lib/cmake/vgui)
file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include")
vcpkg_install_copyright(FILE_LIST "${source_path}/LICENSE")
