# The extension: a zip of the library, the office's descriptions of it, and its pictures.

set(MERVANE_OFFICE_PLATFORM linux_${CMAKE_SYSTEM_PROCESSOR})
set(package_folder ${CMAKE_CURRENT_BINARY_DIR}/oxt)
set(package ${PROJECT_BINARY_DIR}/mervane-${PROJECT_VERSION}.oxt)
set(sources ${CMAKE_CURRENT_SOURCE_DIR}/package)
set(plain_files Accelerators.xcu Addons.xcu ProtocolHandler.xcu mervane.components description.txt description.de.txt)
file(GLOB pictures CONFIGURE_DEPENDS ${sources}/pictures/*.svg)
file(GLOB dark_pictures CONFIGURE_DEPENDS ${sources}/pictures/dark/*.svg)
file(GLOB help CONFIGURE_DEPENDS ${sources}/help/*/*.html)

configure_file(${sources}/description.xml.in ${package_folder}/description.xml @ONLY)

set(copies)
set(originals ${sources}/manifest.xml ${PROJECT_SOURCE_DIR}/LICENSE ${pictures} ${dark_pictures} ${help})
foreach(file IN LISTS plain_files)
  list(APPEND copies COMMAND ${CMAKE_COMMAND} -E copy ${sources}/${file} ${package_folder}/${file})
  list(APPEND originals ${sources}/${file})
endforeach()
add_custom_command(
  OUTPUT ${package}
  ${copies}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${package_folder}/META-INF ${package_folder}/pictures/dark
  COMMAND ${CMAKE_COMMAND} -E copy ${sources}/manifest.xml ${package_folder}/META-INF/manifest.xml
  COMMAND ${CMAKE_COMMAND} -E copy ${PROJECT_SOURCE_DIR}/LICENSE ${package_folder}/LICENSE
  COMMAND ${CMAKE_COMMAND} -E copy ${pictures} ${package_folder}/pictures
  COMMAND ${CMAKE_COMMAND} -E copy ${dark_pictures} ${package_folder}/pictures/dark
  COMMAND ${CMAKE_COMMAND} -E copy_directory ${sources}/help ${package_folder}/help
  COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:mervane_addin> ${package_folder}/mervane_calc.so
  COMMAND ${CMAKE_STRIP} --strip-unneeded ${package_folder}/mervane_calc.so
  COMMAND ${CMAKE_COMMAND} -E rm -f ${package}
  COMMAND ${CMAKE_COMMAND} -E chdir ${package_folder} ${CMAKE_COMMAND} -E tar cf ${package} --format=zip
          META-INF description.xml LICENSE mervane_calc.so pictures help ${plain_files}
  DEPENDS mervane_addin ${originals} ${package_folder}/description.xml
  COMMENT "Packing ${package}"
  VERBATIM)
add_custom_target(mervane_oxt ALL DEPENDS ${package})
