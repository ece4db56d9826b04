#include "codec/ansi_code_page.h"

#include <algorithm>
#include <cstring>

namespace tessera {
namespace {

constexpr std::size_t character_values = 0x10000;
constexpr std::size_t ascii_values = 0x80;
constexpr std::size_t first_latin = 0xA0;

// The only rows in which windows-1252 differs from the first 256 characters of Unicode.
constexpr std::size_t first_special_byte = 0x80;
constexpr std::array<char16_t, 32> windows_1252_specials = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

AnsiCodePage::ToUnicode windows_1252_characters() {
    AnsiCodePage::ToUnicode characters{};
    for (std::size_t byte = 0; byte < characters.size(); ++byte)
        characters[byte] = static_cast<char16_t>(byte);
    std::copy(windows_1252_specials.begin(), windows_1252_specials.end(),
              characters.begin() + first_special_byte);
    return characters;
}

// What code pages answer for a byte that they do not assign.
constexpr char16_t unassigned = 0xFFFD;

AnsiCodePage::ToUnicode with_all_assigned(AnsiCodePage::ToUnicode characters) {
    for (std::size_t byte = 0; byte < characters.size(); ++byte)
        if (characters[byte] == unassigned) characters[byte] = static_cast<char16_t>(byte);
    return characters;
}

bool is_identity(const AnsiCodePage::ToUnicode& characters, std::size_t first, std::size_t end) {
    while (first < end && characters[first] == first)
        ++first;
    return first == end;
}

// The value in each of the four characters that a word is made of.
constexpr std::uint64_t four_times(std::uint16_t value) {
    return value * std::uint64_t{0x0001000100010001};
}

bool word_is_ascii(std::uint64_t word) {
    return (word & four_times(0xFF80)) == 0;
}

// The characters from 128 to 159 have a 1 in the topmost of their three high bits, which turned
// over gives zero, the only sum below without a carry.
bool word_is_latin(std::uint64_t word) {
    const std::uint64_t high_bits = (word ^ four_times(0x80)) & four_times(0xE0);
    const std::uint64_t carries = high_bits + four_times(0x7FE0);
    return ((word & four_times(0xFF00)) | (~carries & four_times(0x8000))) == 0;
}

template <typename WordTest>
bool all_of(std::u16string_view text, WordTest word_passes) {
    for (; text.size() >= 4; text.remove_prefix(4)) {
        std::uint64_t word;
        std::memcpy(&word, text.data(), sizeof word);
        if (!word_passes(word)) return false;
    }
    return std::all_of(text.begin(), text.end(), word_passes);
}

}  // namespace

AnsiCodePage::AnsiCodePage(const ToUnicode& to_unicode, std::uint8_t replacement,
                           std::span<const BestFit> best_fit)
    : to_unicode_(with_all_assigned(to_unicode)),
      from_unicode_(character_values, replacement),
      ascii_is_identity_(is_identity(to_unicode_, 0, ascii_values)),
      latin_is_identity_(ascii_is_identity_ && is_identity(to_unicode_, first_latin, byte_values)) {
    for (const BestFit& entry : best_fit)
        from_unicode_[entry.character] = entry.byte;
    // Exact entries come last so that they win; downwards, so that the lower of two bytes wins.
    for (std::size_t byte = byte_values; byte-- > 0;)
        from_unicode_[to_unicode_[byte]] = static_cast<std::uint8_t>(byte);
}

void AnsiCodePage::to_bytes(std::u16string_view text, char16_t* bytes) const {
    const std::uint8_t* const table = from_unicode_.data();
    std::transform(text.begin(), text.end(), bytes,
                   [table](char16_t character) { return char16_t{table[character]}; });
}

void AnsiCodePage::to_chars(std::span<char16_t> bytes) const {
    for (char16_t& byte : bytes)
        byte = to_char(static_cast<std::uint8_t>(byte));
}

bool AnsiCodePage::leaves_unchanged(std::u16string_view text) const {
    if (latin_is_identity_) return all_of(text, word_is_latin);
    return ascii_is_identity_ && all_of(text, word_is_ascii);
}

const AnsiCodePage& AnsiCodePage::windows_1252() {
    static const AnsiCodePage page(windows_1252_characters());
    return page;
}

}  // namespace tessera
