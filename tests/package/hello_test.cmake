# Builds the example from the installed tree and runs it beside the installed DLLs.
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE "${WORK_DIR}/hello")
# Not optimised: what the compiler would otherwise make of inline functions has to be found in the DLLs.
execute_process(
  COMMAND "${CMAKE_COMMAND}" -S "${SOURCE_DIR}/examples/hello" -B "${WORK_DIR}/hello" -G "${GENERATOR}"
    --toolchain "${TOOLCHAIN_FILE}" "-DCMAKE_PREFIX_PATH=${PREFIX}" -DCMAKE_BUILD_TYPE=Debug
    "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Werror"
  COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${CMAKE_COMMAND}" --build "${WORK_DIR}/hello" COMMAND_ERROR_IS_FATAL ANY)
execute_process(
  COMMAND "${CMAKE_COMMAND}" --install "${WORK_DIR}/hello" --prefix "${PREFIX}"
  COMMAND_ERROR_IS_FATAL ANY)
execute_process(
  COMMAND "${SOURCE_DIR}/scripts/wine-run" --build "${BUILD_DIR}" "${PREFIX}/bin/hello.exe" /selftest
  WORKING_DIRECTORY "${WORK_DIR}"
  COMMAND_ERROR_IS_FATAL ANY)
