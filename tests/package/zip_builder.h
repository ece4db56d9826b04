// Small zip archives for tests, with every number as it should be.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace test {

struct ZipFile {
    std::string name;
    std::string bytes;
    bool is_deflated = true;
    bool sizes_follow = false;
};

std::string zip_of(const std::vector<ZipFile>& files);

// Where the n-th (from 0) record with this signature begins.
std::size_t record(std::string_view archive, std::uint32_t signature, int n = 0);
void put_short(std::string& archive, std::size_t position, std::uint32_t value);
void put_long(std::string& archive, std::size_t position, std::uint32_t value);

}  // namespace test
