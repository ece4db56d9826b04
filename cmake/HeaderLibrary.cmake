# find_header_library(<variable> <header> PACKAGE <Debian's package>): the folder in which a library
# that consists of headers is found as <header>. Ends the configuration where there is none.
function(find_header_library variable header)
    cmake_parse_arguments(ARG "" "PACKAGE" "" ${ARGN})
    find_path(${variable} ${header} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH)
    if(NOT ${variable})
        message(FATAL_ERROR "${header} is missing (Debian: ${ARG_PACKAGE})")
    endif()
    if(CMAKE_CROSSCOMPILING)
        # Copied, because /usr/include must not be searched when cross-compiling.
        set(copy ${CMAKE_BINARY_DIR}/headers/${ARG_PACKAGE})
        get_filename_component(folder ${header} DIRECTORY)
        file(COPY ${${variable}}/${folder} DESTINATION ${copy})
        set(${variable} ${copy} PARENT_SCOPE)
    endif()
endfunction()
