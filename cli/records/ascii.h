// Letters and digits of names that programs agree on, whatever the locale.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace cli {

constexpr char16_t lower_case(char16_t letter) noexcept {
    return letter >= u'A' && letter <= u'Z' ? static_cast<char16_t>(letter - u'A' + u'a') : letter;
}
inline bool is_same_name(std::u16string_view left, std::u16string_view right) {
    return std::ranges::equal(left, right, [](char16_t one, char16_t other) {
        return lower_case(one) == lower_case(other);
    });
}

inline std::u16string decimal(long number) {
    const std::string digits = std::to_string(number);
    return std::u16string(digits.begin(), digits.end());
}

}  // namespace cli
