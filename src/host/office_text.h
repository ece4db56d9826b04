// Conversions of texts between host and office form, and of texts that were read under the code
// page of the wrong locale. Failures are reported under the class GFunctions, which offers the
// first two of them.
#pragma once

#include "automation/bstr.h"

namespace tessera {

// The locale is accepted and not used: line breaks are the same everywhere.
automation::Bstr GetVBString(std::wstring_view office_text, long lcid) noexcept;
automation::Bstr GetOfficeString(std::wstring_view vb_text, long lcid) noexcept;

// Re-reads a text under another locale's ANSI code page. From locale 0 only the line breaks are
// converted, on purpose. The text stays as it is when a locale has no code page.
automation::Bstr GetOfficeFromOffice(std::wstring_view text, long from_lcid, long to_lcid) noexcept;

}  // namespace tessera
