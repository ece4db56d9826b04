// The public contract stays what contract/*.txt says: a change of it is a change of these files.
// Of the DLLs it is what their resources hold, as a client loads it.

#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/com_fixture.h"
#include "type_library_listing.h"

namespace {

std::string content_of(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Beside the test programs.
std::wstring save(const std::wstring& name, const std::string& listing) {
    const std::filesystem::path path = std::filesystem::absolute(name);
    std::ofstream(path, std::ios::binary) << listing;
    return path.wstring();
}

}  // namespace

TEST_CASE("The type libraries are the listed ones") {
    for (const std::wstring file : {L"Kelos.tlb", L"Tessera.dll", L"KelosHostKit.dll"}) {
        const std::wstring name = std::filesystem::path(file).stem().wstring() + L".txt";
        const std::string listing = tools::list_type_library(file);
        if (listing == content_of(test::test_data(L"server/contract/" + name))) continue;
        const std::wstring advice = file + L" differs from tests/server/contract/" + name +
                                    L"; when the change is meant, copy " + save(name, listing) +
                                    L" there";
        FAIL_CHECK(advice);
    }
}
