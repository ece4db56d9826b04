#include "functions/gfunctions.h"

#include "codec/lcss_compress.h"
#include "codec/lcss_decompress.h"
#include "codec/prefixed_text.h"
#include "codec/uu_decode.h"
#include "codec/uu_encode.h"
#include "functions/clipboard.h"
#include "functions/system_code_page.h"
#include "host/error_boundary.h"
#include "host/host_encoding.h"
#include "host/host_helpers.h"
#include "host/office_text.h"

namespace tessera {

using automation::as_u16;
using automation::Bstr;
using automation::view_of;

namespace {

constexpr MemberName member(const wchar_t* label) {
    return {L"Tessera.GFunctions", label};
}

// What is wrong with a line, as the run-time names it.
HRESULT error_of(UuFault fault) {
    switch (fault) {
        case UuFault::negative_length:
            return automation::error_invalid_procedure_call;
        case UuFault::incomplete_group:
            return automation::error_subscript_out_of_range;
        case UuFault::byte_overflow:
            return automation::error_overflow;
    }
    return E_FAIL;
}

// Lines fail one by one: the line's worker reports, and the others are decoded all the same.
void report_malformed_line(const UuMalformedLine& line) {
    guarded(member(L"Private Function 'UUDecodePrv'"),
            [&] { automation::fail(error_of(line.fault)); });
}

}  // namespace

STDMETHODIMP GFunctions::GetVBString(BSTR OfficeString, long LCID, BSTR* Result) {
    return trapped(Result, member(L"Public Function 'GetVBString'"), [&](Bstr& result) {
        result = tessera::GetVBString(view_of(OfficeString), LCID);
    });
}

STDMETHODIMP GFunctions::GetOfficeString(BSTR VBString, long LCID, BSTR* Result) {
    return trapped(Result, member(L"Public Function 'GetOfficeString'"), [&](Bstr& result) {
        result = tessera::GetOfficeString(view_of(VBString), LCID);
    });
}

STDMETHODIMP GFunctions::UUEncode(BSTR InputStr, BSTR* Result) {
    return trapped(Result, member(L"Public Function 'UUEncode'"), [&](Bstr& result) {
        result = Bstr(tessera::UUEncode(as_u16(view_of(InputStr)), system_code_page()));
    });
}

STDMETHODIMP GFunctions::UUDecode(BSTR InputStr, BSTR* Result) {
    return trapped(Result, member(L"Public Function 'UUDecode'"), [&](Bstr& result) {
        result = Bstr(tessera::UUDecode(as_u16(view_of(InputStr)), system_code_page(),
                                        report_malformed_line));
    });
}

STDMETHODIMP GFunctions::LCSSCompress(BSTR strDaten, BSTR* Result) {
    return trapped(Result, member(L"Public Function 'LCSSCompress'"), [&](Bstr& result) {
        result = Bstr(tessera::LCSSCompress(as_u16(view_of(strDaten)), system_code_page()));
    });
}

STDMETHODIMP GFunctions::LCSSDecompress(BSTR strDaten, BSTR* Result) {
    return trapped(Result, member(L"Public Function 'LCSSDecompress'"), [&](Bstr& result) {
        result = Bstr(tessera::LCSSDecompress(as_u16(view_of(strDaten)), system_code_page()));
    });
}

STDMETHODIMP GFunctions::get_EncodePrefix(BSTR* Result) {
    return trapped(Result, member(L"Public Property Get 'EncodePrefix'"),
                   [&](Bstr& result) { result = Bstr(kEncodePrefix); });
}

STDMETHODIMP GFunctions::Encode(BSTR InputStr, BSTR* Result) {
    return trapped(Result, member(L"Public Function 'Encode'"),
                   [&](Bstr& result) { result = HostEncoding().encode(view_of(InputStr)); });
}

STDMETHODIMP GFunctions::Decode(BSTR InputStr, BSTR* Result) {
    return trapped(Result, member(L"Public Function 'Decode'"), [&](Bstr& result) {
        const PrefixedText text = split_prefixed_text(as_u16(view_of(InputStr)));
        const Bstr payload(text.payload);
        if (text.layout == EncodedLayout::current) result = HostEncoding().decode(payload.view());
        if (text.layout != EncodedLayout::legacy) return;
        Bstr compressed;
        UUDecode(payload.get(), compressed.put());
        LCSSDecompress(compressed.get(), result.put());
    });
}

STDMETHODIMP GFunctions::GetKelosPhysUnit(IKelosObject* KelosObj, BSTR PULabel, BSTR* Result) {
    return trapped(Result, member(L"Public Function 'GetKelosPhysUnit'"), [&](Bstr& result) {
        result = tessera::GetKelosPhysUnit(KelosObj, view_of(PULabel));
    });
}

STDMETHODIMP GFunctions::ISMappingTable(IKelosDocument* Document, VARIANT_BOOL* Result) {
    return trapped(Result, member(L"Private sub 'SetMappingTable'"), [&](VARIANT_BOOL& result) {
        result = as_variant_bool(tessera::ISMappingTable(Document));
    });
}

STDMETHODIMP GFunctions::UnicodeTextToClipBoard(BSTR UnicodeStr) {
    return trapped(member(L"Public Sub 'UnicodeTextToClipBoard'"),
                   [&] { put_clipboard_text(view_of(UnicodeStr)); });
}

STDMETHODIMP GFunctions::UnicodeTextFromClipBoard(BSTR* Result) {
    return trapped(Result, member(L"Public Function 'UnicodeTextFromClipBoard'"),
                   [&](Bstr& result) { result = Bstr(clipboard_text()); });
}

}  // namespace tessera
