// Reads zip archives that nobody vouches for: every number in them is checked before it is used.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

// The archive is held in memory; entries are unpacked when they are read. Everything throws Failure
// with a sentence that names the file.
class ZipReader {
  public:
    struct Entry {
        std::string name;
        std::uint16_t method = 0;
        std::uint32_t checksum = 0;
        std::size_t packed_size = 0;
        std::size_t size = 0;
        std::size_t header = 0;  // where the local header begins
        std::size_t data = 0;    // where the packed bytes begin
    };

    // `file` is what the failures call the archive.
    ZipReader(std::wstring file, std::string bytes);

    const std::vector<Entry>& entries() const noexcept { return entries_; }
    // The entry of this name, in whatever case, or null.
    const Entry* find(std::string_view name) const;
    std::string read(const Entry& entry) const;

  private:
    struct Directory {
        std::size_t start = 0;
        std::size_t size = 0;
        std::size_t entries = 0;
    };

    Directory find_directory() const;
    Directory directory_at(std::size_t end_record) const;
    void read_directory(const Directory& directory);
    Entry read_entry(std::size_t header, std::size_t name_length) const;
    void find_data(Entry& entry, std::size_t limit) const;
    void check_names() const;
    void check_overlaps() const;
    std::string inflated(const Entry& entry) const;

    std::uint16_t short_at(std::size_t position) const noexcept;
    std::uint32_t long_at(std::size_t position) const noexcept;
    [[noreturn]] void fail(std::wstring_view problem) const;
    [[noreturn]] void fail_entry(const Entry& entry, std::wstring_view problem) const;

    std::wstring file_;
    std::string bytes_;
    std::vector<Entry> entries_;
};

// Names of entries are compared without regard to the case of their Latin letters.
std::string folded_name(std::string_view name);

}  // namespace cli
