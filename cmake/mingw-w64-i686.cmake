# For 32-bit Windows. The tests look at its programs and do not run them: Wine for them is not on every machine.
set(triplet i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-common.cmake)
set(CMAKE_SYSTEM_PROCESSOR x86)
# A .def file names exports without decoration; the functions themselves are decorated.
string(APPEND CMAKE_SHARED_LINKER_FLAGS_INIT " -Wl,--enable-stdcall-fixup")
string(APPEND CMAKE_MODULE_LINKER_FLAGS_INIT " -Wl,--enable-stdcall-fixup")
# Every system that this runs on has SSE2; callers keep stacks aligned to 4 bytes only.
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign")
