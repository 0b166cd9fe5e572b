# Configures hosts that the package does not fit and looks for its reason.
cmake_minimum_required(VERSION 3.25)

# The package as Visual Studio's build would install it, as far as the refusals go.
set(msvc_prefix "${WORK_DIR}/msvc")
file(REMOVE_RECURSE "${msvc_prefix}")
file(COPY "${PREFIX}/lib" DESTINATION "${msvc_prefix}")
set(config "${msvc_prefix}/lib/cmake/vgui/vguiConfig.cmake")
file(READ "${config}" text)
string(REPLACE "set(vgui_BUILT_WITH_MINGW TRUE)" "set(vgui_BUILT_WITH_MINGW FALSE)" changed "${text}")
if(changed STREQUAL text)
  message(FATAL_ERROR "The package does not say what it was built with")
endif()
file(WRITE "${config}" "${changed}")

# Configures a host; its variables follow. An empty reason: the package has to be found.
function(expect_reason prefix reason)
  file(REMOVE_RECURSE "${WORK_DIR}/host")
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -S "${SOURCE_DIR}/tests/package/host" -B "${WORK_DIR}/host" -G "${GENERATOR}"
      "-DCMAKE_PREFIX_PATH=${prefix}" ${ARGN}
    RESULT_VARIABLE result
    OUTPUT_VARIABLE output
    ERROR_VARIABLE output)
  string(REGEX REPLACE "[ \n]+" " " output "${output}")
  string(FIND "${output}" "${reason}" position)
  if(reason STREQUAL "" AND NOT result EQUAL 0)
    message(SEND_ERROR "Not found with ${ARGN}: ${output}")
  elseif(NOT reason STREQUAL "" AND (result EQUAL 0 OR position EQUAL -1))
    message(SEND_ERROR "Not refused with ${ARGN} because \"${reason}\": ${output}")
  endif()
endfunction()

expect_reason("${PREFIX}" "" -DMINGW=1)
expect_reason("${PREFIX}" "built with MinGW-w64, but the project's compiler is not" -DMSVC=1)
expect_reason("${PREFIX}" "built with MinGW-w64, but the project's compiler is not" -DUNIX=1)
expect_reason("${PREFIX}" "on its own subset of MFC, but CMAKE_MFC_FLAG asks" -DMINGW=1 -DCMAKE_MFC_FLAG=2)
expect_reason("${msvc_prefix}" "built with Visual Studio and Microsoft's MFC, but" -DMINGW=1)
expect_reason("${msvc_prefix}" "CMAKE_MFC_FLAG is 1, which links MFC statically" -DMSVC=1 -DCMAKE_MFC_FLAG=1)

# Past CMake the subset's headers still notice the other framework.
execute_process(
  COMMAND "${CXX_COMPILER}" -std=c++20 -fsyntax-only -x c++ -I "${PREFIX}/include" -I "${PREFIX}/include/mfcsubset"
    -D _MFC_VER=0x0E00 "${PREFIX}/include/vgui/vgui.h"
  RESULT_VARIABLE result
  OUTPUT_QUIET
  ERROR_VARIABLE output)
if(result EQUAL 0 OR NOT output MATCHES "cannot be mixed with Microsoft's MFC")
  message(SEND_ERROR "The headers let Microsoft's MFC pass: ${output}")
endif()
