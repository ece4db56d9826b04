// The layout of a zip archive: what its records are told by, and where their fields stand.
//
// All numbers are little-endian. An archive is a row of entries, each a local header and its data,
// then the central directory with one header for every entry, then the end record.
#pragma once

#include <cstddef>
#include <cstdint>

namespace cli::zip {

inline constexpr std::uint32_t local_signature = 0x04034b50;
inline constexpr std::uint32_t central_signature = 0x02014b50;
inline constexpr std::uint32_t end_signature = 0x06054b50;

// The sizes of the records without the names, extra fields and comments that follow them.
inline constexpr std::size_t local_size = 30;
inline constexpr std::size_t central_size = 46;
inline constexpr std::size_t end_size = 22;
inline constexpr std::size_t longest_comment = 0xFFFF;

inline constexpr std::uint16_t stored = 0;
inline constexpr std::uint16_t deflated = 8;

inline constexpr std::uint16_t flag_encrypted = 1 << 0;
// Sizes and checksum stand after the data, and zero in the local header.
inline constexpr std::uint16_t flag_sizes_follow = 1 << 3;
inline constexpr std::uint16_t flag_utf8 = 1 << 11;

// Stand in fields whose number is kept in a record of the form for archives beyond 4 GiB.
inline constexpr std::uint32_t elsewhere = 0xFFFFFFFF;
inline constexpr std::uint16_t elsewhere_short = 0xFFFF;

namespace local {
inline constexpr std::size_t flags = 6;
inline constexpr std::size_t method = 8;
inline constexpr std::size_t checksum = 14;
inline constexpr std::size_t packed_size = 18;
inline constexpr std::size_t size = 22;
inline constexpr std::size_t name_length = 26;
inline constexpr std::size_t extra_length = 28;
}  // namespace local

namespace central {
inline constexpr std::size_t flags = 8;
inline constexpr std::size_t method = 10;
inline constexpr std::size_t checksum = 16;
inline constexpr std::size_t packed_size = 20;
inline constexpr std::size_t size = 24;
inline constexpr std::size_t name_length = 28;
inline constexpr std::size_t extra_length = 30;
inline constexpr std::size_t comment_length = 32;
inline constexpr std::size_t disk = 34;
inline constexpr std::size_t local_header = 42;
}  // namespace central

namespace end_record {
inline constexpr std::size_t disk = 4;
inline constexpr std::size_t directory_disk = 6;
inline constexpr std::size_t entries_here = 8;
inline constexpr std::size_t entries = 10;
inline constexpr std::size_t directory_size = 12;
inline constexpr std::size_t directory = 16;
inline constexpr std::size_t comment_length = 20;
}  // namespace end_record

}  // namespace cli::zip
