# Compiles interface definitions into headers and type libraries: widl where we cross-compile,
# midl on Windows.
#
#   tessera_idl(<target> <file.idl> HEADER <name.h> [TYPELIB <name.tlb>]
#               [LIBRARIES <name.tlb>…] [DEPENDS <file.idl>…])
#
# makes an interface target that adds the header's folder and waits for both outputs. LIBRARIES are
# the type libraries of ours that the file refers to with importlib.

if(TESSERA_ARCHITECTURE STREQUAL x86)
    set(_idl_width --win32)
    set(_midl_environment win32)
else()
    set(_idl_width --win64)
    string(REPLACE amd64 x64 _midl_environment ${TESSERA_ARCHITECTURE})
endif()

if(MINGW)
    find_program(TESSERA_WIDL NAMES ${TESSERA_TRIPLET}-widl widl REQUIRED)
    # A library notes when it was compiled. It is always the same moment, so that the same sources
    # give the same bytes.
    find_program(TESSERA_FAKETIME faketime)
    if(TESSERA_FAKETIME)
        set(_at_one_moment ${CMAKE_COMMAND} -E env TZ=UTC ${TESSERA_FAKETIME} -f "2026-01-01 00:00:00")
    endif()
    # The platform's own definitions (oaidl.idl and the like) and stdole2.tlb come with Wine; on
    # Windows, with the compiler and the system.
    cmake_path(GET TESSERA_WIDL PARENT_PATH _widl_folder)
    find_path(TESSERA_IDL_INCLUDE oaidl.idl PATHS ${_widl_folder}/../include
              ${_widl_folder}/../x86_64-w64-mingw32/include /usr/include/wine/wine/windows
              /usr/include/wine/windows /usr/include/wine-stable/wine/windows
              NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    find_path(TESSERA_STDOLE_DIR stdole2.tlb PATHS $ENV{SystemRoot}/System32
              /usr/lib/x86_64-linux-gnu/wine/x86_64-windows /usr/lib/wine/x86_64-windows
              NO_CMAKE_FIND_ROOT_PATH REQUIRED)

    # The XML parser's type library is a resource of its DLL, which widl cannot read. What importlib
    # needs of it (identity and type names) is compiled from the parser's definitions; the file
    # bears the DLL's name, because the name is what our libraries keep.
    set(_parser_library_dir ${CMAKE_BINARY_DIR}/parser)
    set(_parser_library ${_parser_library_dir}/msxml3.dll)
    file(MAKE_DIRECTORY ${_parser_library_dir})
    add_custom_command(OUTPUT ${_parser_library}
        COMMAND ${TESSERA_WIDL} ${_idl_width} -I${TESSERA_IDL_INCLUDE} -L${TESSERA_STDOLE_DIR}
                -t -o ${_parser_library} ${TESSERA_IDL_INCLUDE}/msxml2.idl
        COMMENT "Compiling the XML parser's type library" VERBATIM)
    add_custom_target(parser_type_library DEPENDS ${_parser_library})
endif()

function(tessera_idl target source)
    cmake_parse_arguments(ARG "" "HEADER;TYPELIB" "LIBRARIES;DEPENDS" ${ARGN})
    get_filename_component(source ${source} ABSOLUTE)
    set(out ${CMAKE_BINARY_DIR}/generated)
    set(includes ${PROJECT_SOURCE_DIR}/src/host ${PROJECT_SOURCE_DIR}/src/component)
    list(TRANSFORM includes PREPEND -I)
    set(outputs ${out}/${ARG_HEADER})
    set(libraries ${ARG_LIBRARIES})
    list(TRANSFORM libraries PREPEND ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/)
    file(MAKE_DIRECTORY ${out} ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    if(MINGW)
        set(widl ${TESSERA_WIDL} ${_idl_width} ${includes} -I${TESSERA_IDL_INCLUDE}
            -L${TESSERA_STDOLE_DIR} -L${_parser_library_dir}
            -L${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
        list(APPEND libraries ${_parser_library})
        # The header names the file as it is given here; it is installed, so without this machine's path.
        file(RELATIVE_PATH named ${PROJECT_SOURCE_DIR} ${source})
        set(commands
            COMMAND ${widl} -h -o ${out}/${ARG_HEADER} ${named}
            COMMAND ${CMAKE_COMMAND} -DHEADER=${out}/${ARG_HEADER}
                    -P ${PROJECT_SOURCE_DIR}/cmake/NullDefaultTexts.cmake)
        if(ARG_TYPELIB)
            set(typelib ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${ARG_TYPELIB})
            list(APPEND outputs ${typelib})
            list(APPEND commands COMMAND ${_at_one_moment} ${widl} -t -o ${typelib} ${source})
        endif()
    else()
        list(APPEND includes -I${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
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
    add_custom_command(OUTPUT ${outputs} ${commands}
                       DEPENDS ${source} ${libraries} ${ARG_DEPENDS}
                       WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
                       COMMENT "Compiling ${source}" VERBATIM)
    add_custom_target(${target}_files DEPENDS ${outputs})
    if(TARGET parser_type_library)
        add_dependencies(${target}_files parser_type_library)
    endif()
    add_library(${target} INTERFACE)
    add_dependencies(${target} ${target}_files)
    target_include_directories(${target} SYSTEM INTERFACE ${out})
    # midl writes L"" for an empty text as a parameter's default, which a strict compiler refuses.
    target_compile_options(${target} INTERFACE $<$<CXX_COMPILER_ID:MSVC>:/Zc:strictStrings->)
endfunction()
