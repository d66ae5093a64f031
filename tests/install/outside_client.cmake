# cmake -D BUILD_FOLDER=... -D WORK_FOLDER=... ... -P outside_client.cmake; stops with a message where a step fails.
cmake_minimum_required(VERSION 3.25)

set(first_prefix ${WORK_FOLDER}/first)
set(prefix ${WORK_FOLDER}/moved)
file(READ ${CMAKE_CURRENT_LIST_DIR}/expected_output.txt expected)

function(run what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${what} failed with status ${status}:\n${output}")
  endif()
endfunction()

function(check_output program how)
  execute_process(COMMAND ${program} RESULT_VARIABLE status OUTPUT_VARIABLE output)
  if(NOT status EQUAL 0 OR NOT output STREQUAL expected)
    message(FATAL_ERROR "The program built by ${how} ended with status ${status} and printed:\n${output}\n"
      "Expected:\n${expected}")
  endif()
endfunction()

# 1. Install, and move the tree: nothing in it may hold the place where it was first.
file(REMOVE_RECURSE ${WORK_FOLDER})
set(configuration "")
if(CONFIGURATION)
  set(configuration --config ${CONFIGURATION})
endif()
run("Installing" ${CMAKE_COMMAND} --install ${BUILD_FOLDER} --prefix ${first_prefix} --component development
  ${configuration})
file(RENAME ${first_prefix} ${prefix})

# 2. One library, and each header by itself, without the source tree.
file(GLOB libraries ${prefix}/${LIBRARY_FOLDER}/*.a)
if(NOT libraries STREQUAL "${prefix}/${LIBRARY_FOLDER}/libmervane.a")
  message(FATAL_ERROR "One library, libmervane.a, was to be installed. Found: ${libraries}")
endif()
file(GLOB header_root ${prefix}/include/mervane-*)
file(GLOB_RECURSE headers RELATIVE ${header_root} ${header_root}/*.h)
if(NOT "mervane/library.h" IN_LIST headers OR NOT "mervane/classifier3.h" IN_LIST headers
    OR NOT "mervane/published_errors.h" IN_LIST headers OR NOT "mervane/service_errors.h" IN_LIST headers
    OR NOT "component/network_engine/network_engine.h" IN_LIST headers)
  message(FATAL_ERROR "A public header is missing. Found: ${headers}")
endif()
set(units "")
foreach(header IN LISTS headers)
  string(MAKE_C_IDENTIFIER ${header} name)
  file(WRITE ${WORK_FOLDER}/headers/${name}.cpp "#include <${header}>\n#include <${header}>\n")
  list(APPEND units ${WORK_FOLDER}/headers/${name}.cpp)
endforeach()
run("Compiling the headers one by one" ${COMPILER} -std=c++20 -fsyntax-only -Wall -Wextra -Werror -I ${header_root}
  ${units})

# 3. By find_package.
run("Configuring the program" ${CMAKE_COMMAND} -S ${EXAMPLE_FOLDER} -B ${WORK_FOLDER}/client -G ${GENERATOR}
  -D CMAKE_PREFIX_PATH=${prefix} -D CMAKE_CXX_COMPILER=${COMPILER} -D CMAKE_CXX_FLAGS=${CLIENT_FLAGS}
  -D CMAKE_FIND_PACKAGE_PREFER_CONFIG=ON)
file(STRINGS ${WORK_FOLDER}/client/CMakeCache.txt found REGEX "^mervane_DIR")
if(NOT found MATCHES "${prefix}")
  message(FATAL_ERROR "The program was not configured with the installed tree but with ${found}")
endif()
run("Building the program" ${CMAKE_COMMAND} --build ${WORK_FOLDER}/client)
check_output(${WORK_FOLDER}/client/cpp_client find_package)

# 4. By pkg-config.
find_program(pkg_config NAMES pkg-config pkgconf REQUIRED)
set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBRARY_FOLDER}/pkgconfig)
execute_process(COMMAND ${pkg_config} --cflags --libs mervane OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE
  COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${flags}")
separate_arguments(client_flags UNIX_COMMAND "${CLIENT_FLAGS}")
run("Compiling the program with pkg-config's flags" ${COMPILER} -std=c++20 ${client_flags} ${EXAMPLE_FOLDER}/main.cpp
  -o ${WORK_FOLDER}/pkg_config_client ${flags})
check_output(${WORK_FOLDER}/pkg_config_client pkg-config)
