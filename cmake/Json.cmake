# TESSERA_JSON_INCLUDE: the folder of the JSON library's headers.
find_path(TESSERA_JSON_INCLUDE nlohmann/json.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH)
if(NOT TESSERA_JSON_INCLUDE)
    message(FATAL_ERROR "nlohmann/json.hpp is missing (Debian: nlohmann-json3-dev)")
endif()
if(CMAKE_CROSSCOMPILING)
    # Copied, because /usr/include must not be searched when cross-compiling.
    file(COPY ${TESSERA_JSON_INCLUDE}/nlohmann DESTINATION ${CMAKE_BINARY_DIR}/json)
    set(TESSERA_JSON_INCLUDE ${CMAKE_BINARY_DIR}/json)
endif()
