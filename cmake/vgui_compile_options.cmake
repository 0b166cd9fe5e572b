# vgui_compile_options: how this project compiles its own code. Linked privately; hosts see none of it.
add_library(vgui_compile_options INTERFACE)

if(MSVC)
  target_compile_options(vgui_compile_options INTERFACE
    "$<$<COMPILE_LANGUAGE:CXX>:/W4;/utf-8;/permissive-;/Zc:__cplusplus>"
    "$<$<AND:$<COMPILE_LANGUAGE:CXX>,$<BOOL:${VGUI_WERROR}>>:/WX>")
  target_compile_definitions(vgui_compile_options INTERFACE NOMINMAX)
  return()
endif()

set(cxx_options
  -Wall -Wextra -Wpedantic
  -Wdate-time
  -Wduplicated-cond
  -Wextra-semi
  -Wlogical-op
  -Wredundant-decls
  -Wshadow=local
  -Wvla
  # "#pragma comment" and "#pragma warning" are for the other compiler.
  -Wno-unknown-pragmas
  -fstack-protector-strong
  # The same sources give the same binaries, wherever they lie: __FILE__ is relative to the project, the
  # debugger looks below /usr/src/vgui. The last option that fits counts, and the build folder may lie within
  # the sources.
  "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/="
  "-fdebug-prefix-map=${PROJECT_SOURCE_DIR}=/usr/src/vgui"
  "-fdebug-prefix-map=${PROJECT_BINARY_DIR}=/usr/src/vgui/build")
if(VGUI_WERROR)
  list(APPEND cxx_options -Werror)
endif()
if(VGUI_TRAP_UNDEFINED)
  # Traps need no run-time library, which there is none of for this target.
  list(APPEND cxx_options
    -fsanitize=undefined,float-cast-overflow -fsanitize-undefined-trap-on-error
    # MFC code calls GetSafeHwnd and its kin on null pointers by right.
    -fno-sanitize=null
    # The checks confuse the analysis behind these warnings.
    -Wno-maybe-uninitialized -Wno-array-bounds -Wno-stringop-overflow)
endif()
if(VGUI_RUNTIME_CHECKS)
  # The checks of _FORTIFY_SOURCE need the optimiser.
  list(APPEND cxx_options -Og)
  target_compile_definitions(vgui_compile_options INTERFACE
    "$<$<COMPILE_LANGUAGE:CXX>:_FORTIFY_SOURCE=2;_GLIBCXX_ASSERTIONS>")
  target_link_libraries(vgui_compile_options INTERFACE ssp)
endif()
target_compile_options(vgui_compile_options INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:${cxx_options}>")
target_link_options(vgui_compile_options INTERFACE -fstack-protector-strong -Wl,--no-insert-timestamp)

# Resource scripts are UTF-8.
string(APPEND CMAKE_RC_FLAGS " -c 65001")
