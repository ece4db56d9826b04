// Trimming as automation does it: blanks only, no other white space.
#pragma once

#include <string_view>

namespace tessera {

template <class Character>
constexpr std::basic_string_view<Character> trim_blanks(std::basic_string_view<Character> text) {
    while (!text.empty() && text.front() == Character(' '))
        text.remove_prefix(1);
    while (!text.empty() && text.back() == Character(' '))
        text.remove_suffix(1);
    return text;
}

}  // namespace tessera
