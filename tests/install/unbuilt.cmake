# cmake -D SOURCE_FOLDER=... -D WORK_FOLDER=... -D GENERATOR=... -D COMPILER=... -P unbuilt.cmake
# Nothing is built here, as after a build of the program alone: installing says so, and copies nothing.
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${WORK_FOLDER})
execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE_FOLDER} -B ${WORK_FOLDER}/build -G ${GENERATOR}
    -D CMAKE_CXX_COMPILER=${COMPILER} -D MERVANE_BUILD_TESTS=OFF -D MERVANE_BUILD_EXAMPLES=OFF -D MERVANE_BUILD_CLI=OFF
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${WORK_FOLDER}/build --prefix ${WORK_FOLDER}/prefix
    --component development
  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(status EQUAL 0)
  message(FATAL_ERROR "Installing without a library was no failure:\n${output}")
endif()
if(NOT output MATCHES "cmake --build ${WORK_FOLDER}/build --target mervane")
  message(FATAL_ERROR "It was to say what to build. It said:\n${output}")
endif()
if(EXISTS ${WORK_FOLDER}/prefix)
  message(FATAL_ERROR "Something was installed all the same.")
endif()
