// The LCSS compressor written down as its rules read, without a thought of speed: every search
// starts at the beginning of the window. The tests compare results with it, the benchmark times.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tessera::reference {

inline std::u16string count_field(std::size_t value, const auto& character_of_byte) {
    if (value > 65535) return {};
    const std::u16string zeros(2, character_of_byte(0));
    return zeros + character_of_byte(value / 256) + character_of_byte(value % 256);
}

inline std::u16string packed_flags(std::u16string flags, const auto& character_of_byte) {
    flags.append(flags.size() % 8, u'0');
    std::u16string packed;
    for (std::size_t group = 0; group < flags.size(); group += 8) {
        std::size_t byte = 0;
        for (std::size_t k = 0; k < 8 && group + k < flags.size(); ++k)
            byte += flags[group + k] == u'1' ? std::size_t{1} << k : 0;
        packed += character_of_byte(byte);
    }
    return packed;
}

struct Match {
    std::size_t position;
    std::size_t length;
};

inline Match find_match(std::u16string_view window, std::u16string_view ahead,
                        std::size_t longest) {
    constexpr std::size_t nowhere = std::u16string_view::npos;
    if (longest < 3) return {0, 0};
    const auto search = [&](std::size_t length) { return window.find(ahead.substr(0, length)); };
    for (std::size_t length = 3; length <= longest; length += 3) {
        if (search(length) != nowhere) continue;
        if (length == 3) return {0, 0};
        for (std::size_t shorter = length - 1; shorter >= length - 2; --shorter)
            if (const std::size_t position = search(shorter); position != nowhere)
                return {position, shorter};
        return {search(length - 3), length - 3};
    }
    const std::size_t position = search(longest);
    return position == nowhere ? Match{0, 0} : Match{position, longest};
}

// `character_of_byte` gives the character that stands for a byte value.
inline std::u16string compress(std::u16string_view text, const auto& character_of_byte) {
    if (text.size() < 4) return std::u16string(text);
    std::u16string body(text.substr(0, 4));
    std::u16string flags;
    std::size_t longest = 255;
    for (std::size_t p = 5; p <= text.size();) {
        const std::size_t window_start = p > 65535 ? p - 65535 : 1;
        const auto window = text.substr(window_start - 1, p - window_start);
        longest = text.size() - p < longest ? text.size() - p : longest;
        const Match match = find_match(window, text.substr(p - 1), longest);
        if (match.length == 0) {
            body += text[p - 1];
            flags += u'0';
            ++p;
            continue;
        }
        const std::size_t distance = window.size() - match.position;
        body += character_of_byte(distance / 256);
        body += character_of_byte(distance % 256);
        body += character_of_byte(match.length);
        flags += u'1';
        p += match.length;
    }
    const std::u16string packed = packed_flags(flags, character_of_byte);
    return count_field(flags.size(), character_of_byte) +
           count_field(packed.size(), character_of_byte) + packed + body;
}

}  // namespace tessera::reference
