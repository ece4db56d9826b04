// Conversion between 16-bit characters and the bytes of one single-byte ANSI code page.
// The codecs get such an object handed in, so that they never ask the platform themselves.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace tessera {

// An immutable single-byte code page. Every byte stands for one character; a character that no
// byte stands for becomes the replacement byte. Safe to share between threads.
class AnsiCodePage {
  public:
    static constexpr std::size_t byte_values = 256;
    using ToUnicode = std::array<char16_t, byte_values>;

    // A character that the code page does not hold but that is close enough to one it holds.
    struct BestFit {
        char16_t character;
        std::uint8_t byte;
    };

    // `to_unicode` gives the character of each byte; when two bytes stand for the same
    // character, it is written as the lower one. U+FFFD means that the byte is not assigned; it
    // then stands for the character of the same value, so that it survives: under UTF-8 that is
    // every byte above ASCII. `best_fit` never overrides an exact entry.
    explicit AnsiCodePage(const ToUnicode& to_unicode, std::uint8_t replacement = '?',
                          std::span<const BestFit> best_fit = {});

    // Windows-1252, its five unassigned bytes standing for the control characters of the same
    // value: every byte survives the way to a character and back.
    static const AnsiCodePage& windows_1252();

    char16_t to_char(std::uint8_t byte) const { return to_unicode_[byte]; }
    std::uint8_t to_byte(char16_t character) const { return from_unicode_[character]; }

    // The byte of each character of `text`, as 16-bit values at `bytes`, which has room for them.
    void to_bytes(std::u16string_view text, char16_t* bytes) const;

    // Turns byte values into their characters in place.
    void to_chars(std::span<char16_t> bytes) const;

    // True when the bytes of ASCII characters have the characters' values, as nearly everywhere.
    bool ascii_is_identity() const { return ascii_is_identity_; }

    // The same for all characters below 256 but those from 128 to 159, as on Western systems.
    bool latin_is_identity() const { return latin_is_identity_; }

    // True when the bytes of all characters of `text` are known to have the characters' values.
    bool leaves_unchanged(std::u16string_view text) const;

    // True when the character survives the way to a byte and back.
    bool holds(char16_t character) const { return to_char(to_byte(character)) == character; }

  private:
    ToUnicode to_unicode_;
    std::vector<std::uint8_t> from_unicode_;  // one byte for each of the 65536 characters
    bool ascii_is_identity_;
    bool latin_is_identity_;
};

}  // namespace tessera
