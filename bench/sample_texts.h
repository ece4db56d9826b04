// Texts of known character for the tests and the benchmark of the codecs: the same for the same
// seed, whatever the compiler.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace tessera::samples {

// In characters.
inline constexpr std::size_t megabyte = 1'048'576 / sizeof(char16_t);

class RandomTexts {
  public:
    explicit RandomTexts(std::uint32_t seed) : engine_(seed) {}

    // 0 to `limit` - 1.
    std::uint32_t number(std::uint32_t limit) {
        return static_cast<std::uint32_t>(engine_() % limit);
    }

    std::u16string from(std::u16string_view alphabet, std::size_t length) {
        std::u16string text;
        while (text.size() < length)
            text += alphabet[number(static_cast<std::uint32_t>(alphabet.size()))];
        return text;
    }

    // Pieces of up to `longest` characters of `source`, one after the other: long matches at any
    // distance.
    std::u16string pieces_of(std::u16string_view source, std::size_t longest, std::size_t length) {
        std::u16string text;
        while (text.size() < length) {
            const std::size_t at = number(static_cast<std::uint32_t>(source.size()));
            text += source.substr(at, 1 + number(static_cast<std::uint32_t>(longest)));
        }
        text.resize(length);
        return text;
    }

    // Rows of a query result as XML.
    std::u16string query_rows(std::size_t length);

  private:
    std::u16string digits(std::size_t count) { return from(u"0123456789", count); }

    std::u16string_view one_of(const std::u16string_view (&texts)[6]) { return texts[number(6)]; }

    std::mt19937 engine_;
};

inline std::u16string RandomTexts::query_rows(std::size_t length) {
    static constexpr std::u16string_view names[6] = {u"Pumpe",    u"Ventil",  u"Motor",
                                                     u"Behälter", u"Leitung", u"Messstelle"};
    static constexpr std::u16string_view units[6] = {u"bar", u"m³/h", u"kW", u"mm", u"°C", u"kg"};
    std::u16string text = u"<Rows Version=\"1\">";
    while (text.size() < length) {
        text += u"<Row Version=\"1\"><Tag Type=\"String\" Data=\"";
        text += from(u"ABCDEFKLMPQRSTV", 1);
        text += digits(3);
        text += u"-";
        text += digits(2);
        text += u"\"/><Label Type=\"String\" Data=\"";
        text += one_of(names);
        text += u" ";
        text += digits(2);
        text += u"\"/><Value Type=\"Double\" Data=\"";
        text += digits(2 + number(3));
        text += u".";
        text += digits(2);
        text += u"\"/><Unit Type=\"String\" Data=\"";
        text += one_of(units);
        text += u"\"/></Row>";
    }
    text.resize(length);
    return text;
}

// No two places with the same character within 65536.
inline std::u16string without_repeats(std::size_t length) {
    std::u16string text(length, u'\0');
    for (std::size_t i = 0; i < length; ++i)
        text[i] = static_cast<char16_t>(i);
    return text;
}

inline std::u16string periodic(std::size_t period, std::size_t length) {
    std::u16string text(length, u'\0');
    for (std::size_t i = 0; i < length; ++i)
        text[i] = static_cast<char16_t>(u'0' + i % period);
    return text;
}

}  // namespace tessera::samples
