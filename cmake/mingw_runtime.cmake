# Copies the compiler's run-time DLLs beside the programs. They are shared, not linked in: one copy of the
# C++ run-time serves all modules, which is what lets an exception be rethrown in another module.
set(VGUI_RUNTIME_DLLS)
foreach(dll IN ITEMS libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll libssp-0.dll)
  execute_process(
    COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${dll}"
    OUTPUT_VARIABLE dll_path
    OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
  if(NOT IS_ABSOLUTE "${dll_path}" OR NOT EXISTS "${dll_path}")
    message(FATAL_ERROR "The compiler's run-time library ${dll} was not found")
  endif()
  configure_file("${dll_path}" "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${dll}" COPYONLY)
  list(APPEND VGUI_RUNTIME_DLLS "${dll_path}")
endforeach()
