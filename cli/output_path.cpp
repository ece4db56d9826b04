#include "cli/output_path.h"

#include "automation/text.h"
#include "cli/failure.h"

namespace cli {
namespace {

std::wstring_view stem_of(std::wstring_view path) {
    path.remove_prefix(path.find_last_of(L"/\\:") + 1);
    const std::size_t dot = path.rfind(L'.');
    return dot == path.npos || dot == 0 ? path : path.substr(0, dot);
}

std::wstring usable(std::wstring_view name) {
    constexpr std::wstring_view refused = L"<>:\"/\\|?*";
    std::wstring result(name);
    for (wchar_t& character : result)
        if (character < L' ' || refused.find(character) != refused.npos) character = L'_';
    return result;
}

std::wstring full_path(const std::wstring& path) {
    std::wstring result(MAX_PATH, L'\0');
    DWORD length =
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(result.size()), result.data(), nullptr);
    if (length > result.size()) {
        result.resize(length);
        length = GetFullPathNameW(path.c_str(), length, result.data(), nullptr);
    }
    result.resize(length);
    return result.empty() ? path : result;
}

// True when both paths lead to the same place.
bool is_same_path(const std::wstring& left, const std::wstring& right) {
    return automation::equal_ignoring_case(full_path(left), full_path(right));
}

}  // namespace

std::wstring content_file_name(std::wstring_view project_path, std::wstring_view document_name) {
    return usable(stem_of(project_path)) + L"." + usable(document_name) + L".content.xml";
}

void check_output_path(const std::wstring& path, const std::wstring& input) {
    if (is_same_path(path, input))
        throw Failure(L"\"" + path + L"\" is what is read and cannot be written at the same time");
}

}  // namespace cli
