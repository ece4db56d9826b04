#include "cli/content_file.h"

#include "automation/bstr.h"

namespace cli {
namespace {

using automation::as_u16;
using automation::get;

bool is_text(const dom::Node& node) {
    const DOMNodeType type = dom::type(node);
    return type == NODE_TEXT || type == NODE_CDATA_SECTION;
}

// Blanks between elements are the parser's layout, not text.
bool holds_text(const dom::Node& element) {
    for (dom::Node child = dom::first_child(element); child; child = dom::next_sibling(child))
        if (is_text(child) && dom::value(child).find_first_not_of(L" \t\r\n") != std::wstring::npos)
            return true;
    return false;
}

void write_attributes(XmlWriter& writer, const dom::Node& element) {
    const auto attributes = get(element, &IXMLDOMNode::get_attributes);
    const long count = get(attributes, &IXMLDOMNamedNodeMap::get_length);
    for (long i = 0; i < count; ++i) {
        const dom::Node attribute = get(attributes, &IXMLDOMNamedNodeMap::get_item, i);
        writer.attribute(dom::name(attribute).u16(), as_u16(dom::value(attribute)));
    }
}

}  // namespace

void write_element(XmlWriter& writer, const dom::Node& element) {
    const bool with_text = holds_text(element);
    writer.start(dom::name(element).u16(), with_text);
    write_attributes(writer, element);
    for (dom::Node child = dom::first_child(element); child; child = dom::next_sibling(child)) {
        if (dom::type(child) == NODE_ELEMENT)
            write_element(writer, child);
        else if (with_text && is_text(child))
            writer.text(as_u16(dom::value(child)));
    }
    writer.end();
}

std::size_t write_document(TextSink& sink, const dom::Node& root, std::u16string_view encoding) {
    XmlWriter writer(sink);
    writer.declaration(encoding);
    write_element(writer, root);
    writer.finish();
    return writer.replaced();
}

}  // namespace cli
