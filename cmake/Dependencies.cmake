# What the program links besides the engine: CLI11, libqpdf and libdeflate, by the same names on
# every system. QUILLPRESS_HAS_PROGRAM says whether they are there.
if(NOT WIN32)
  find_package(CLI11 REQUIRED)
  find_package(qpdf REQUIRED)
  find_path(DEFLATE_INCLUDE libdeflate.h REQUIRED)
  find_library(DEFLATE_LIBRARY deflate REQUIRED)
  add_library(deflate::deflate UNKNOWN IMPORTED)
  set_target_properties(deflate::deflate PROPERTIES IMPORTED_LOCATION "${DEFLATE_LIBRARY}"
                                                    INTERFACE_INCLUDE_DIRECTORIES "${DEFLATE_INCLUDE}")
  set(QUILLPRESS_HAS_PROGRAM ON)
  return()
endif()

# Built by scripts/build-windows-deps, for all build folders of the project.
set(QUILLPRESS_WINDOWS_DEPS "${PROJECT_SOURCE_DIR}/build/windows-deps"
    CACHE PATH "Where the libraries lie that quillpress.exe links statically")
if(EXISTS "${QUILLPRESS_WINDOWS_DEPS}/recipe")
  set(QUILLPRESS_HAS_PROGRAM ON)
else()
  set(QUILLPRESS_HAS_PROGRAM OFF)
  message(STATUS "No quillpress.exe: run scripts/build-windows-deps, and configure again")
  return()
endif()

add_library(CLI11::CLI11 INTERFACE IMPORTED)
set_target_properties(CLI11::CLI11 PROPERTIES INTERFACE_INCLUDE_DIRECTORIES
                                              "${QUILLPRESS_WINDOWS_DEPS}/include")

function(add_static_library name file)
  add_library(${name} STATIC IMPORTED)
  set_target_properties(
    ${name} PROPERTIES IMPORTED_LOCATION "${QUILLPRESS_WINDOWS_DEPS}/lib/${file}"
                       INTERFACE_INCLUDE_DIRECTORIES "${QUILLPRESS_WINDOWS_DEPS}/include")
  target_link_libraries(${name} INTERFACE ${ARGN})
endfunction()
add_static_library(deflate::deflate libdeflate.a)
add_static_library(qpdf::jpeg libjpeg.a)
add_static_library(qpdf::libqpdf libqpdf.a qpdf::jpeg z ws2_32 crypt32)
