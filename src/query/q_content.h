// The query XML writer: columns and rows of a query as XML documents and as strings.
#pragma once

#include "automation/dom.h"
#include "automation/object.h"
#include "query/hquery.h"
#include "tessera.h"

namespace tessera {

// Owns its cursor, which comes into being on first use. The caller moves it; only XMLComplete
// walks, from the cursor's row to the end.
class QContent : public automation::Object<QContent, ITesseraQContent> {
  public:
    static constexpr CLSID class_id = __uuidof(::QContent);

    dom::Document columns() noexcept;
    // The document of the cursor's row; nothing when there is none. The row builder's label is its
    // own: XMLRow adds nothing to it that could fail.
    dom::Document row() noexcept;
    // Declaration and document of the cursor's row, encoded when asked for; empty when there is
    // no row.
    automation::Bstr row_text(bool encoded) noexcept;
    dom::Document complete() noexcept;
    // Declaration and document; empty for nothing.
    static automation::Bstr document_text(const dom::Document& document) noexcept;

    STDMETHODIMP get_HQuery(ITesseraHQuery** Result) override;
    STDMETHODIMP XMLColumns(IXMLDOMDocument** Result) override;
    STDMETHODIMP XMLRow(IXMLDOMDocument** Result) override;
    STDMETHODIMP XMLComplete(IXMLDOMDocument** Result) override;
    STDMETHODIMP GetOfficeString(BSTR VBString, BSTR* Result) override;
    STDMETHODIMP XMLRowAsString(BSTR* ResultXML, VARIANT_BOOL WithEncode,
                                VARIANT_BOOL* Result) override;
    STDMETHODIMP DOMDocAsString(IXMLDOMDocument* DOMDoc, BSTR* Result) override;

  private:
    HQuery& cursor();
    // Replaces the text by its encoded form; keeps it when that fails.
    static void Encode(automation::Bstr& text) noexcept;

    automation::ComPtr<HQuery> cursor_;
};

}  // namespace tessera
