# Compiles interface definitions into headers and type libraries: widl where we cross-compile,
# midl on Windows.
#
#   tessera_idl(<target> <file.idl> HEADER <name.h> [TYPELIB <name.tlb>] [DEPENDS <file.idl>…])
#
# makes an interface target that adds the header's folder and waits for both outputs.

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(_idl_width --win64)
    set(_midl_environment x64)
else()
    set(_idl_width --win32)
    set(_midl_environment win32)
endif()

if(MINGW)
    find_program(TESSERA_WIDL NAMES ${TESSERA_TRIPLET}-widl widl REQUIRED)
    # The platform's own definitions (oaidl.idl and the like) and stdole2.tlb come with Wine.
    find_path(TESSERA_IDL_INCLUDE oaidl.idl PATHS /usr/include/wine/wine/windows
              /usr/include/wine/windows /usr/include/wine-stable/wine/windows
              NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    find_path(TESSERA_STDOLE_DIR stdole2.tlb PATHS
              /usr/lib/x86_64-linux-gnu/wine/x86_64-windows /usr/lib/wine/x86_64-windows
              NO_CMAKE_FIND_ROOT_PATH REQUIRED)
endif()

function(tessera_idl target source)
    cmake_parse_arguments(ARG "" "HEADER;TYPELIB" "DEPENDS" ${ARGN})
    get_filename_component(source ${source} ABSOLUTE)
    set(out ${CMAKE_BINARY_DIR}/generated)
    set(includes ${PROJECT_SOURCE_DIR}/src/host ${PROJECT_SOURCE_DIR}/src/component)
    list(TRANSFORM includes PREPEND -I)
    set(outputs ${out}/${ARG_HEADER})
    file(MAKE_DIRECTORY ${out} ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    if(MINGW)
        set(widl ${TESSERA_WIDL} ${_idl_width} ${includes} -I${TESSERA_IDL_INCLUDE}
            -L${TESSERA_STDOLE_DIR})
        set(commands COMMAND ${widl} -h -o ${out}/${ARG_HEADER} ${source})
        if(ARG_TYPELIB)
            set(typelib ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${ARG_TYPELIB})
            list(APPEND outputs ${typelib})
            list(APPEND commands COMMAND ${widl} -t -o ${typelib} ${source})
        endif()
    else()
        list(TRANSFORM includes REPLACE "^-I" "/I")
        set(options /nologo /env ${_midl_environment} ${includes} /h ${out}/${ARG_HEADER}
            /iid nul /proxy nul /dlldata nul)
        if(ARG_TYPELIB)
            set(typelib ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${ARG_TYPELIB})
            list(APPEND outputs ${typelib})
            list(APPEND options /tlb ${typelib})
        else()
            list(APPEND options /notlb)
        endif()
        set(commands COMMAND midl ${options} ${source})
    endif()
    add_custom_command(OUTPUT ${outputs} ${commands} DEPENDS ${source} ${ARG_DEPENDS}
                       COMMENT "Compiling ${source}" VERBATIM)
    add_custom_target(${target}_files DEPENDS ${outputs})
    add_library(${target} INTERFACE)
    add_dependencies(${target} ${target}_files)
    target_include_directories(${target} SYSTEM INTERFACE ${out})
endfunction()
