// Code pages that no system has, to show what a codec takes for granted.
#pragma once

#include <cstdint>
#include <span>
#include <utility>

#include "codec/ansi_code_page.h"

namespace tessera {

inline AnsiCodePage::ToUnicode characters_of(const AnsiCodePage& page, std::uint8_t shift) {
    AnsiCodePage::ToUnicode characters{};
    for (std::size_t byte = 0; byte < characters.size(); ++byte)
        characters[byte] = page.to_char(static_cast<std::uint8_t>(byte + shift));
    return characters;
}

// Every byte stands for another character than usual.
inline AnsiCodePage shifted_page() {
    return AnsiCodePage(characters_of(AnsiCodePage::windows_1252(), 77));
}

// The usual ASCII, but two letters above it have changed places.
inline AnsiCodePage swapped_page() {
    AnsiCodePage::ToUnicode characters = characters_of(AnsiCodePage::windows_1252(), 0);
    std::swap(characters[0xE4], characters[0xF6]);
    return AnsiCodePage(characters);
}

// windows-1252 with best fits and the number sign as replacement.
inline AnsiCodePage western_page(std::span<const AnsiCodePage::BestFit> fits) {
    return AnsiCodePage(characters_of(AnsiCodePage::windows_1252(), 0), '#', fits);
}

}  // namespace tessera
