# Side-by-side assemblies: what makes classes and interfaces available without registration.
#
#   tessera_assembly(<name> <file.idl>…)
#
# puts <name>.manifest, made from <name>.manifest.in, beside the DLLs. TESSERA_INTERFACES in it stands
# for the interfaces of the files, which the platform marshals by the type library: so an object can
# be used from another apartment than its own.

function(tessera_assembly name)
    file(READ ${name}.manifest.in manifest)
    string(REGEX MATCH "typelib tlbid=\"({[^\"]*})\"" library "${manifest}")
    set(library ${CMAKE_MATCH_1})
    set(TESSERA_INTERFACES "")
    foreach(source IN LISTS ARGN)
        tessera_list_interfaces(interfaces ${source} ${library})
        string(APPEND TESSERA_INTERFACES "${interfaces}")
    endforeach()
    configure_file(${name}.manifest.in ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name}.manifest @ONLY)
endfunction()

# Every interface follows the identifier in its attributes.
function(tessera_list_interfaces result source library)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
    file(READ ${source} text)
    string(REGEX MATCHALL "uuid\\([0-9A-Fa-f-]+\\)|\n *interface [A-Za-z0-9_]+ *: *I" tokens "${text}")
    set(interfaces "")
    foreach(token IN LISTS tokens)
        if(token MATCHES "uuid\\((.*)\\)")
            set(id ${CMAKE_MATCH_1})
        elseif(token MATCHES "interface ([A-Za-z0-9_]+)")
            string(APPEND interfaces
                "  <comInterfaceExternalProxyStub name=\"${CMAKE_MATCH_1}\" iid=\"{${id}}\"\n"
                "      proxyStubClsid32=\"{00020424-0000-0000-C000-000000000046}\" tlbid=\"${library}\"/>\n")
        endif()
    endforeach()
    set(${result} "${interfaces}" PARENT_SCOPE)
endfunction()
