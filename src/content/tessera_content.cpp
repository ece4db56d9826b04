#include "content/tessera_content.h"

namespace tessera {

using automation::BstrView;
using namespace automation::literals;

namespace {

constexpr MemberName member(const wchar_t* label) {
    return {L"Tessera", label};
}

constexpr MemberName get_xml_node = member(L"Property Get 'XMLNode'");
constexpr MemberName create_dom_document_name = member(L"Public Function 'CreateDOMDocument'");
constexpr MemberName create_contents_root_name = member(L"Public Function 'CreateContentsRoot'");

constexpr BstrView content_title = L"Content"_bstr;
constexpr BstrView contents_title = L"Contents"_bstr;
constexpr BstrView format_version = L"1"_bstr;

// The "Document" title is looked for under this name attribute, which no writer writes: the record
// then finds its title itself, without a message from here.
constexpr wchar_t document_name_attribute[] = L"True";

void read_record(Record& record, const ArchiveReader& content) {
    record.read_from(content, XML_GetTitleNode(content, record.title_name().view(), {}, true));
}

void read_document(Document& document, const ArchiveReader& content) {
    document.read_from(content, XML_GetTitleNode(content, document.title_name().view(),
                                                 document_name_attribute, false));
}

}  // namespace

ArchiveNode Tessera::write_below(const ArchiveNode& owner) noexcept {
    return guarded_result<ArchiveNode>(get_xml_node, [&](ArchiveNode& content) {
        ArchiveNode parent = owner ? owner : ArchiveNode(create_dom_document());
        if (parent.is_document()) parent = create_contents_root(std::move(parent));
        DraftedTitle drafted(std::move(parent), content_title, format_version);
        if (drafted.title()) write_records(drafted.title());
        content = drafted.write();
    });
}

void Tessera::read_from(const dom::Node& owner, dom::Node content, const wchar_t* label) noexcept {
    guarded(member(label), [&] {
        if (!owner && !content) return;
        if (!content) content = XML_GetTitleNode(owner, content_title.view(), {}, true);
        if (content) read_records(content);
    });
}

dom::Document Tessera::create_dom_document() noexcept {
    return guarded_result<dom::Document>(create_dom_document_name, [](dom::Document& document) {
        document = dom::create_document();
        dom::append_declaration(document);
    });
}

ArchiveNode Tessera::create_contents_root(ArchiveNode owner) noexcept {
    return guarded_result<ArchiveNode>(create_contents_root_name, [&](ArchiveNode& root) {
        if (!owner) owner = create_dom_document();
        root = XML_WriteTitle(owner, contents_title, format_version);
    });
}

STDMETHODIMP Tessera::get_XMLNode(IXMLDOMNode* xmlOwnerNode, IXMLDOMNode** Result) {
    return answer(Result, get_xml_node, [&] { return write_below(xmlOwnerNode).node(); });
}

STDMETHODIMP Tessera::put_XMLNode(IXMLDOMNode* xmlOwnerNode, IXMLDOMNode* NewValue) {
    read_from(xmlOwnerNode, NewValue);
    return S_OK;
}

STDMETHODIMP Tessera::putref_XMLNode(IXMLDOMNode* xmlOwnerNode, IXMLDOMNode* NewValue) {
    read_from(xmlOwnerNode, NewValue, L"Property Set 'XMLNode'");
    return S_OK;
}

STDMETHODIMP Tessera::get_TitleIdent(BSTR* Result) {
    return give(Result, content_title.view(), member(L"Property Get 'TitleIdent'"));
}

STDMETHODIMP Tessera::get_KelosObject(ITesseraKelosObject** Result) {
    return answer(
        Result, member(L"Property Get 'KelosObject'"), [&]() -> auto& { return kelos_object(); });
}

STDMETHODIMP Tessera::get_Property(ITesseraProperty** Result) {
    return answer(
        Result, member(L"Property Get 'Property'"), [&]() -> auto& { return property(); });
}

STDMETHODIMP Tessera::get_ValueItems(ITesseraValueItems** Result) {
    return answer(
        Result, member(L"Property Get 'ValueItems'"), [&]() -> auto& { return value_items(); });
}

STDMETHODIMP Tessera::get_Value(ITesseraValue** Result) {
    return answer(
        Result, member(L"Property Get 'Value'"), [&]() -> auto& { return value(); });
}

STDMETHODIMP Tessera::get_Document(ITesseraDocument** Result) {
    return answer(
        Result, member(L"Property Get 'Document'"), [&]() -> auto& { return document(); });
}

STDMETHODIMP Tessera::get_WorkSet(IKelosWorkset** Result) {
    return give(Result, workset_, member(L"Property Get 'WorkSet'"));
}

STDMETHODIMP Tessera::put_WorkSet(IKelosWorkset* NewValue) {
    return keep(workset_, NewValue);
}

STDMETHODIMP Tessera::putref_WorkSet(IKelosWorkset* NewValue) {
    return keep(workset_, NewValue);
}

STDMETHODIMP Tessera::CreateDOMDocument(IXMLDOMDocument** Result) {
    return answer(Result, create_dom_document_name, [] { return create_dom_document(); });
}

STDMETHODIMP Tessera::CreateContentsRoot(IXMLDOMNode* xmlOwnerNode, IXMLDOMNode** Result) {
    return answer(Result, create_contents_root_name,
                  [&] { return create_contents_root(xmlOwnerNode).node(); });
}

void Tessera::write_records(ArchiveNode& content) {
    created(kelos_object_).write_below(content);
    property().write_below(content);
    value().write_below(content);
    document().write_below(content);
    value_items().write_below(content);
}

void Tessera::read_records(const ArchiveReader& content) {
    XML_GetVersion(content.node());  // reported when it cannot be read; nothing depends on it yet
    read_record(created(kelos_object_), content);
    read_record(property(), content);
    read_record(value(), content);
    read_document(document(), content);
    read_record(value_items(), content);
}

}  // namespace tessera
