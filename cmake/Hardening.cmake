# What makes an exploitable fault of an optimised program end it instead. tests/packaging/hardening-test.sh looks whether the
# made files have it. Debug builds have the sanitizers.
if(CMAKE_BUILD_TYPE STREQUAL "Debug" OR DRAVIK_SANITIZE OR DRAVIK_FUZZ)
  return()
endif()

if(DRAVIK_PACKAGE)
  # Packages do not tell where they were built. They are stripped; without lines for traces the number of a build, which is made
  # before that, does not depend on folders either.
  add_compile_options(-g0 -ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${PROJECT_BINARY_DIR}=build)
endif()
if(MINGW)
  # Addresses are random and data is not executable by this linker's own choice; said here so that it stays. Control Flow Guard
  # is missing: GCC for Windows cannot make its checks.
  add_link_options(-Wl,--dynamicbase -Wl,--nxcompat)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    add_link_options(-Wl,--high-entropy-va)
  endif()
else()
  # Not CMAKE_POSITION_INDEPENDENT_CODE, which makes libraries' code for shared ones and slower.
  string(APPEND CMAKE_CXX_FLAGS " -fPIE")
  string(APPEND CMAKE_EXE_LINKER_FLAGS " -pie")
  add_compile_options(-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|amd64)$")
    add_compile_options(-fcf-protection)
  endif()
  # The libraries' own checks of indices and iterators.
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
endif()
