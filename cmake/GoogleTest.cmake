# GoogleTest from the sources that Debian's libgtest-dev installs, so that every preset has one
# built by its own compiler.
set(INSTALL_GTEST OFF)
set(gtest_disable_pthreads OFF)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
include(GoogleTest)
