// Conversions of texts between host and office form, and of texts that were read under the code
// page of the wrong locale. Failures are reported under the class GFunctions, which offers the
// first two of them.
#pragma once

#include "automation/bstr.h"
#include "host/error_boundary.h"

namespace tessera {

// The source that the class GFunctions reports under, and so does what it offers of this room.
inline constexpr wchar_t gfunctions_source[] = L"Tessera.GFunctions";
inline constexpr MemberName get_vb_string{gfunctions_source, L"Public Function 'GetVBString'"};
inline constexpr MemberName get_office_string{gfunctions_source,
                                              L"Public Function 'GetOfficeString'"};

// The locale is accepted and not used: line breaks are the same everywhere.
automation::Bstr GetVBString(std::wstring_view office_text, long lcid) noexcept;
automation::Bstr GetOfficeString(std::wstring_view vb_text, long lcid) noexcept;

// Re-reads a text under another locale's ANSI code page. From locale 0 only the line breaks are
// converted, on purpose. The text stays as it is when a locale has no code page.
automation::Bstr GetOfficeFromOffice(std::wstring_view text, long from_lcid, long to_lcid) noexcept;

}  // namespace tessera
