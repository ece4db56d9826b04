#include "text/string_forms.h"

#include <algorithm>

namespace tessera {
namespace {

std::u16string replace_pair(std::u16string_view text, std::u16string_view pair) {
    std::u16string result;
    result.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t found = std::min(text.find(pair, position), text.size());
        result.append(text, position, found - position);
        if (found == text.size()) break;
        result.push_back(u'\n');
        position = found + pair.size();
    }
    return result;
}

}  // namespace

std::u16string vb_string(std::u16string_view office_text) {
    std::u16string result;
    const auto breaks = std::ranges::count(office_text, u'\n');
    result.reserve(office_text.size() + static_cast<std::size_t>(breaks));
    for (const char16_t character : office_text) {
        if (character == u'\n') result.push_back(u'\r');
        result.push_back(character);
    }
    return result;
}

std::u16string office_string(std::u16string_view vb_text) {
    // Without a CR there is no pair of either kind.
    if (vb_text.find(u'\r') == std::u16string_view::npos) return std::u16string(vb_text);
    return replace_pair(replace_pair(vb_text, u"\r\n"), u"\n\r");
}

}  // namespace tessera
