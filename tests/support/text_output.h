// Lets doctest show 16-bit texts, in ASCII with everything else as numbers.
#pragma once

#include <string>
#include <string_view>

#include "doctest/doctest.h"

namespace doctest {

inline String show_text(std::u16string_view text) {
    std::string shown = "\"";
    for (const char16_t character : text) {
        if (character >= u' ' && character < 127)
            shown += static_cast<char>(character);
        else
            shown += "{" + std::to_string(static_cast<unsigned>(character)) + "}";
    }
    return (shown + "\"").c_str();
}

template <>
struct StringMaker<std::u16string> {
    static String convert(const std::u16string& text) { return show_text(text); }
};
template <>
struct StringMaker<std::u16string_view> {
    static String convert(std::u16string_view text) { return show_text(text); }
};

}  // namespace doctest
