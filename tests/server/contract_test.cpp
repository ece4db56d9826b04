// What the DLLs say of their types in their resources, as a client loads it.

#include "server/listing.h"
#include "type_library_listing.h"

TEST_CASE("The type libraries are the listed ones") {
    for (const std::wstring file : {L"Kelos.tlb", L"Tessera.dll", L"KelosHostKit.dll"})
        test::check_listing(std::filesystem::path(file).stem().wstring() + L".txt",
                            tools::list_type_library(file));
}
