// The path "-": standard input where something is read, standard output where something is written.
#pragma once

#include <string>
#include <string_view>

namespace cli {

inline constexpr std::wstring_view standard_path = L"-";

inline bool is_standard(std::wstring_view path) noexcept {
    return path == standard_path;
}

// What the file is called where its name alone stands, and in a sentence.
inline std::wstring input_name(const std::wstring& path) {
    return is_standard(path) ? L"standard input" : path;
}
inline std::wstring quoted_input(const std::wstring& path) {
    return is_standard(path) ? input_name(path) : L"\"" + path + L"\"";
}

}  // namespace cli
