# What the two cross toolchains share. The posix thread model has std::mutex.
set(CMAKE_C_COMPILER ${TESSERA_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TESSERA_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${TESSERA_TRIPLET}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${TESSERA_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

# Programs run in the project's own Wine prefix, under a time-out.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine-test)
