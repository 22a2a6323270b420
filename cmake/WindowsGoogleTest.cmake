# Debian has no GoogleTest for MinGW-w64, but its sources.
if(NOT TARGET gmock)
  set(INSTALL_GTEST OFF)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
  target_compile_options(gtest PRIVATE -w)
  target_compile_options(gmock PRIVATE -w)
endif()
