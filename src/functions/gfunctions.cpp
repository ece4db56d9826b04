#include "functions/gfunctions.h"

#include "automation/bstr_room.h"
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
using automation::BstrRoom;
using automation::view_of;

namespace {

constexpr MemberName member(const wchar_t* label) {
    return {gfunctions_source, label};
}

constexpr MemberName uu_encode_text = member(L"Public Function 'UUEncode'");
constexpr MemberName uu_decode_text = member(L"Public Function 'UUDecode'");
constexpr MemberName uu_decode_line = member(L"Private Function 'UUDecodePrv'");
constexpr MemberName compress_text = member(L"Public Function 'LCSSCompress'");
constexpr MemberName decompress_text = member(L"Public Function 'LCSSDecompress'");
constexpr MemberName get_encode_prefix = member(L"Public Property Get 'EncodePrefix'");
constexpr MemberName encode_text = member(L"Public Function 'Encode'");
constexpr MemberName decode_text = member(L"Public Function 'Decode'");
constexpr MemberName text_to_clipboard = member(L"Public Sub 'UnicodeTextToClipBoard'");
constexpr MemberName text_from_clipboard = member(L"Public Function 'UnicodeTextFromClipBoard'");

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
    guarded(uu_decode_line, [&] { automation::fail(error_of(line.fault)); });
}

}  // namespace

Bstr GFunctions::uu_encode(std::wstring_view text) noexcept {
    return guarded_result<Bstr>(uu_encode_text, [&](Bstr& result) {
        const std::size_t length = uu_encoded_length(text.size());
        BstrRoom room(length);
        tessera::UUEncode(as_u16(text), system_code_page(), room.begin());
        result = room.finish(length);
    });
}

Bstr GFunctions::uu_decode(std::wstring_view text) noexcept {
    return guarded_result<Bstr>(uu_decode_text, [&](Bstr& result) {
        BstrRoom room(uu_decoded_room(text.size()));
        result = room.finish(tessera::UUDecode(as_u16(text), system_code_page(),
                                               report_malformed_line, room.begin()));
    });
}

Bstr GFunctions::lcss_compress(std::wstring_view text) noexcept {
    return guarded_result<Bstr>(compress_text, [&](Bstr& result) {
        result = Bstr(tessera::LCSSCompress(as_u16(text), system_code_page()));
    });
}

Bstr GFunctions::lcss_decompress(std::wstring_view text) noexcept {
    return guarded_result<Bstr>(decompress_text, [&](Bstr& result) {
        const LcssExtent extent = lcss_extent(as_u16(text), system_code_page());
        BstrRoom room(extent.length);
        tessera::LCSSDecompress(as_u16(text), system_code_page(), room.begin());
        result = room.finish(extent.length);
        if (!extent.complete) automation::fail(automation::error_invalid_procedure_call);
    });
}

Bstr GFunctions::encode(std::wstring_view text) noexcept {
    return guarded_result<Bstr>(encode_text,
                                [&](Bstr& result) { result = HostEncoding().encode(text); });
}

Bstr GFunctions::decode(std::wstring_view text) noexcept {
    return guarded_result<Bstr>(decode_text, [&](Bstr& result) {
        const PrefixedText parts = split_prefixed_text(as_u16(text));
        const Bstr payload(parts.payload);
        if (parts.layout == EncodedLayout::current) result = HostEncoding().decode(payload.view());
        if (parts.layout == EncodedLayout::legacy)
            result = lcss_decompress(uu_decode(payload.view()).view());
    });
}

// ---------------------------------------------------------------------------------------------
// Automation
// ---------------------------------------------------------------------------------------------

STDMETHODIMP GFunctions::GetVBString(BSTR OfficeString, long LCID, BSTR* Result) {
    return answer(Result, get_vb_string,
                  [&] { return tessera::GetVBString(view_of(OfficeString), LCID); });
}

STDMETHODIMP GFunctions::GetOfficeString(BSTR VBString, long LCID, BSTR* Result) {
    return answer(Result, get_office_string,
                  [&] { return tessera::GetOfficeString(view_of(VBString), LCID); });
}

STDMETHODIMP GFunctions::UUEncode(BSTR InputStr, BSTR* Result) {
    return answer(Result, uu_encode_text, [&] { return uu_encode(view_of(InputStr)); });
}

STDMETHODIMP GFunctions::UUDecode(BSTR InputStr, BSTR* Result) {
    return answer(Result, uu_decode_text, [&] { return uu_decode(view_of(InputStr)); });
}

STDMETHODIMP GFunctions::LCSSCompress(BSTR strDaten, BSTR* Result) {
    return answer(Result, compress_text, [&] { return lcss_compress(view_of(strDaten)); });
}

STDMETHODIMP GFunctions::LCSSDecompress(BSTR strDaten, BSTR* Result) {
    return answer(Result, decompress_text, [&] { return lcss_decompress(view_of(strDaten)); });
}

STDMETHODIMP GFunctions::get_EncodePrefix(BSTR* Result) {
    return answer(Result, get_encode_prefix, [] { return Bstr(encode_prefix); });
}

STDMETHODIMP GFunctions::Encode(BSTR InputStr, BSTR* Result) {
    return answer(Result, encode_text, [&] { return encode(view_of(InputStr)); });
}

STDMETHODIMP GFunctions::Decode(BSTR InputStr, BSTR* Result) {
    return answer(Result, decode_text, [&] { return decode(view_of(InputStr)); });
}

STDMETHODIMP GFunctions::GetKelosPhysUnit(IKelosObject* KelosObj, BSTR PULabel, BSTR* Result) {
    return answer(Result, get_kelos_phys_unit,
                  [&] { return tessera::GetKelosPhysUnit(KelosObj, view_of(PULabel)); });
}

STDMETHODIMP GFunctions::ISMappingTable(IKelosDocument* Document, VARIANT_BOOL* Result) {
    return answer(Result, is_mapping_table, [&] { return tessera::ISMappingTable(Document); });
}

STDMETHODIMP GFunctions::UnicodeTextToClipBoard(BSTR UnicodeStr) {
    return trapped(text_to_clipboard, [&] { put_clipboard_text(view_of(UnicodeStr)); });
}

STDMETHODIMP GFunctions::UnicodeTextFromClipBoard(BSTR* Result) {
    return answer(Result, text_from_clipboard, [] { return Bstr(clipboard_text()); });
}

}  // namespace tessera
