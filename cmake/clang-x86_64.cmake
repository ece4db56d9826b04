# The second compiler: clang for 64-bit Windows, with the first one's headers and C++ library. It
# only compiles; nothing is linked.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(TESSERA_TRIPLET x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)

set(CMAKE_C_COMPILER clang-14)
set(CMAKE_CXX_COMPILER clang++-14)
set(CMAKE_C_COMPILER_TARGET ${TESSERA_TRIPLET})
set(CMAKE_CXX_COMPILER_TARGET ${TESSERA_TRIPLET})
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
# clang does not look for the library below the name that Debian gives the posix thread model.
set(library /usr/lib/gcc/${TESSERA_TRIPLET}/12-posix/include/c++)
string(JOIN " -isystem " CMAKE_CXX_FLAGS_INIT
    "" ${CMAKE_CURRENT_LIST_DIR}/clang ${library} ${library}/${TESSERA_TRIPLET})
