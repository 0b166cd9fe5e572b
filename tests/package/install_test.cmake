# Installs, moves the tree to another place and looks at what is in it. Later tests use the moved tree.
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE "${WORK_DIR}")
execute_process(
  COMMAND "${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${WORK_DIR}/first"
  OUTPUT_QUIET
  COMMAND_ERROR_IS_FATAL ANY)
file(RENAME "${WORK_DIR}/first" "${PREFIX}")

# What a host needs, one of each kind.
foreach(file IN ITEMS
    bin/vgui.dll bin/mfcsubset.dll bin/libstdc++-6.dll bin/libgcc_s_seh-1.dll bin/libwinpthread-1.dll
    lib/libvgui.dll.a lib/libmfcsubset.dll.a
    include/vgui/vgui.h include/vgui/export.h include/vgui/dialogs/gui_dlg.h include/mfcsubset/afxwin.h)
  if(NOT EXISTS "${PREFIX}/${file}")
    message(SEND_ERROR "${file} is not installed")
  endif()
endforeach()

# Headers that vgui.h does not lead to are the library's own.
foreach(file IN ITEMS include/vgui/foundation/gdi_scope.h include/vgui/res)
  if(EXISTS "${PREFIX}/${file}")
    message(SEND_ERROR "${file} is installed")
  endif()
endforeach()

file(GLOB scripts "${PREFIX}/lib/cmake/vgui/*.cmake")
if(NOT scripts)
  message(SEND_ERROR "There are no package files")
endif()
foreach(script IN LISTS scripts)
  file(READ "${script}" text)
  foreach(folder IN ITEMS "${SOURCE_DIR}" "${BUILD_DIR}" "${WORK_DIR}")
    string(FIND "${text}" "${folder}" position)
    if(NOT position EQUAL -1)
      message(SEND_ERROR "${script} names ${folder}, so the tree cannot be moved")
    endif()
  endforeach()
endforeach()
