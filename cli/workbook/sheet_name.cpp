#include "cli/workbook/sheet_name.h"

#include "automation/bstr_view.h"

namespace cli {

std::wstring sheet_name_problem(std::u16string_view name) {
    constexpr std::size_t longest = 31;
    constexpr std::u16string_view forbidden = u"[]:*?/\\";
    if (name.empty()) return L"is empty";
    if (name.size() > longest) return L"has more than 31 characters";
    if (const std::size_t at = name.find_first_of(forbidden); at != name.npos)
        return std::wstring(L"has the character \"") + static_cast<wchar_t>(name[at]) + L"\"";
    for (const char16_t letter : name)
        if (letter < u' ' || letter >= 0xFFFE) return L"has a control character";
    if (name.front() == u'\'' || name.back() == u'\'') return L"begins or ends with an apostrophe";
    if (folded_sheet_name(name) == u"history")
        return L"is one that spreadsheet programs keep for themselves";
    return {};
}

std::u16string folded_sheet_name(std::u16string_view name) {
    std::wstring folded(name.begin(), name.end());
    CharLowerBuffW(folded.data(), static_cast<DWORD>(folded.size()));
    return std::u16string(automation::as_u16(folded));
}

}  // namespace cli
