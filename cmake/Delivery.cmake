# What the files that are delivered have in common: run-times linked statically, the linker's
# protections, the same bytes from the same sources, and symbols in a file of their own.

option(TESSERA_SYMBOLS "Put functions and lines into a symbol file beside each delivered file" OFF)

if(MSVC)
    set(CMAKE_MSVC_RUNTIME_LIBRARY "MultiThreaded$<$<CONFIG:Debug>:Debug>")
    add_compile_options(/guard:cf)
    # Address-space randomisation and data-execution prevention are this linker's defaults. The
    # manifests of programs are resources, not the linker's.
    add_link_options(/guard:cf /MANIFEST:NO $<$<CONFIG:Release>:/Brepro>)
    if(TESSERA_ARCHITECTURE STREQUAL amd64)
        add_link_options(/CETCOMPAT)
    endif()
    if(TESSERA_SYMBOLS)
        add_compile_options(/Zi)
        add_link_options(/DEBUG /OPT:REF /OPT:ICF)
    endif()
elseif(MINGW)
    add_link_options(-static -Wl,--dynamicbase,--nxcompat,--no-insert-timestamp)
    if(TESSERA_ARCHITECTURE STREQUAL x86)
        # The module definition names the entry points without their calling convention's decoration.
        add_link_options(-Wl,--enable-stdcall-fixup,--large-address-aware)
    else()
        add_link_options(-Wl,--high-entropy-va)
    endif()
    if(TESSERA_SYMBOLS)
        # Without the folder that it was built in.
        add_compile_options(-g1 -ffile-prefix-map=${PROJECT_SOURCE_DIR}/= -ffile-prefix-map=${CMAKE_BINARY_DIR}=build)
    endif()
endif()

# tessera_separate_symbols(<target>): what a debugger needs to name functions and lines goes into
# <file>.debug beside the target's file, which refers to it. Visual Studio's linker does so itself.
function(tessera_separate_symbols target)
    if(NOT MINGW OR NOT TESSERA_SYMBOLS OR NOT CMAKE_OBJCOPY)
        return()
    endif()
    add_custom_command(TARGET ${target} POST_BUILD
        # Of the dates in the headers, too, which are none.
        COMMAND ${CMAKE_OBJCOPY} --preserve-dates --only-keep-debug $<TARGET_FILE_NAME:${target}> $<TARGET_FILE_NAME:${target}>.debug
        COMMAND ${CMAKE_OBJCOPY} --preserve-dates --strip-all --add-gnu-debuglink=$<TARGET_FILE_NAME:${target}>.debug
                $<TARGET_FILE_NAME:${target}>
        WORKING_DIRECTORY $<TARGET_FILE_DIR:${target}> VERBATIM)
endfunction()
