#include "host/office_text.h"

#include <limits>
#include <string>

#include "text/string_forms.h"

namespace tessera {

using automation::as_u16;
using automation::Bstr;

namespace {

constexpr MemberName office_from_office{gfunctions_source,
                                        L"Friend Function 'GetOfficeFromOffice'"};

UINT ansi_code_page(long lcid) {
    UINT code_page = 0;
    const int read =
        GetLocaleInfoW(static_cast<LCID>(lcid), LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                       reinterpret_cast<wchar_t*>(&code_page), sizeof code_page / sizeof(wchar_t));
    if (read == 0) automation::fail(HRESULT_FROM_WIN32(GetLastError()));
    return code_page;
}

int checked_length(std::size_t length) {
    if (length > static_cast<std::size_t>(std::numeric_limits<int>::max() / 4))
        automation::fail(E_OUTOFMEMORY);
    return static_cast<int>(length);
}

std::string to_bytes(std::wstring_view text, UINT code_page) {
    const int length = checked_length(text.size());
    std::string bytes(static_cast<std::size_t>(WideCharToMultiByte(
                          code_page, 0, text.data(), length, nullptr, 0, nullptr, nullptr)),
                      '\0');
    WideCharToMultiByte(code_page, 0, text.data(), length, bytes.data(),
                        checked_length(bytes.size()), nullptr, nullptr);
    return bytes;
}

std::wstring from_bytes(const std::string& bytes, UINT code_page) {
    const int length = checked_length(bytes.size());
    std::wstring text(static_cast<std::size_t>(
                          MultiByteToWideChar(code_page, 0, bytes.data(), length, nullptr, 0)),
                      L'\0');
    MultiByteToWideChar(code_page, 0, bytes.data(), length, text.data(),
                        checked_length(text.size()));
    return text;
}

}  // namespace

Bstr GetVBString(std::wstring_view office_text, long) noexcept {
    return guarded_result<Bstr>(
        get_vb_string, [&](Bstr& result) { result = Bstr(vb_string(as_u16(office_text))); });
}

Bstr GetOfficeString(std::wstring_view vb_text, long) noexcept {
    return guarded_result<Bstr>(
        get_office_string, [&](Bstr& result) { result = Bstr(office_string(as_u16(vb_text))); });
}

Bstr GetOfficeFromOffice(std::wstring_view text, long from_lcid, long to_lcid) noexcept {
    return guarded_result<Bstr>(office_from_office, [&](Bstr& result) {
        result = Bstr(text);
        if (text.empty() || from_lcid == to_lcid) return;
        if (from_lcid == 0) {
            result = GetOfficeString(text, to_lcid);
            return;
        }
        const UINT to_page = to_lcid > 0 ? ansi_code_page(to_lcid) : CP_ACP;
        result = Bstr(from_bytes(to_bytes(text, ansi_code_page(from_lcid)), to_page));
    });
}

}  // namespace tessera
