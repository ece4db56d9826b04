// Texts between the system's wide characters and the UTF-8 of libraries.
#pragma once

#include <string>
#include <string_view>

#include "text/utf8.h"

namespace cli {

inline std::string utf8(std::wstring_view text) {
    return tessera::to_utf8(std::u16string(text.begin(), text.end()));
}

// Bytes that are not UTF-8 give an empty text.
inline std::wstring wide(std::string_view text) {
    const std::u16string units = tessera::from_utf8(text).value_or(std::u16string());
    return std::wstring(units.begin(), units.end());
}

}  // namespace cli
