// Through the DLL: a content document as a whole, its records written, read and missing.

#include "automation/dom.h"
#include "support/com_fixture.h"

using namespace test;
using namespace automation::literals;

namespace {

class ContentFixture : public ComFixture {
  public:
    ComPtr<ITessera> content = create<ITessera>(L"Tessera.Tessera");

    dom::Node write(IXMLDOMNode* owner) { return get(content, &ITessera::get_XMLNode, owner); }
    dom::Document new_document() { return get(content, &ITessera::CreateDOMDocument); }
    dom::Node new_root(IXMLDOMNode* owner) {
        return get(content, &ITessera::CreateContentsRoot, owner);
    }
    void read(IXMLDOMNode* owner, IXMLDOMNode* node) {
        call(content, &ITessera::putref_XMLNode, owner, node);
    }
    void put_pointer(const wchar_t* pointer) {
        call(get(content, &ITessera::get_Document), &ITesseraDocument::put_Pointer,
             Bstr(pointer).get());
    }
    std::wstring pointer() {
        return get(get(content, &ITessera::get_Document), &ITesseraDocument::get_Pointer).str();
    }
};

std::wstring name(const dom::Node& node) {
    return get(node, &IXMLDOMNode::get_nodeName).str();
}

std::wstring attribute(const dom::Node& node, const wchar_t* attribute_name) {
    return std::wstring(dom::attribute(node, Bstr(attribute_name)).text());
}

// The element as text without white space between the elements, items as Name(Type:Data).
std::wstring outline(const dom::Node& node) {
    std::wstring text = name(node);
    const Variant type = dom::attribute(node, L"Type"_bstr);
    if (type.is_string())
        return text + L"(" + std::wstring(type.text()) + L":" + attribute(node, L"Data") + L")";
    text += attribute(node, L"Version") + L"{";
    dom::Node child;
    node->get_firstChild(child.put());
    while (child) {
        text += outline(child) + L" ";
        dom::Node next;
        child->get_nextSibling(next.put());
        child = next;
    }
    return text + L"}";
}

int count_named(const dom::Node& parent, const wchar_t* child_name) {
    int count = 0;
    for (auto node = dom::child_named(parent, child_name); node;
         node = dom::sibling_named(node, child_name))
        ++count;
    return count;
}

constexpr wchar_t not_found_suffix[] = L"\r\n\r\nArchiv wurde nicht gefunden.";

std::wstring not_found(const wchar_t* title) {
    return L"XML-Bearbeitung  (XML_GetTitleNode)|16|" + std::wstring(title) + not_found_suffix;
}

}  // namespace

TEST_CASE_FIXTURE(ContentFixture,
                  "a new content element has every record with its defaults, in order") {
    CHECK(outline(write(nullptr)) ==
          L"Content1{"
          L"KelosObject1{SystemUID(String:) SystemType(Long:0) PathFullName(String:) } "
          L"Property2{GetName(String:) SetName(String:) GetParameter(Empty:) SetParameter(Empty:) "
          L"PhysUnit(String:) QDefProperty(Long:0) } "
          L"Value1{LCID(Integer:0) KelosValue(Empty:) DocumentValue(Empty:) IOMode(String:) "
          L"AllValuesNumeric(Boolean:0) EmptyNumericValueStayEmpty(Boolean:0) } "
          L"Document1{Pointer(String:) } "
          L"ValueItems1{} "
          L"Presentation(Long:0) }");
    CHECK(error_count() == 0);
    CHECK(message_count() == 0);
}

TEST_CASE_FIXTURE(ContentFixture, "without an owner the element stands in a document of its own") {
    const dom::Node element = write(nullptr);
    const auto document = get(element, &IXMLDOMNode::get_ownerDocument);
    CHECK(name(get(document, &IXMLDOMDocument::get_firstChild)) == L"xml");
    CHECK(get(get(document, &IXMLDOMDocument::get_firstChild), &IXMLDOMNode::get_xml).view() ==
          L"<?xml encoding=\"ISO-10646-UCS-2\"?>");
    const auto root = get(document, &IXMLDOMDocument::get_documentElement).as<IXMLDOMNode>();
    CHECK(name(root) == L"Contents");
    CHECK(attribute(root, L"Version") == L"1");
    CHECK(get(content, &ITessera::get_TitleIdent).view() == L"Content");
}

TEST_CASE_FIXTURE(ContentFixture, "every writing appends, to one root per document") {
    const auto document = new_document();
    write(document.get());
    write(document.get());
    const dom::Node root = new_root(document.get());
    write(root.get());
    CHECK(count_named(root, L"Content") == 3);
    CHECK(count_named(document.as<IXMLDOMNode>(), L"Contents") == 1);
    // Below an element a root is always a new one.
    new_root(root.get());
    new_root(root.get());
    CHECK(count_named(root, L"Contents") == 2);
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ContentFixture, "what was written is read back into the same records") {
    const auto property = get(content, &ITessera::get_Property);
    const auto value = get(content, &ITessera::get_Value);
    const auto items = get(content, &ITessera::get_ValueItems);
    put_pointer(L"Blatt \x00FC!B3");
    call(property, &ITesseraProperty::put_GetName, Bstr(L"GetXValue").get());
    call(property, &ITesseraProperty::put_SetName, Bstr(L"SetXValue").get());
    call(property, &ITesseraProperty::put_GetParameter, static_cast<VARIANT>(Variant(3L)));
    call(property, &ITesseraProperty::put_QDefProperty, kqpGetXValue);
    call(value, &ITesseraValue::put_LCID, short{1031});
    call(value, &ITesseraValue::put_KelosValue, uccVBString,
         static_cast<VARIANT>(Variant(L"a\r\nb")));
    call(value, &ITesseraValue::put_DocumentValue, uccDefault, static_cast<VARIANT>(Variant(2.5)));
    call(value, &ITesseraValue::put_IOMode, Bstr(L"IO").get());
    call(value, &ITesseraValue::put_AllValuesNumeric, VARIANT_BOOL{VARIANT_TRUE});
    for (const wchar_t* display : {L"eins", L"zwei"})
        get(items, &ITesseraValueItems::AddNew, static_cast<VARIANT>(Variant(1L)),
            static_cast<VARIANT>(Variant(display)), short{1031}, uccDefault, uccVBString, -1L);
    call(items, &ITesseraValueItems::put_Presentation, kprListBox);
    const dom::Node written = write(nullptr);

    const auto other = create<ITessera>(L"Tessera.Tessera");
    const auto record = get(other, &ITessera::get_Property);
    call(other, &ITessera::put_XMLNode, static_cast<IXMLDOMNode*>(nullptr), written.get());
    CHECK(get(other, &ITessera::get_Property) == record);
    CHECK(get(record, &ITesseraProperty::get_SetName).view() == L"SetXValue");
    const auto again = get(other, &ITessera::get_XMLNode, static_cast<IXMLDOMNode*>(nullptr));
    CHECK(outline(again) == outline(written));
    CHECK(error_count() == 0);
    CHECK(message_count() == 0);
}

TEST_CASE_FIXTURE(ContentFixture, "without a node the owner's first content element is read") {
    const auto document = new_document();
    const dom::Node root = new_root(document.get());
    put_pointer(L"S!A1");
    write(root.get());
    put_pointer(L"S!A2");
    const dom::Node second = write(root.get());
    put_pointer(L"");
    read(root.get(), nullptr);
    CHECK(pointer() == L"S!A1");
    read(nullptr, second.get());
    CHECK(pointer() == L"S!A2");
    read(nullptr, nullptr);
    CHECK(message_count() == 0);
    read(second.get(), nullptr);  // attached: searched below, where there is none
    CHECK(message(1) == not_found(L"Content"));
    CHECK(message_count() == 1);
    get(root, &IXMLDOMNode::removeChild, second.get());
    put_pointer(L"");
    read(second.get(), nullptr);  // detached: taken itself
    CHECK(pointer() == L"S!A2");
    CHECK(message_count() == 1);
}

TEST_CASE_FIXTURE(ContentFixture,
                  "a missing record is told twice, the position's once, and stays as it is") {
    for (const wchar_t* title :
         {L"KelosObject", L"Property", L"Value", L"ValueItems", L"Document"}) {
        put_pointer(L"S!A1");
        const dom::Node element = write(nullptr);
        get(element, &IXMLDOMNode::removeChild, dom::child_named(element, title).get());
        put_pointer(L"kept");
        call(service(), &IHostKitService::Clear);
        read(nullptr, element.get());
        const bool is_position = std::wstring_view(title) == L"Document";
        CHECK(message_count() == (is_position ? 1 : 2));
        CHECK(message(1) == not_found(title));
        CHECK(pointer() == (is_position ? L"kept" : L"S!A1"));
    }
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ContentFixture,
                  "the presentation stands beside its list and is read from there only") {
    const auto items = get(content, &ITessera::get_ValueItems);
    call(items, &ITesseraValueItems::put_Presentation, kprComboBox);
    const dom::Node element = write(nullptr);
    const dom::Node presentation = dom::child_named(element, L"Presentation");
    get(dom::child_named(element, L"ValueItems"), &IXMLDOMNode::appendChild, presentation.get());
    read(nullptr, element.get());
    CHECK(get(items, &ITesseraValueItems::get_Presentation) == kprNone);
    CHECK(error_count() == 0);
    CHECK(message(1).find(L"Name = 'Presentation'") != std::wstring::npos);
    CHECK(message_count() == 1);
}

TEST_CASE_FIXTURE(ContentFixture, "a presentation that is no number leaves the list's as it is") {
    const auto items = get(content, &ITessera::get_ValueItems);
    const dom::Node element = write(nullptr);
    call(items, &ITesseraValueItems::put_Presentation, kprListBox);
    const auto item = dom::child_named(element, L"Presentation");
    dom::set_attribute(item, L"Type"_bstr, L"String"_bstr);
    dom::set_attribute(item, L"Data"_bstr, L"many"_bstr);
    read(nullptr, element.get());
    CHECK(get(items, &ITesseraValueItems::get_Presentation) == kprListBox);
    CHECK(error(1) == L"Tessera.ValueItems|Property Let 'XMLNode'");
    CHECK(error_count() == 1);
}

TEST_CASE_FIXTURE(ContentFixture,
                  "an old property title is upgraded when it shows the display value") {
    const auto property = get(content, &ITessera::get_Property);
    const auto read_old = [&](const wchar_t* get_name) {
        call(property, &ITesseraProperty::put_GetName, Bstr(get_name).get());
        call(property, &ITesseraProperty::put_QDefProperty, kqpLabel);
        const dom::Node element = write(nullptr);
        const dom::Node title = dom::child_named(element, L"Property");
        dom::set_attribute(title.as<IXMLDOMElement>(), L"Version"_bstr, L"1"_bstr);
        get(title, &IXMLDOMNode::removeChild, dom::child_named(title, L"QDefProperty").get());
        call(property, &ITesseraProperty::put_QDefProperty, kqpName);
        read(nullptr, element.get());
        return get(property, &ITesseraProperty::get_QDefProperty);
    };
    CHECK(read_old(L"displayvalue") == kqpDisplayValue);
    CHECK(read_old(L"Label") == kqpName);
    CHECK(message_count() == 0);
}

TEST_CASE_FIXTURE(ContentFixture,
                  "owners that take no elements are reported, and nothing is returned") {
    const auto document = new_document();
    const dom::Node declaration = get(document, &IXMLDOMDocument::get_firstChild);
    CHECK_FALSE(write(declaration.get()));
    CHECK(error(1) == L"Tessera.XMLPublics|Public Function 'XML_WriteTitle'");
    CHECK(error_count() == 1);  // what is not written below nothing is no failure of its own

    const auto other = new_document();
    get(other, &IXMLDOMDocument::appendChild,
        static_cast<IXMLDOMNode*>(dom::create_element(other, L"Other"_bstr).get()));
    CHECK_FALSE(new_root(other.get()));  // it has a root of another name
    CHECK(error(error_count()) == L"Tessera.XMLPublics|Public Function 'XML_WriteTitle'");
}
