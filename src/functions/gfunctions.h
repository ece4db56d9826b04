// The class `GFunctions`: string forms, encodings, units, mapping tables and the clipboard.
#pragma once

#include "automation/object.h"
#include "tessera.h"

namespace tessera {

// Has no state. Units, mapping tables and string forms are free functions of the host's room, which
// other classes use as well.
class GFunctions : public automation::Object<GFunctions, ITesseraGFunctions> {
  public:
    static constexpr CLSID class_id = __uuidof(::GFunctions);

    static automation::Bstr uu_encode(std::wstring_view text) noexcept;
    static automation::Bstr uu_decode(std::wstring_view text) noexcept;
    static automation::Bstr lcss_compress(std::wstring_view text) noexcept;
    static automation::Bstr lcss_decompress(std::wstring_view text) noexcept;
    static automation::Bstr encode(std::wstring_view text) noexcept;
    static automation::Bstr decode(std::wstring_view text) noexcept;

    STDMETHODIMP GetVBString(BSTR OfficeString, long LCID, BSTR* Result) override;
    STDMETHODIMP GetOfficeString(BSTR VBString, long LCID, BSTR* Result) override;
    STDMETHODIMP UUEncode(BSTR InputStr, BSTR* Result) override;
    STDMETHODIMP UUDecode(BSTR InputStr, BSTR* Result) override;
    STDMETHODIMP LCSSCompress(BSTR strDaten, BSTR* Result) override;
    STDMETHODIMP LCSSDecompress(BSTR strDaten, BSTR* Result) override;
    STDMETHODIMP get_EncodePrefix(BSTR* Result) override;
    STDMETHODIMP Encode(BSTR InputStr, BSTR* Result) override;
    STDMETHODIMP Decode(BSTR InputStr, BSTR* Result) override;
    STDMETHODIMP GetKelosPhysUnit(IKelosObject* KelosObj, BSTR PULabel, BSTR* Result) override;
    STDMETHODIMP ISMappingTable(IKelosDocument* Document, VARIANT_BOOL* Result) override;
    STDMETHODIMP UnicodeTextToClipBoard(BSTR UnicodeStr) override;
    STDMETHODIMP UnicodeTextFromClipBoard(BSTR* Result) override;
};

}  // namespace tessera
