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

constexpr MemberName member(const wchar_t* label) {
    return {L"QContent (Tessera)", label};
}

// The declaration that every string begins with, whatever the document's own.
constexpr wchar_t declaration[] = L"<?xml version=\"1.0\" encoding=\"ISO-10646-UCS-2\"?>";

Bstr text_of(const dom::Document& document) {
    const Bstr xml = get(document, &IXMLDOMDocument::get_xml);
    std::wstring text;
    text.reserve(std::size(declaration) + xml.view().size());
    return Bstr(text.append(declaration).append(xml.view()));
}

dom::Document content_document() {
    dom::Document document;
    automation::make<Tessera>()->CreateDOMDocument(document.put());
    return document;
}

dom::Node contents_root(const dom::Document& document) {
    dom::Node root;
    automation::make<Tessera>()->CreateContentsRoot(document.get(), root.put());
    return root;
}

}  // namespace

HQuery& QContent::cursor() {
    if (!cursor_) cursor_ = automation::make<HQuery>();
    return *cursor_;
}

STDMETHODIMP QContent::get_HQuery(ITesseraHQuery** Result) {
    return trapped(Result, member(L"Public Property Get 'HQuery'"),
                   [&](auto& result) { result = cursor().main_pointer(); });
}

STDMETHODIMP QContent::XMLColumns(IXMLDOMDocument** Result) {
    return trapped(Result, member(L"Public Function 'XMLColumns'"), [&](dom::Document& result) {
        result = content_document();
        write_columns(cursor(), result);
    });
}

bool QContent::internalXMLRow(dom::Document& document) noexcept {
    bool written = false;
    guarded(member(L"Private Function 'internalXMLRow'"), [&] {
        if (is_at_end(cursor())) return;
        document = row_document(cursor());
        written = static_cast<bool>(document);
    });
    return written;
}

STDMETHODIMP QContent::XMLRow(IXMLDOMDocument** Result) {
    return trapped(Result, member(L"Public Function 'XMLRow'"), [&](dom::Document& result) {
        dom::Document document;
        if (internalXMLRow(document)) result = std::move(document);
    });
}

STDMETHODIMP QContent::XMLComplete(IXMLDOMDocument** Result) {
    return trapped(Result, member(L"Public Function 'XMLComplete'"), [&](dom::Document& result) {
        result = content_document();
        write_query(cursor(), contents_root(result));
    });
}

STDMETHODIMP QContent::GetOfficeString(BSTR VBString, BSTR* Result) {
    return trapped(Result, member(L"Public Function 'GetOfficeString'"), [&](Bstr& result) {
        result = Bstr(office_string(automation::as_u16(automation::view_of(VBString))));
    });
}

STDMETHODIMP QContent::XMLRowAsString(BSTR* ResultXML, VARIANT_BOOL WithEncode,
                                      VARIANT_BOOL* Result) {
    return trapped(Result, member(L"Public Function 'XMLRowAsString'"), [&](VARIANT_BOOL& result) {
        if (!ResultXML) automation::fail(E_POINTER);
        SysFreeString(std::exchange(*ResultXML, nullptr));
        dom::Document document;
        if (!internalXMLRow(document)) return;
        Bstr text = text_of(document);
        result = VARIANT_TRUE;
        if (WithEncode) Encode(text);
        *ResultXML = text.detach();
    });
}

void QContent::Encode(Bstr& text) noexcept {
    guarded(member(L"Private sub 'Encode'"),
            [&] { text = automation::ThreadKept<HostEncoding>::get().encode(text.view()); });
}

STDMETHODIMP QContent::DOMDocAsString(IXMLDOMDocument* DOMDoc, BSTR* Result) {
    return trapped(Result, member(L"Public Function 'DOMDocAsString'"), [&](Bstr& result) {
        if (DOMDoc) result = text_of(DOMDoc);
    });
}

}  // namespace tessera
