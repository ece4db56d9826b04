// Texts made of words, and back.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cli {

inline std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> words;
    for (std::size_t end; (end = text.find(separator)) != text.npos; text.remove_prefix(end + 1))
        words.emplace_back(text.substr(0, end));
    words.emplace_back(text);
    return words;
}

inline std::string joined(const std::vector<std::string>& words, std::string_view separator) {
    std::string text;
    for (const std::string& word : words) {
        if (&word != &words.front()) text += separator;
        text += word;
    }
    return text;
}

}  // namespace cli
