#include "codec/uu_decode.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "codec/uu_lanes.h"

namespace tessera {
namespace {

constexpr int byte_limit = 256;

// The group arithmetic for codes outside the alphabet: the line is good as long as every result
// is a byte.
bool decode_odd_group(const char16_t* codes, char16_t* bytes) {
    std::array<int, uu::group_characters> c{};
    for (std::size_t i = 0; i < c.size(); ++i) {
        c[i] = codes[i] == uu::zero_byte ? 0 : codes[i] - uu::base_byte;
        if (c[i] < 0) return false;
    }
    const std::array<int, uu::group_bytes> values = {
        c[0] * 4 + c[1] / 16, (c[1] & 15) * 16 + c[2] / 4, (c[2] & 3) * 64 + c[3]};
    std::copy(values.begin(), values.end(), bytes);
    return std::all_of(values.begin(), values.end(), [](int value) { return value < byte_limit; });
}

uu::LaneBytes decode_odd_groups(const char16_t* codes, std::size_t groups, char16_t* bytes) {
    for (; groups > 0; --groups, codes += uu::group_characters, bytes += uu::group_bytes)
        if (!decode_odd_group(codes, bytes)) return uu::LaneBytes::invalid;
    return uu::LaneBytes::any;
}

uu::LaneBytes decode_data(std::u16string_view data, std::size_t groups, const AnsiCodePage& page,
                          char16_t* bytes) {
    // The alphabet is ASCII: characters within it need no conversion.
    if (page.ascii_is_identity()) {
        const uu::LaneBytes kind = uu::decode_groups(data.data(), groups, bytes);
        if (kind != uu::LaneBytes::invalid) return kind;
    }
    std::array<char16_t, uu::line_characters> codes;
    page.to_bytes(data, codes.data());
    return decode_odd_groups(codes.data(), groups, bytes);
}

void to_characters(std::span<char16_t> bytes, uu::LaneBytes kind, const AnsiCodePage& page) {
    const bool known = kind == uu::LaneBytes::latin && page.latin_is_identity();
    if (!known && !page.leaves_unchanged({bytes.data(), bytes.size()})) page.to_chars(bytes);
}

// Decodes one line of 1 to 61 characters at `end` and moves `end` behind it. A malformed one yields
// nothing, though what it wrote stays behind the end.
std::optional<UuFault> UUDecodePrv(std::u16string_view line, const AnsiCodePage& page,
                                   char16_t*& end) {
    const int promised = page.to_byte(line.front()) - uu::base_byte;
    const std::u16string_view data = line.substr(uu::length_characters);
    if (data.size() % uu::group_characters != 0) return UuFault::incomplete_group;
    if (promised < 0) return UuFault::negative_length;
    const std::size_t groups = data.size() / uu::group_characters;
    const uu::LaneBytes kind = decode_data(data, groups, page, end);
    if (kind == uu::LaneBytes::invalid) return UuFault::byte_overflow;
    const std::size_t length =
        std::min(groups * uu::group_bytes, static_cast<std::size_t>(promised));
    to_characters({end, length}, kind, page);
    end += length;
    return std::nullopt;
}

}  // namespace

std::size_t uu_decoded_room(std::size_t characters) {
    return characters / uu::group_characters * uu::group_bytes + uu::slack_lanes;
}

std::size_t UUDecode(std::u16string_view text, const AnsiCodePage& page,
                     const UuMalformedLineSink& on_malformed_line, char16_t* decoded) {
    char16_t* end = decoded;
    for (std::size_t at = 0; at < text.size(); at += uu::line_characters) {
        const auto fault = UUDecodePrv(text.substr(at, uu::line_characters), page, end);
        if (fault && on_malformed_line) on_malformed_line({at, *fault});
    }
    return static_cast<std::size_t>(end - decoded);
}

std::u16string UUDecode(std::u16string_view text, const AnsiCodePage& page,
                        const UuMalformedLineSink& on_malformed_line) {
    std::u16string decoded(uu_decoded_room(text.size()), u'\0');
    decoded.resize(UUDecode(text, page, on_malformed_line, decoded.data()));
    return decoded;
}

}  // namespace tessera
