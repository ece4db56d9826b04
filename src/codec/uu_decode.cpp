#include "codec/uu_decode.h"

#include <algorithm>
#include <array>
#include <optional>

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

// Decodes lines into a block of bytes, which become characters when the block is full.
class BlockDecoder {
  public:
    BlockDecoder(const AnsiCodePage& page, std::u16string& decoded)
        : page_(page), decoded_(decoded), unchanged_(page.latin_is_identity()) {}

    // One line of 1 to 61 characters. A malformed one yields nothing.
    std::optional<UuFault> UUDecodePrv(std::u16string_view line) {
        const int promised = page_.to_byte(line.front()) - uu::base_byte;
        const std::u16string_view data = line.substr(uu::length_characters);
        if (data.size() % uu::group_characters != 0) return UuFault::incomplete_group;
        if (promised < 0) return UuFault::negative_length;
        const std::size_t groups = data.size() / uu::group_characters;
        const uu::LaneBytes kind = decode_data(data, groups);
        if (kind == uu::LaneBytes::invalid) return UuFault::byte_overflow;
        unchanged_ = unchanged_ && kind == uu::LaneBytes::latin;
        end_ += std::min(groups * uu::group_bytes, static_cast<std::size_t>(promised));
        if (++lines_ == uu::block_lines) flush();
        return std::nullopt;
    }

    void flush() {
        const std::size_t length = static_cast<std::size_t>(end_ - bytes_.data());
        if (!unchanged_ && !page_.leaves_unchanged({bytes_.data(), length}))
            page_.to_chars({bytes_.data(), length});
        decoded_.append(bytes_.data(), length);
        end_ = bytes_.data();
        lines_ = 0;
        unchanged_ = page_.latin_is_identity();
    }

  private:
    uu::LaneBytes decode_data(std::u16string_view data, std::size_t groups) {
        // The alphabet is ASCII: characters within it need no conversion.
        if (page_.ascii_is_identity()) {
            const uu::LaneBytes kind = uu::decode_groups(data.data(), groups, end_);
            if (kind != uu::LaneBytes::invalid) return kind;
        }
        std::array<char16_t, uu::line_characters> codes;
        page_.to_bytes(data, codes.data());
        return decode_odd_groups(codes.data(), groups, end_);
    }

    const AnsiCodePage& page_;
    std::u16string& decoded_;
    uu::BlockBytes bytes_;
    char16_t* end_ = bytes_.data();
    std::size_t lines_ = 0;
    bool unchanged_;
};

}  // namespace

std::u16string UUDecode(std::u16string_view text, const AnsiCodePage& page,
                        const UuMalformedLineSink& on_malformed_line) {
    std::u16string decoded;
    decoded.reserve(text.size() / uu::group_characters * uu::group_bytes);
    BlockDecoder lines(page, decoded);
    for (std::size_t at = 0; at < text.size(); at += uu::line_characters) {
        const auto fault = lines.UUDecodePrv(text.substr(at, uu::line_characters));
        if (fault && on_malformed_line) on_malformed_line({at, *fault});
    }
    lines.flush();
    return decoded;
}

}  // namespace tessera
