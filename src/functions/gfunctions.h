// The class `GFunctions`: string forms, encodings, units, mapping tables and the clipboard.
#pragma once

#include "automation/object.h"
#include "tessera.h"

namespace tessera {

// Has no state; the work is done by the functions of this folder.
class GFunctions : public automation::Object<GFunctions, ITesseraGFunctions> {
  public:
    static constexpr CLSID class_id = __uuidof(::GFunctions);

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
