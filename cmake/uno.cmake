# LibreOffice's SDK: the target `mervane_uno`, or nothing where it is missing.
#
# The headers of the office's interfaces are made from its type library once, into the build tree.

find_program(MERVANE_CPPUMAKER cppumaker HINTS /usr/lib/libreoffice/sdk/bin /opt/libreoffice/sdk/bin
  DOC "Maker of the C++ headers of LibreOffice's SDK.")
find_path(MERVANE_UNO_INCLUDE cppuhelper/bootstrap.hxx HINTS /usr/include/libreoffice
  DOC "Folder of the headers of LibreOffice's SDK.")
find_path(MERVANE_OFFICE_PROGRAM types/offapi.rdb HINTS /usr/lib/libreoffice/program NO_DEFAULT_PATH
  DOC "LibreOffice's program folder.")
foreach(part cppu cppuhelpergcc3 sal salhelpergcc3)
  find_library(MERVANE_UNO_${part} uno_${part} HINTS /usr/lib/libreoffice/sdk/lib)
  mark_as_advanced(MERVANE_UNO_${part})
  list(APPEND uno_libraries ${MERVANE_UNO_${part}})
endforeach()
mark_as_advanced(MERVANE_CPPUMAKER MERVANE_UNO_INCLUDE MERVANE_OFFICE_PROGRAM)

if(NOT MERVANE_CPPUMAKER OR NOT MERVANE_UNO_INCLUDE OR NOT MERVANE_OFFICE_PROGRAM OR "${uno_libraries}" MATCHES "NOTFOUND")
  return()
endif()

set(uno_types ${MERVANE_OFFICE_PROGRAM}/types.rdb ${MERVANE_OFFICE_PROGRAM}/types/offapi.rdb)
set(uno_headers ${CMAKE_BINARY_DIR}/uno)
set(uno_made ${uno_headers}/made)
# Under a second, and compiling needs them all; so it is done while configuring, again when the office is renewed.
set(uno_stale TRUE)
if(EXISTS ${uno_made} AND ${uno_made} IS_NEWER_THAN ${MERVANE_OFFICE_PROGRAM}/types/offapi.rdb)
  set(uno_stale FALSE)
endif()
if(uno_stale)
  execute_process(COMMAND ${MERVANE_CPPUMAKER} -Gc -O${uno_headers} ${uno_types} COMMAND_ERROR_IS_FATAL ANY)
  file(TOUCH ${uno_made})
endif()

add_library(mervane_uno INTERFACE)
target_include_directories(mervane_uno SYSTEM INTERFACE ${uno_headers} ${MERVANE_UNO_INCLUDE})
target_compile_definitions(mervane_uno INTERFACE LINUX UNX CPPU_ENV=gcc3)
# Some interfaces are marked as superseded by others that no object offers.
target_compile_options(mervane_uno INTERFACE -Wno-deprecated-declarations)
if(MERVANE_SANITIZE)
  # What stands for an object of another process has no type to check.
  target_compile_options(mervane_uno INTERFACE -fno-sanitize=vptr)
endif()
target_link_libraries(mervane_uno INTERFACE ${uno_libraries})
# The office's libraries lie in its own folder. In the office they are loaded already.
target_link_options(mervane_uno INTERFACE -Wl,-rpath,${MERVANE_OFFICE_PROGRAM} -Wl,-rpath-link,${MERVANE_OFFICE_PROGRAM})
