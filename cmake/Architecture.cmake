# TESSERA_ARCHITECTURE: the processor that is compiled for, as manifests name it.
include(CheckCXXSourceCompiles)

function(tessera_find_architecture name macros)
    check_cxx_source_compiles("
        #if !(${macros})
        #error another one
        #endif
        int main() {}" TESSERA_IS_${name})
    if(TESSERA_IS_${name})
        set(TESSERA_ARCHITECTURE ${name} PARENT_SCOPE)
    endif()
endfunction()

tessera_find_architecture(amd64 "(defined(_M_X64) && !defined(_M_ARM64EC)) || defined(__x86_64__)")
tessera_find_architecture(x86 "defined(_M_IX86) || defined(__i386__)")
tessera_find_architecture(arm64 "defined(_M_ARM64) || defined(__aarch64__)")
if(NOT TESSERA_ARCHITECTURE)
    message(FATAL_ERROR "Not a processor that this can be built for: x86, x64 or ARM64")
endif()
