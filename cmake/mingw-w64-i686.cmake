# Cross compiler for 32-bit Windows.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR X86)
set(TESSERA_TRIPLET i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)

# Every processor that runs the supported systems has these vector instructions.
set(CMAKE_CXX_FLAGS_INIT -msse2)
