#include "cli/content_file.h"

#include <algorithm>
#include <vector>

#include "automation/bstr.h"
#include "cli/element_text.h"

namespace cli {
namespace {

using automation::as_u16;
using automation::Bstr;
using automation::get;

bool is_text(const dom::Node& node) {
    const DOMNodeType type = dom::type(node);
    return type == NODE_TEXT || type == NODE_CDATA_SECTION;
}

constexpr auto is_blank = [](char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n';
};

// Blanks between elements are the parser's layout, not text.
constexpr bool is_layout(std::u16string_view text) noexcept {
    return std::ranges::all_of(text, is_blank);
}

bool holds_text(const dom::Node& element) {
    for (dom::Node child = dom::first_child(element); child; child = dom::next_sibling(child))
        if (is_text(child) && !is_layout(as_u16(dom::value(child).text()))) return true;
    return false;
}

// Which elements hold text, in the order of their starts.
class TextFinder final : public ElementTextHandler {
  public:
    void start(std::u16string_view) override {
        open_.push_back(holds_text_.size());
        holds_text_.push_back(false);
    }
    void attribute(std::u16string_view, std::u16string_view) override {}
    void text(std::u16string_view value) override {
        if (!open_.empty() && !is_layout(value)) holds_text_[open_.back()] = true;
    }
    void end() override {
        if (!open_.empty()) open_.pop_back();
    }
    bool holds_text(std::size_t number) const {
        return number < holds_text_.size() && holds_text_[number];
    }

  private:
    std::vector<std::size_t> open_;
    std::vector<bool> holds_text_;
};

class Rewriter final : public ElementTextHandler {
  public:
    Rewriter(XmlWriter& writer, const TextFinder& texts) : writer_(writer), texts_(texts) {}

    void start(std::u16string_view name) override {
        open_.push_back(texts_.holds_text(started_++));
        writer_.start(name, open_.back());
    }
    void attribute(std::u16string_view name, std::u16string_view value) override {
        writer_.attribute(name, value);
    }
    void text(std::u16string_view value) override {
        if (!open_.empty() && open_.back()) writer_.text(value);
    }
    void end() override {
        if (open_.empty()) return;
        open_.pop_back();
        writer_.end();
    }

  private:
    XmlWriter& writer_;
    const TextFinder& texts_;
    std::size_t started_ = 0;
    std::vector<bool> open_;
};

void write_attributes(XmlWriter& writer, const dom::Node& element) {
    const auto attributes = get(element, &IXMLDOMNode::get_attributes);
    while (const dom::Node attribute = get(attributes, &IXMLDOMNamedNodeMap::nextNode))
        writer.attribute(dom::name(attribute).u16(), as_u16(dom::value(attribute).text()));
}

// Whether more than blanks stand behind a tag, and no other tag.
bool may_hold_text(std::u16string_view xml) {
    auto at = xml.begin();
    while ((at = std::ranges::find(at, xml.end(), u'>')) != xml.end()) {
        at = std::ranges::find_if_not(at + 1, xml.end(), is_blank);
        if (at == xml.end()) return false;
        if (*at != u'<' || (xml.end() - at > 1 && at[1] == u'!')) return true;
    }
    return false;
}

// Parsers write U+FFFE and U+FFFF as the references of three bytes, of which this is the first.
bool may_be_garbled(std::u16string_view xml) {
    return xml.find(u"&#xEF;") != xml.npos;
}

// The parser's text costs a third of what its nodes do, one by one.
void write_child(XmlWriter& writer, const dom::Node& element) {
    const Bstr xml = dom::xml(element);
    if (may_be_garbled(xml.u16())) return write_element(writer, element);
    TextFinder texts;
    if (may_hold_text(xml.u16())) read_element_text(xml.u16(), texts);
    Rewriter rewriter(writer, texts);
    read_element_text(xml.u16(), rewriter);
}

}  // namespace

void write_element(XmlWriter& writer, const dom::Node& element) {
    const bool with_text = holds_text(element);
    writer.start(dom::name(element).u16(), with_text);
    write_attributes(writer, element);
    for (dom::Node child = dom::first_child(element); child; child = dom::next_sibling(child)) {
        if (dom::type(child) == NODE_ELEMENT)
            write_child(writer, child);
        else if (with_text && is_text(child))
            writer.text(as_u16(dom::value(child).text()));
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
