# Builds the reference of the public headers with Doxygen; anything that is not documented fails it.
#
#   cmake -DDOXYGEN=<program> -DPROJECT_...=<what Doxyfile.in uses> -DVGUI_DOCS_DIR=<where to> -P build_api.cmake
#
# Public is a header that exports something, and vgui.h, which includes them.
find_program(AWK awk)
if(NOT DOXYGEN OR NOT AWK)
  message(FATAL_ERROR "the reference needs doxygen (found: ${DOXYGEN}) and awk (found: ${AWK}); after an "
    "installation, which scripts/setup makes, configure the build again")
endif()

set(VGUI_PUBLIC_HEADERS "\"${PROJECT_SOURCE_DIR}/vgui/vgui.h\"")
file(GLOB_RECURSE headers "${PROJECT_SOURCE_DIR}/vgui/*.h")
foreach(header IN LISTS headers)
  file(STRINGS "${header}" exports REGEX "VGUI_API" LIMIT_COUNT 1)
  if(exports)
    string(APPEND VGUI_PUBLIC_HEADERS " \"${header}\"")
  endif()
endforeach()

file(REMOVE_RECURSE "${VGUI_DOCS_DIR}")
file(MAKE_DIRECTORY "${VGUI_DOCS_DIR}")
configure_file("${CMAKE_CURRENT_LIST_DIR}/Doxyfile.in" "${VGUI_DOCS_DIR}/Doxyfile" @ONLY)
execute_process(COMMAND "${DOXYGEN}" "${VGUI_DOCS_DIR}/Doxyfile" RESULT_VARIABLE result)
if(result)
  message(FATAL_ERROR "the reference has warnings, see above")
endif()
if(NOT EXISTS "${VGUI_DOCS_DIR}/index.html")
  message(FATAL_ERROR "doxygen wrote no reference")
endif()
