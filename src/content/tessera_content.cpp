#include "content/tessera_content.h"

namespace tessera {

using automation::Bstr;
using automation::ComPtr;

namespace {

constexpr MemberName member(const wchar_t* label) {
    return {L"Tessera", label};
}

constexpr wchar_t content_title[] = L"Content";
constexpr wchar_t contents_title[] = L"Contents";
constexpr wchar_t format_version[] = L"1";

// The "Document" title is looked for under this name attribute, which no writer writes: the record
// then finds its title itself, without a message from here.
constexpr wchar_t document_name_attribute[] = L"True";

void read_record(Record& record, const dom::Node& content) {
    record.put_XMLNode(content, XML_GetTitleNode(content, record.TitleIdent(), {}, true));
}

void read_document(Document& document, const dom::Node& content) {
    document.put_XMLNode(
        content, XML_GetTitleNode(content, document.TitleIdent(), document_name_attribute, false));
}

}  // namespace

STDMETHODIMP Tessera::get_XMLNode(IXMLDOMNode* xmlOwnerNode, IXMLDOMNode** Result) {
    return trapped(Result, member(L"Property Get 'XMLNode'"), [&](dom::Node& result) {
        dom::Node owner = xmlOwnerNode;
        if (!owner) {
            dom::Document document;
            CreateDOMDocument(document.put());
            owner = document.as<IXMLDOMNode>();
        }
        if (owner.try_as<IXMLDOMDocument>()) {
            const dom::Node document = std::move(owner);
            CreateContentsRoot(document.get(), owner.put());
        }
        ArchiveNode parent(owner);
        ArchiveNode content = XML_WriteTitle(parent, content_title, format_version);
        result = content.node();
        write(content);
    });
}

STDMETHODIMP Tessera::put_XMLNode(IXMLDOMNode* xmlOwnerNode, IXMLDOMNode* NewValue) {
    return trapped(member(L"Property Let 'XMLNode'"), [&] { read(xmlOwnerNode, NewValue); });
}

STDMETHODIMP Tessera::putref_XMLNode(IXMLDOMNode* xmlOwnerNode, IXMLDOMNode* NewValue) {
    return trapped(member(L"Property Set 'XMLNode'"), [&] { read(xmlOwnerNode, NewValue); });
}

STDMETHODIMP Tessera::get_TitleIdent(BSTR* Result) {
    return trapped(Result, member(L"Property Get 'TitleIdent'"),
                   [&](Bstr& result) { result = Bstr(content_title); });
}

STDMETHODIMP Tessera::get_KelosObject(ITesseraKelosObject** Result) {
    return trapped(Result, member(L"Property Get 'KelosObject'"),
                   [&](auto& result) { result = kelos_object().main_pointer(); });
}

STDMETHODIMP Tessera::get_Property(ITesseraProperty** Result) {
    return trapped(Result, member(L"Property Get 'Property'"),
                   [&](auto& result) { result = property().main_pointer(); });
}

STDMETHODIMP Tessera::get_ValueItems(ITesseraValueItems** Result) {
    return trapped(Result, member(L"Property Get 'ValueItems'"),
                   [&](auto& result) { result = value_items().main_pointer(); });
}

STDMETHODIMP Tessera::get_Value(ITesseraValue** Result) {
    return trapped(Result, member(L"Property Get 'Value'"),
                   [&](auto& result) { result = value().main_pointer(); });
}

STDMETHODIMP Tessera::get_Document(ITesseraDocument** Result) {
    return trapped(Result, member(L"Property Get 'Document'"),
                   [&](auto& result) { result = document().main_pointer(); });
}

STDMETHODIMP Tessera::get_WorkSet(IKelosWorkset** Result) {
    return trapped(Result, member(L"Property Get 'WorkSet'"),
                   [&](auto& result) { result = workset_; });
}

STDMETHODIMP Tessera::put_WorkSet(IKelosWorkset* NewValue) {
    return trapped(member(L"Property Let 'WorkSet'"), [&] { workset_ = NewValue; });
}

STDMETHODIMP Tessera::putref_WorkSet(IKelosWorkset* NewValue) {
    return trapped(member(L"Property Set 'WorkSet'"), [&] { workset_ = NewValue; });
}

STDMETHODIMP Tessera::CreateDOMDocument(IXMLDOMDocument** Result) {
    return trapped(Result, member(L"Public Function 'CreateDOMDocument'"),
                   [&](dom::Document& result) {
                       result = dom::create_document();
                       dom::append_declaration(result);
                   });
}

STDMETHODIMP Tessera::CreateContentsRoot(IXMLDOMNode* xmlOwnerNode, IXMLDOMNode** Result) {
    return trapped(Result, member(L"Public Function 'CreateContentsRoot'"), [&](dom::Node& result) {
        dom::Node node = xmlOwnerNode;
        if (!node) {
            dom::Document document;
            CreateDOMDocument(document.put());
            node = document.as<IXMLDOMNode>();
        }
        ArchiveNode owner(node);
        result = XML_WriteTitle(owner, contents_title, format_version).node();
    });
}

void Tessera::write(ArchiveNode& content) {
    created(kelos_object_).get_XMLNode(content);
    property().get_XMLNode(content);
    value().get_XMLNode(content);
    document().get_XMLNode(content);
    value_items().get_XMLNode(content);
}

void Tessera::read(const dom::Node& owner, dom::Node content) {
    if (!owner && !content) return;
    if (!content) content = XML_GetTitleNode(owner, content_title, {}, true);
    if (!content) return;
    XML_GetVersion(content);  // reported when it cannot be read; nothing depends on it yet
    read_record(created(kelos_object_), content);
    read_record(property(), content);
    read_record(value(), content);
    read_document(document(), content);
    read_record(value_items(), content);
}

}  // namespace tessera
