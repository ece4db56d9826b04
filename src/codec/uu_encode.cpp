#include "codec/uu_encode.h"

#include <algorithm>
#include <array>

#include "codec/uu_lanes.h"

namespace tessera {
namespace {

// Encodes the data of a line that takes its characters for bytes. The lane behind them is read.
uu::LaneBytes encode_data(const char16_t* bytes, std::size_t count, char16_t* data) {
    return uu::encode_groups(bytes, uu::groups_of(count), data);
}

// True when the characters of the line, which has others behind it, have the values of their bytes.
bool encode_unchanged(std::u16string_view line, const AnsiCodePage& page, char16_t* data) {
    return encode_data(line.data(), line.size(), data) == uu::LaneBytes::ascii ||
           page.leaves_unchanged(line);
}

void encode_as_bytes(std::u16string_view line, const AnsiCodePage& page, char16_t* data) {
    std::array<char16_t, uu::line_bytes + uu::group_bytes> bytes;
    page.to_bytes(line, bytes.data());
    std::fill_n(bytes.data() + line.size(), uu::group_bytes, u'\0');
    encode_data(bytes.data(), line.size(), data);
}

// Encodes 1 to 45 characters at `encoded` and answers the end of the line. Missing bytes of the
// last group are zero; the length character tells how many are real.
char16_t* UUEncodePrv(std::u16string_view line, bool is_last, const AnsiCodePage& page,
                      char16_t* encoded) {
    char16_t* const data = encoded + uu::length_characters;
    char16_t* const end = data + uu::groups_of(line.size()) * uu::group_characters;
    *encoded = static_cast<char16_t>(uu::base_byte + line.size());
    // The last line has no lane behind it.
    if (is_last || !page.ascii_is_identity() || !encode_unchanged(line, page, data))
        encode_as_bytes(line, page, data);
    if (!page.ascii_is_identity()) page.to_chars({encoded, end});
    return end;
}

}  // namespace

std::size_t uu_encoded_length(std::size_t characters) {
    const std::size_t lines = (characters + uu::line_bytes - 1) / uu::line_bytes;
    return lines * uu::length_characters + uu::groups_of(characters) * uu::group_characters;
}

void UUEncode(std::u16string_view text, const AnsiCodePage& page, char16_t* encoded) {
    for (std::size_t at = 0; at < text.size(); at += uu::line_bytes) {
        const bool is_last = text.size() - at <= uu::line_bytes;
        encoded = UUEncodePrv(text.substr(at, uu::line_bytes), is_last, page, encoded);
    }
}

std::u16string UUEncode(std::u16string_view text, const AnsiCodePage& page) {
    std::u16string encoded(uu_encoded_length(text.size()), u'\0');
    UUEncode(text, page, encoded.data());
    return encoded;
}

}  // namespace tessera
