# Build rules that every folder shares.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(PROJECT_IS_TOP_LEVEL)
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
  find_program(MERVANE_CCACHE ccache)
  if(MERVANE_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${MERVANE_CCACHE})
  endif()
endif()

# Flags of every target of ours. Floating point is done in the order written, in 64-bit arithmetic, without
# fused operations, so that every target gives the same bits.
add_library(mervane_flags INTERFACE)
target_compile_options(mervane_flags INTERFACE
  -ffp-contract=off
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Wold-style-cast
  -Woverloaded-virtual -Wimplicit-fallthrough
  $<$<BOOL:${MERVANE_WARNINGS_AS_ERRORS}>:-Werror>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # Joining texts sets off a false alarm of this compiler (its bug 105651), mended in version 13.
  target_compile_options(mervane_flags INTERFACE -Wno-restrict)
endif()
if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "^(i.86|x86)$")
  # The x87 unit computes in extended precision; SSE2 gives the 64-bit results of every other target.
  target_compile_options(mervane_flags INTERFACE -msse2 -mfpmath=sse)
endif()
target_include_directories(mervane_flags INTERFACE
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>)
if(WIN32)
  # Interfaces of the component model have no virtual destructor; an object ends by its count.
  target_compile_options(mervane_flags INTERFACE -Wno-non-virtual-dtor)
endif()
if(MERVANE_SANITIZE)
  target_compile_options(mervane_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(mervane_flags INTERFACE -fsanitize=address,undefined)
endif()
if(MERVANE_COVERAGE)
  target_compile_options(mervane_flags INTERFACE --coverage)
  target_link_options(mervane_flags INTERFACE --coverage)
endif()

# mervane_library(NAME SOURCES a.cpp ... [LINKS mervane_x ...]): one static library of one folder.
function(mervane_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC mervane_flags ${arg_LINKS})
endfunction()

# mervane_test(NAME SOURCES a_test.cpp ... [LINKS ...]): one test program of one folder, its cases known to ctest.
#
# Most of the time of a test's compilation goes into the test framework's headers, so all tests share them compiled once,
# and tests are not optimised much.
function(mervane_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "ONE_RUN" "" "SOURCES;LINKS")
  if(NOT TARGET mervane_test_headers)
    file(WRITE ${CMAKE_BINARY_DIR}/test_headers.cpp "int main() { return 0; }\n")
    add_executable(mervane_test_headers EXCLUDE_FROM_ALL ${CMAKE_BINARY_DIR}/test_headers.cpp)
    mervane_test_options(mervane_test_headers)
    target_precompile_headers(mervane_test_headers PRIVATE
      <gtest/gtest.h> <algorithm> <cstdint> <functional> <map> <memory> <optional> <string> <variant> <vector>)
  endif()
  add_executable(${name} ${arg_SOURCES})
  mervane_test_options(${name})
  target_link_libraries(${name} PRIVATE ${arg_LINKS})
  target_precompile_headers(${name} REUSE_FROM mervane_test_headers)
  if(CMAKE_CROSSCOMPILING OR arg_ONE_RUN)
    # To start an emulated program takes longer than most cases: each program is started once, and its own results count.
    # So is one that starts something large for all its cases.
    add_test(NAME ${name} COMMAND ${name} --gtest_output=xml:test_results/${name}.xml
      WORKING_DIRECTORY ${PROJECT_BINARY_DIR})
    set_tests_properties(${name} PROPERTIES TIMEOUT 300)
  else()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 300)
  endif()
endfunction()

function(mervane_test_options name)
  target_link_libraries(${name} PRIVATE mervane_flags GTest::gtest_main)
  target_compile_options(${name} PRIVATE $<$<NOT:$<BOOL:${MERVANE_SANITIZE}>>:-O1>)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # At this level the false alarm about joined texts has more names.
    target_compile_options(${name} PRIVATE -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
  endif()
  # The path of the checkout goes to the files alone that ask for it: the others stay the same in every checkout, and a
  # compiler cache finds them again.
  get_target_property(sources ${name} SOURCES)
  foreach(source ${sources})
    cmake_path(ABSOLUTE_PATH source)
    file(STRINGS ${source} asks REGEX MERVANE_SOURCE_DIR LIMIT_COUNT 1)
    if(asks)
      set_property(SOURCE ${source} APPEND PROPERTY COMPILE_DEFINITIONS MERVANE_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
    endif()
  endforeach()
endfunction()

# mervane_require_built(TARGET [COMPONENT name]): stops an installation before anything is copied where that target has not
# been built, and says what to build. Stands before the install rules that it guards.
function(mervane_require_built target)
  install(CODE "
    if(NOT EXISTS \"$<TARGET_FILE:${target}>\")
      message(FATAL_ERROR \"There is no $<TARGET_FILE:${target}> to install. Build it first:\\n\"
        \"  cmake --build ${PROJECT_BINARY_DIR} --target ${target}\")
    endif()" ${ARGN})
endfunction()
