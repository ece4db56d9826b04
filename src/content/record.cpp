#include "content/record.h"

#include "automation/conversion.h"

namespace tessera {

using automation::Bstr;
using automation::Variant;

ArchiveNode Record::get_XMLNode(ArchiveNode& owner) {
    ArchiveNode title;
    guarded({source(), L"Property Get 'XMLNode'"}, [&] {
        if (!owner) owner = ArchiveNode(dom::create_document().as<IXMLDOMNode>());
        title = XML_WriteTitle(owner, TitleIdent(), version());
        write_items(title, owner);
    });
    return title;
}

void Record::put_XMLNode(const dom::Node& owner, const dom::Node& title) {
    guarded({source(), L"Property Let 'XMLNode'"}, [&] {
        if (!owner && !title) return;
        read(owner, title ? title : XML_GetTitleNode(owner, TitleIdent(), {}, true));
    });
}

void Record::read(const dom::Node&, const dom::Node& title) {
    if (title) read_items(title, XML_GetVersion(title));
}

void write_text(ArchiveNode& title, const wchar_t* name, const Bstr& value) {
    // Shallow: the variant only lends the text for the call.
    VARIANT text{};
    text.vt = VT_BSTR;
    text.bstrVal = value.get();
    XML_WriteItem(title, name, text);
}

void write_long(ArchiveNode& title, const wchar_t* name, long value) {
    XML_WriteItem(title, name, Variant(value));
}

void write_short(ArchiveNode& title, const wchar_t* name, std::int16_t value) {
    XML_WriteItem(title, name, Variant(value));
}

void write_bool(ArchiveNode& title, const wchar_t* name, bool value) {
    XML_WriteItem(title, name, Variant(value));
}

Bstr read_text(const dom::Node& title, const wchar_t* name) {
    return automation::to_text(XML_ReadItem(title, name));
}

long read_long(const dom::Node& title, const wchar_t* name) {
    return automation::to_long(XML_ReadItem(title, name));
}

std::int16_t read_short(const dom::Node& title, const wchar_t* name) {
    return automation::to_short(XML_ReadItem(title, name));
}

bool read_bool(const dom::Node& title, const wchar_t* name) {
    return automation::to_bool(XML_ReadItem(title, name));
}

}  // namespace tessera
