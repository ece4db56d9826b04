#include "hostkit/script/script_error_text.h"

#include <algorithm>

namespace hostkit {
namespace {

constexpr HRESULT control_error(unsigned number) {
    return static_cast<HRESULT>(0x800A0000U | number);
}

struct PlatformCode {
    HRESULT code;
    unsigned number;
};

// Codes of automation, by the number that the language gives the same error.
constexpr PlatformCode platform_codes[] = {
    {DISP_E_DIVBYZERO, 11},         {DISP_E_TYPEMISMATCH, 13},
    {DISP_E_OVERFLOW, 6},           {DISP_E_BADINDEX, 9},
    {DISP_E_ARRAYISLOCKED, 10},     {DISP_E_UNKNOWNNAME, 438},
    {DISP_E_MEMBERNOTFOUND, 438},   {DISP_E_BADPARAMCOUNT, 450},
    {DISP_E_PARAMNOTOPTIONAL, 449}, {DISP_E_PARAMNOTFOUND, 448},
    {DISP_E_NONAMEDARGS, 446},      {DISP_E_NOTACOLLECTION, 451},
    {DISP_E_BADVARTYPE, 458},       {E_NOTIMPL, 445},
    {E_NOINTERFACE, 430},           {E_OUTOFMEMORY, 7},
    {CO_E_CLASSSTRING, 429},        {REGDB_E_CLASSNOTREG, 429},
};

struct NumberedText {
    unsigned number;
    const wchar_t* text;
};

constexpr NumberedText texts[] = {
    {5, L"Invalid procedure call or argument"},
    {6, L"Overflow"},
    {7, L"Out of memory"},
    {9, L"Subscript out of range"},
    {10, L"This array is fixed or temporarily locked"},
    {11, L"Division by zero"},
    {13, L"Type mismatch"},
    {28, L"Out of stack space"},
    {35, L"Sub or Function not defined"},
    {91, L"Object variable not set"},
    {92, L"For loop not initialized"},
    {94, L"Invalid use of Null"},
    {424, L"Object required"},
    {429, L"Can't create object"},
    {430, L"Class doesn't support Automation"},
    {438, L"Object doesn't support this property or method"},
    {445, L"Object doesn't support this action"},
    {446, L"Object doesn't support named arguments"},
    {448, L"Named argument not found"},
    {449, L"Argument not optional"},
    {450, L"Wrong number of arguments or invalid property assignment"},
    {451, L"Object not a collection"},
    {458, L"Variable uses an Automation type not supported by the script language"},
    {500, L"Variable is undefined"},
    {501, L"Illegal assignment"},
    {505, L"Invalid or unqualified reference"},
    {506, L"Class not defined"},
};

const wchar_t* known_text(HRESULT code) {
    const auto same = std::ranges::find(platform_codes, code, &PlatformCode::code);
    const HRESULT mapped = same == std::end(platform_codes) ? code : control_error(same->number);
    const auto found = std::ranges::find_if(
        texts, [&](const NumberedText& entry) { return control_error(entry.number) == mapped; });
    return found == std::end(texts) ? nullptr : found->text;
}

std::wstring_view without_return(std::wstring_view line) noexcept {
    if (!line.empty() && line.back() == L'\r') line.remove_suffix(1);
    return line;
}

}  // namespace

std::wstring runtime_error_text(HRESULT code) {
    if (const wchar_t* const text = known_text(code)) return text;
    if (code == E_FAIL) return L"Unspecified error";
    wchar_t text[32];
    swprintf(text, std::size(text), L"Error &H%08lX", static_cast<unsigned long>(code));
    return text;
}

SourceLine source_line(std::wstring_view code, long number) noexcept {
    // The line end of the last line does not begin another one.
    if (!code.empty() && code.back() == L'\n') code.remove_suffix(1);
    long current = 1;
    std::size_t start = 0;
    std::size_t end = code.find(L'\n');
    while (current < number && end != std::wstring_view::npos) {
        ++current;
        start = end + 1;
        end = code.find(L'\n', start);
    }
    if (end == std::wstring_view::npos) end = code.size();
    return {current, without_return(code.substr(start, end - start))};
}

}  // namespace hostkit
