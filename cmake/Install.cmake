# What `cmake --install` places, by components: library, development, tool, documents, samples and,
# on Windows, symbols.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

if(WIN32)
  # An archive to unpack: it has no folders of a system's own.
  set(CMAKE_INSTALL_DOCDIR .)
  set(samples_folder samples)
else()
  set(CMAKE_INSTALL_DOCDIR ${CMAKE_INSTALL_DATAROOTDIR}/doc/libtqpumpd2k-dev)
  set(samples_folder ${CMAKE_INSTALL_DOCDIR}/examples)
endif()

install(
  TARGETS tqpumpd2k EXPORT tqpumpd2kTargets
  RUNTIME COMPONENT library
  LIBRARY COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development)
install(FILES include/tqpumpd2k.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

set(cmake_folder ${CMAKE_INSTALL_LIBDIR}/cmake/tqpumpd2k)
install(EXPORT tqpumpd2kTargets NAMESPACE tqpumpd2k:: DESTINATION ${cmake_folder}
        COMPONENT development)
configure_package_config_file(cmake/tqpumpd2kConfig.cmake.in tqpumpd2kConfig.cmake
                              INSTALL_DESTINATION ${cmake_folder})
write_basic_package_version_file(tqpumpd2kConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tqpumpd2kConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/tqpumpd2kConfigVersion.cmake
        DESTINATION ${cmake_folder} COMPONENT development)

install(FILES README.md CHANGELOG.md CONTRIBUTING.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documents)
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT documents)
install(DIRECTORY samples/ DESTINATION ${samples_folder} COMPONENT samples
        USE_SOURCE_PERMISSIONS
        PATTERN CMakeLists.txt EXCLUDE
        PATTERN __pycache__ EXCLUDE)

if(QUILLPRESS_HAS_PROGRAM)
  install(TARGETS quillpress RUNTIME COMPONENT tool)
endif()

if(WIN32)
  # For those who link: MinGW's import library is the target's; this is Microsoft's, and the list
  # of exports that other tools make theirs from.
  set(exports_list ${CMAKE_BINARY_DIR}/tqpumpd2k.def)
  set(microsoft_library ${CMAKE_BINARY_DIR}/tqpumpd2k.lib)
  file(READ exports/tqpumpd2k.def text)
  # Comments, and which function of the library an entry is, do not concern them.
  string(REGEX REPLACE "\n;[^\n]*" "" text "${text}")
  string(REGEX REPLACE " = [^\n]*" "" text "${text}")
  file(GENERATE OUTPUT ${exports_list} CONTENT "${text}")
  find_program(LLVM_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14)
  if(LLVM_DLLTOOL)
    add_custom_command(
      OUTPUT ${microsoft_library}
      COMMAND ${LLVM_DLLTOOL} -m i386:x86-64 -d ${exports_list} -D tqpumpd2k.dll -l ${microsoft_library}
      DEPENDS ${exports_list} VERBATIM)
    add_custom_target(microsoft_library ALL DEPENDS ${microsoft_library})
    install(FILES ${microsoft_library} DESTINATION lib COMPONENT development)
  endif()
  install(FILES ${exports_list} DESTINATION lib COMPONENT development)

  # The samples of a driver and a launcher include the record of their channel by this path.
  install(FILES umpd/LauncherStruct.h DESTINATION umpd COMPONENT samples)
  install(FILES packaging/windows/README.txt DESTINATION . COMPONENT documents)
  install(FILES $<TARGET_FILE:tqpumpd2k>.debug DESTINATION bin COMPONENT symbols)
  if(QUILLPRESS_HAS_PROGRAM)
    install(FILES $<TARGET_FILE:quillpress>.debug DESTINATION bin COMPONENT symbols)
    install(DIRECTORY ${QUILLPRESS_WINDOWS_DEPS}/notices/ DESTINATION notices COMPONENT tool)
  endif()
  return()
endif()

# The file finds its own place, so that a tree may be moved.
file(RELATIVE_PATH up /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" up "${up}")
set(prefix_from_here "\${pcfiledir}/${up}")
configure_file(cmake/tqpumpd2k.pc.in tqpumpd2k.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tqpumpd2k.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(QUILLPRESS_SANITIZE)
  return()
endif()
# The manual page and the completions say what the program says of itself.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(described ${CMAKE_BINARY_DIR}/described)
add_custom_command(
  OUTPUT ${described}/quillpress.1.gz
  COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/scripts/describe-program
          $<TARGET_FILE:quillpress> ${described}
  COMMAND gzip -9nf ${described}/quillpress.1
  DEPENDS quillpress ${PROJECT_SOURCE_DIR}/scripts/describe-program VERBATIM)
add_custom_target(described ALL DEPENDS ${described}/quillpress.1.gz)
install(FILES ${described}/quillpress.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
set(shells ${CMAKE_INSTALL_DATAROOTDIR})
install(FILES ${described}/quillpress.bash RENAME quillpress COMPONENT tool
        DESTINATION ${shells}/bash-completion/completions)
install(FILES ${described}/_quillpress DESTINATION ${shells}/zsh/vendor-completions COMPONENT tool)
install(FILES ${described}/quillpress.fish DESTINATION ${shells}/fish/vendor_completions.d
        COMPONENT tool)
