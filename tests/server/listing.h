// The public contract stays what contract/*.txt says: a change of it is a change of these files.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/com_fixture.h"

namespace test {

inline std::string content_of(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// A listing that differs is saved beside the test programs.
inline void check_listing(const std::wstring& name, const std::string& listing,
                          const std::wstring& folder = L"server/contract/") {
    if (listing == content_of(test_data(folder + name))) return;
    const std::filesystem::path saved = std::filesystem::absolute(name);
    std::ofstream(saved, std::ios::binary) << listing;
    const std::wstring advice = L"tests/" + folder + name +
                                L" lists something else; when the change is meant, copy " +
                                saved.wstring() + L" there";
    FAIL_CHECK(advice);
}

}  // namespace test
