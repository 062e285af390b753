# What `cpack` makes of the installed components: Debian packages of the library, of what developers
# need and of the program, or one archive for Windows. scripts/package runs it.
set(CPACK_PACKAGE_NAME quillpress)
set(CPACK_PACKAGE_VENDOR Tarnwick)
set(QUILLPRESS_MAINTAINER "" CACHE STRING "Who answers for the packages: NAME <ADDRESS>")
set(CPACK_PACKAGE_CONTACT "${QUILLPRESS_MAINTAINER}")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_SOURCE_DIR}/build/packages)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ
                                                GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME quillpress-${PROJECT_VERSION}-windows-x64)
  # Their symbols were moved aside already; MinGW's strip would take the debugger's link to them.
  set(CPACK_STRIP_FILES OFF)
  set(CPACK_COMPONENTS_ALL library development tool documents samples symbols)
  include(CPack)
  return()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_COMPONENTS_ALL library development tool documents samples debian-library
                         debian-development debian-tool)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(library_package libtqpumpd2k${PROJECT_VERSION_MAJOR})

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION
    "converts PostScript pages to PDF content streams
The library runs the PostScript of a page and returns the text of a PDF content
stream, with the images and patterns that the text refers to by name.")

# Which package a program needs that is linked to the library, and that ldconfig has to look anew.
file(CONFIGURE OUTPUT shlibs @ONLY
     CONTENT "libtqpumpd2k @PROJECT_VERSION_MAJOR@ @library_package@ (>= @PROJECT_VERSION@)\n")
file(CONFIGURE OUTPUT triggers CONTENT "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_BINARY_DIR}/shlibs"
                                               "${CMAKE_CURRENT_BINARY_DIR}/triggers")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtqpumpd2k-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library_package} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "converts PostScript pages to PDF content streams - development
The header of libtqpumpd2k, files for CMake and pkg-config, the documents, and
samples in C, Python and PostScript.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME quillpress)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION text)
set(CPACK_DEBIAN_TOOL_DESCRIPTION
    "program that makes PDF files of PostScript pages
The program runs PostScript pages and assembles a PDF file of what they paint.
It says what of a page it left out.")
get_target_property(tool_libraries quillpress_modules LINK_LIBRARIES)
if("tqpumpd2k" IN_LIST tool_libraries)
  set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${library_package} (= ${PROJECT_VERSION})")
endif()

# What Debian asks of every package.
configure_file(packaging/debian/changelog.in debian-changelog @ONLY)
foreach(pair library:${library_package} development:libtqpumpd2k-dev tool:quillpress)
  string(REPLACE ":" ";" pair ${pair})
  list(GET pair 0 group)
  list(GET pair 1 package)
  set(folder ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package})
  install(FILES packaging/debian/copyright DESTINATION ${folder} COMPONENT debian-${group}
          EXCLUDE_FROM_ALL)
  install(FILES ${CMAKE_BINARY_DIR}/changelog.gz DESTINATION ${folder} COMPONENT debian-${group}
          EXCLUDE_FROM_ALL)
endforeach()
configure_file(packaging/debian/lintian-overrides.in lintian-overrides @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/lintian-overrides RENAME ${library_package}
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides COMPONENT debian-library
        EXCLUDE_FROM_ALL)
add_custom_command(
  OUTPUT ${CMAKE_BINARY_DIR}/changelog.gz
  COMMAND gzip -9nc ${CMAKE_BINARY_DIR}/debian-changelog > ${CMAKE_BINARY_DIR}/changelog.gz
  DEPENDS ${CMAKE_BINARY_DIR}/debian-changelog)
add_custom_target(debian_changelog ALL DEPENDS ${CMAKE_BINARY_DIR}/changelog.gz)

include(CPack)
foreach(group library development tool)
  cpack_add_component_group(${group})
  cpack_add_component(${group} GROUP ${group})
  cpack_add_component(debian-${group} GROUP ${group})
endforeach()
cpack_add_component(documents GROUP development)
cpack_add_component(samples GROUP development)
