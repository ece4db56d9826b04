#include "query/q_content.h"

#include <string>

#include "automation/thread_kept.h"
#include "content/tessera_content.h"
#include "host/error_boundary.h"
#include "host/host_encoding.h"
#include "query/query_complete.h"
#include "query/row_xml.h"
#include "text/string_forms.h"

namespace tessera {

using automation::Bstr;
using automation::get;

namespace {

constexpr wchar_t source[] = L"QContent (Tessera)";

constexpr MemberName get_cursor{source, L"Public Property Get 'HQuery'"};
constexpr MemberName xml_columns{source, L"Public Function 'XMLColumns'"};
constexpr MemberName internal_xml_row{source, L"Private Function 'internalXMLRow'"};
constexpr MemberName xml_row{source, L"Public Function 'XMLRow'"};
constexpr MemberName xml_complete{source, L"Public Function 'XMLComplete'"};
constexpr MemberName get_office_string{source, L"Public Function 'GetOfficeString'"};
constexpr MemberName xml_row_as_string{source, L"Public Function 'XMLRowAsString'"};
constexpr MemberName encode_text{source, L"Private sub 'Encode'"};
constexpr MemberName dom_doc_as_string{source, L"Public Function 'DOMDocAsString'"};

// The declaration that every string begins with, whatever the document's own.
constexpr wchar_t declaration[] = L"<?xml version=\"1.0\" encoding=\"ISO-10646-UCS-2\"?>";

// The thread's pair of host objects, which come into being together.
struct RowEncoding : HostEncoding {
    RowEncoding() { create(); }
};

Bstr text_of(const dom::Document& document) {
    return Bstr::joined({declaration, get(document, &IXMLDOMDocument::get_xml).view()});
}

}  // namespace

HQuery& QContent::cursor() {
    if (!cursor_) cursor_ = automation::make<HQuery>();
    return *cursor_;
}

dom::Document QContent::columns() noexcept {
    return guarded_result<dom::Document>(xml_columns, [&](dom::Document& result) {
        result = Tessera::create_dom_document();
        write_columns(cursor(), result);
    });
}

dom::Document QContent::row() noexcept {
    return guarded_result<dom::Document>(internal_xml_row, [&](dom::Document& result) {
        if (!cursor().is_at_end()) result = row_document(cursor());
    });
}

dom::Document QContent::complete() noexcept {
    return guarded_result<dom::Document>(xml_complete, [&](dom::Document& result) {
        result = Tessera::create_dom_document();
        write_query(cursor(), Tessera::create_contents_root(result));
    });
}

Bstr QContent::row_text(bool encoded) noexcept {
    return guarded_result<Bstr>(xml_row_as_string, [&](Bstr& result) {
        const dom::Document document = row();
        if (!document) return;
        result = text_of(document);
        if (encoded) Encode(result);
    });
}

void QContent::Encode(Bstr& text) noexcept {
    guarded(encode_text,
            [&] { text = automation::ThreadKept<RowEncoding>::get().encode(text.view()); });
}

Bstr QContent::document_text(const dom::Document& document) noexcept {
    return guarded_result<Bstr>(dom_doc_as_string, [&](Bstr& result) {
        if (document) result = text_of(document);
    });
}

// ---------------------------------------------------------------------------------------------
// Automation
// ---------------------------------------------------------------------------------------------

STDMETHODIMP QContent::get_HQuery(ITesseraHQuery** Result) {
    return answer(Result, get_cursor, [&] { return cursor().main_pointer(); });
}

STDMETHODIMP QContent::XMLColumns(IXMLDOMDocument** Result) {
    return answer(Result, xml_columns, [&] { return columns(); });
}

STDMETHODIMP QContent::XMLRow(IXMLDOMDocument** Result) {
    return answer(Result, xml_row, [&] { return row(); });
}

STDMETHODIMP QContent::XMLComplete(IXMLDOMDocument** Result) {
    return answer(Result, xml_complete, [&] { return complete(); });
}

STDMETHODIMP QContent::GetOfficeString(BSTR VBString, BSTR* Result) {
    return answer(Result, get_office_string, [&] {
        return Bstr(office_string(automation::as_u16(automation::view_of(VBString))));
    });
}

// The text that the caller passes in is let go before anything can fail.
STDMETHODIMP QContent::XMLRowAsString(BSTR* ResultXML, VARIANT_BOOL WithEncode,
                                      VARIANT_BOOL* Result) {
    return trapped(Result, xml_row_as_string, [&](VARIANT_BOOL& result) {
        if (!ResultXML) automation::fail(E_POINTER);
        SysFreeString(std::exchange(*ResultXML, nullptr));
        Bstr text = row_text(WithEncode != VARIANT_FALSE);
        result = as_variant_bool(!text.empty());
        *ResultXML = text.detach();
    });
}

STDMETHODIMP QContent::DOMDocAsString(IXMLDOMDocument* DOMDoc, BSTR* Result) {
    return answer(Result, dom_doc_as_string, [&] { return document_text(DOMDoc); });
}

}  // namespace tessera
