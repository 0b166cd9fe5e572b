# One version everywhere: the DLL's resource, the package, the changelog, the port.
cmake_minimum_required(VERSION 3.25)

function(expect_version where found)
  if(NOT found STREQUAL VERSION)
    message(SEND_ERROR "${where} says version \"${found}\" instead of ${VERSION}")
  endif()
endfunction()

# In the resource the file's and the product's version follow the signature, each as four little-endian words:
# minor, major, zero, patch.
file(READ "${BUILD_DIR}/bin/vgui.dll" dll HEX)
if(NOT dll MATCHES "bd04effe00000100(................)(................)")
  message(FATAL_ERROR "vgui.dll has no version resource")
endif()
foreach(version IN ITEMS ${CMAKE_MATCH_1} ${CMAKE_MATCH_2})
  string(REGEX REPLACE "(..)(..)(..)(..)0000(..)(..)" "0x\\4\\3;0x\\2\\1;0x\\6\\5" words ${version})
  set(numbers)
  foreach(word IN LISTS words)
    math(EXPR number "${word}")
    list(APPEND numbers ${number})
  endforeach()
  list(JOIN numbers "." found)
  expect_version("vgui.dll" "${found}")
endforeach()

set(PACKAGE_FIND_VERSION "${VERSION}")
include("${PREFIX}/lib/cmake/vgui/vguiConfigVersion.cmake")
expect_version("the package" "${PACKAGE_VERSION}")

file(STRINGS "${SOURCE_DIR}/CHANGELOG.md" headings REGEX "^## ")
list(GET headings 0 heading)
string(REGEX MATCH "[0-9]+\\.[0-9]+\\.[0-9]+" found "${heading}")
expect_version("the first heading of CHANGELOG.md" "${found}")

file(READ "${SOURCE_DIR}/ports/vgui/vcpkg.json" manifest)
string(JSON found GET "${manifest}" version)
expect_version("ports/vgui/vcpkg.json" "${found}")
