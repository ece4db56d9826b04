// Search for the leftmost occurrence of a text in another one, with the machine's vector
// instructions where there are any.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace tessera {

struct PrefixMatch {
    std::size_t position = 0;
    std::size_t length = 0;  ///< 0: nowhere
};

/// The leftmost place in `text`, at or behind `from`, where all of `needle` occurs. If it does
/// not occur, the same for the longest beginning of it that has at least `least` characters.
/// Requires 2 <= `least` <= `needle.size()` and `from` <= `text.size()`.
PrefixMatch find_longest_prefix(std::u16string_view text, std::size_t from,
                                std::u16string_view needle, std::size_t least);

/// The same as `text.find(needle, from)`, fast, for a needle of at least 2 characters and `from`
/// within the text.
std::size_t find_substring(std::u16string_view text, std::u16string_view needle, std::size_t from);

/// How many characters the beginnings of two texts have in common.
std::size_t common_length(std::u16string_view a, std::u16string_view b);

/// The ways to search that this machine offers: the portable one first, the one that
/// `find_substring` goes last.
using SubstringSearch = std::size_t (*)(std::u16string_view text, std::u16string_view needle,
                                        std::size_t from);
std::vector<SubstringSearch> substring_searches();

}  // namespace tessera
