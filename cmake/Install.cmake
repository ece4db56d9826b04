# What "cmake --install" puts where below its prefix, by components:
#
#   runtime      the DLLs with type libraries and manifests, and tessera.exe, in a folder of the processor's name
#   symbols      what a debugger needs of them, where they were built with TESSERA_SYMBOLS
#   development  headers and interface definitions
#   samples, documents
#
# Both bitnesses go below one prefix; ./package puts them there.
if(TESSERA_ARCHITECTURE STREQUAL amd64)
    set(programs x64)
else()
    set(programs ${TESSERA_ARCHITECTURE})
endif()

set(bin ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
install(PROGRAMS $<TARGET_FILE:Tessera> $<TARGET_FILE:KelosHostKit> $<TARGET_FILE:tessera_cli>
        DESTINATION ${programs} COMPONENT runtime)
install(FILES ${bin}/Tessera.tlb ${bin}/Kelos.tlb ${bin}/KelosHostKit.tlb ${bin}/KelosTessera.manifest
              ${bin}/Kelos.manifest ${bin}/Kelos.HostKit.manifest
        DESTINATION ${programs} COMPONENT runtime)
if(TESSERA_SYMBOLS)
    foreach(target Tessera KelosHostKit tessera_cli)
        if(MSVC)
            set(symbols $<TARGET_PDB_FILE:${target}>)
        else()
            set(symbols $<TARGET_FILE:${target}>.debug)
        endif()
        install(FILES ${symbols} DESTINATION ${programs} COMPONENT symbols)
    endforeach()
endif()

set(generated ${CMAKE_BINARY_DIR}/generated)
file(GLOB definitions CONFIGURE_DEPENDS src/component/*.idl src/host/*.idl hostkit/*.idl)
install(FILES ${generated}/tessera.h ${generated}/kelos.h ${generated}/hostkit.h ${generated}/model.h
              ${generated}/services.h ${definitions}
              src/host/value_help.h  # which the definitions include
        DESTINATION include COMPONENT development)
install(DIRECTORY samples DESTINATION . COMPONENT samples
        # What the languages' own builds and exports leave there.
        PATTERN bin EXCLUDE PATTERN obj EXCLUDE PATTERN __pycache__ EXCLUDE
        PATTERN "*.content.xml" EXCLUDE)
install(DIRECTORY docs DESTINATION . COMPONENT documents)
install(FILES README.md LICENSE CHANGELOG.md CONTRIBUTING.md DESTINATION . COMPONENT documents)
