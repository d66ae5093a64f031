# Libraries of others, under the same target names on every machine.
#
# mervane_third_party(NAME ...) makes them known to the folder that calls it: cli11 json libzip pugixml utf8proc zlib.

if(WIN32 AND CMAKE_CROSSCOMPILING)
  # Debian has these for Linux alone, so a script builds them from its source packages.
  execute_process(COMMAND ${PROJECT_SOURCE_DIR}/scripts/windows_libraries
    OUTPUT_VARIABLE libraries OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(MERVANE_WINDOWS_LIBRARIES ${libraries} CACHE INTERNAL "Where the libraries for Windows are.")
  # One path for all versions of them, inside of the tree, so that compiler caches know it again.
  file(CREATE_LINK ${libraries}/${MERVANE_WINDOWS_WIDTH} ${CMAKE_BINARY_DIR}/third_party SYMBOLIC)

  function(mervane_built_library target file)
    add_library(${target} STATIC IMPORTED GLOBAL)
    set_target_properties(${target} PROPERTIES
      IMPORTED_LOCATION ${file}
      INTERFACE_INCLUDE_DIRECTORIES ${CMAKE_BINARY_DIR}/third_party/include)
    target_compile_definitions(${target} INTERFACE ${ARGN})
  endfunction()

  set(built ${CMAKE_BINARY_DIR}/third_party/lib)
  mervane_built_library(pugixml::pugixml ${built}/libpugixml.a)
  mervane_built_library(PkgConfig::UTF8PROC ${built}/libutf8proc.a UTF8PROC_STATIC)
  mervane_built_library(PkgConfig::LIBZIP ${built}/libzip.a ZIP_STATIC)
  # The static library by its name: the folder holds the one of the DLL too.
  mervane_built_library(ZLIB::ZLIB ${CMAKE_FIND_ROOT_PATH}/lib/libz.a)
  target_link_libraries(PkgConfig::LIBZIP INTERFACE ZLIB::ZLIB)
  foreach(headers CLI11::CLI11 nlohmann_json::nlohmann_json)
    add_library(${headers} INTERFACE IMPORTED GLOBAL)
    set_target_properties(${headers} PROPERTIES
      INTERFACE_INCLUDE_DIRECTORIES ${CMAKE_BINARY_DIR}/third_party/include)
  endforeach()
endif()

macro(mervane_third_party)
  if(NOT (WIN32 AND CMAKE_CROSSCOMPILING))
    foreach(mervane_library_name ${ARGV})
      if(mervane_library_name STREQUAL cli11)
        find_package(CLI11 REQUIRED)
      elseif(mervane_library_name STREQUAL json)
        find_package(nlohmann_json REQUIRED)
      elseif(mervane_library_name STREQUAL pugixml)
        find_package(pugixml REQUIRED)
      elseif(mervane_library_name STREQUAL zlib)
        find_package(ZLIB REQUIRED)
      elseif(mervane_library_name STREQUAL libzip)
        find_package(PkgConfig REQUIRED)
        pkg_check_modules(LIBZIP REQUIRED IMPORTED_TARGET libzip)
      elseif(mervane_library_name STREQUAL utf8proc)
        find_package(PkgConfig REQUIRED)
        pkg_check_modules(UTF8PROC REQUIRED IMPORTED_TARGET libutf8proc)
      else()
        message(FATAL_ERROR "mervane_third_party knows no \"${mervane_library_name}\"")
      endif()
    endforeach()
  endif()
endmacro()
