# TESSERA_CLI11_INCLUDE: the folder of the headers of the library that reads command lines.
find_path(TESSERA_CLI11_INCLUDE CLI/CLI.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH)
if(NOT TESSERA_CLI11_INCLUDE)
    message(FATAL_ERROR "CLI/CLI.hpp is missing (Debian: libcli11-dev)")
endif()
if(CMAKE_CROSSCOMPILING)
    # Copied, because /usr/include must not be searched when cross-compiling.
    file(COPY ${TESSERA_CLI11_INCLUDE}/CLI DESTINATION ${CMAKE_BINARY_DIR}/cli11)
    set(TESSERA_CLI11_INCLUDE ${CMAKE_BINARY_DIR}/cli11)
endif()
