// Tests of internals: items and titles of an archive, what cannot be written or read.

#include "archive/xml_publics.h"

#include <array>

#include "automation/conversion.h"
#include "support/com_fixture.h"

using namespace tessera;
using namespace automation::literals;
using automation::Bstr;
using automation::Variant;
using test::ComFixture;

namespace {

constexpr wchar_t not_archived[] =
    L"XML-Bearbeitung  (GetString)|16|Die Variable kann nicht in Archiv gespeichert werden."
    L"\r\n\r\nVarType = ";

class ArchiveFixture : public ComFixture {
  public:
    ArchiveFixture() : document(dom::create_document()), owner(document) {}

    dom::Document document;
    ArchiveNode owner;

    // A title below a new root.
    ArchiveNode title() {
        ArchiveNode root = XML_WriteTitle(owner, L"Root"_bstr, L"1"_bstr);
        return XML_WriteTitle(root, L"Title"_bstr, L"1"_bstr);
    }
};

std::wstring attribute(const dom::Node& node, const wchar_t* name) {
    const Variant value = dom::attribute(node, Bstr(name));
    return value.is_string() ? std::wstring(value.text()) : L"<none>";
}

std::wstring written(ArchiveNode& title, const Variant& value) {
    const dom::Element item = XML_WriteItem(title, L"Item"_bstr, value);
    return attribute(item, L"Type") + L"|" + attribute(item, L"Data");
}

Variant of_type(VARTYPE type, const Variant& value) {
    return automation::to_type(value, type);
}

Variant date(double value) {
    Variant result;
    result.vt = VT_DATE;
    result.date = value;
    return result;
}

Variant variant_of(VARTYPE type) {
    Variant result;
    result.vt = type;
    return result;
}

bool same(const Variant& left, const Variant& right) {
    if (left.vt != right.vt) return false;
    if (left.vt == VT_EMPTY || left.vt == VT_NULL) return true;
    return VarCmp(const_cast<Variant*>(&left), const_cast<Variant*>(&right), LOCALE_USER_DEFAULT,
                  0) == static_cast<HRESULT>(VARCMP_EQ);
}

int children_named(const dom::Node& parent, const wchar_t* name) {
    int count = 0;
    for (auto node = dom::child_named(parent, name); node; node = dom::sibling_named(node, name))
        ++count;
    return count;
}

template <class... Arguments>
HRESULT STDMETHODCALLTYPE refuse(void*, Arguments...) {
    return E_ACCESSDENIED;
}

// Calls while one member of the element refuses, which is known by its place in the interface.
template <class Refuse, class Call>
void with_refusal(const dom::Node& element, std::size_t place, Refuse* refusal, Call&& call) {
    void**& table = *reinterpret_cast<void***>(element.get());
    std::array<void*, 52> members;
    std::copy_n(table, members.size(), members.begin());
    members[place] = reinterpret_cast<void*>(refusal);
    void** const own_table = std::exchange(table, members.data());
    call();
    table = own_table;
}

}  // namespace

TEST_CASE_FIXTURE(ArchiveFixture, "an item that is written again is the same one among many") {
    ArchiveNode title = this->title();
    const automation::BstrView names[] = {L"A"_bstr, L"B"_bstr, L"C"_bstr, L"D"_bstr,
                                          L"E"_bstr, L"F"_bstr, L"G"_bstr, L"H"_bstr,
                                          L"I"_bstr, L"J"_bstr, L"K"_bstr, L"L"_bstr};
    for (const long value : {1L, 2L})
        for (const automation::BstrView name : names)
            XML_WriteItem(title, name, Variant(value));
    int count = 0;
    dom::for_each_element(title.node(), [&](const dom::Node&) { ++count; });
    CHECK(count == 12);
    CHECK(XML_ReadItem(title.node(), L"L").lVal == 2);
}

TEST_CASE_FIXTURE(ArchiveFixture,
                  "every type of the table is written with its name and read back") {
    struct Row {
        Variant value;
        const wchar_t* text;
    };
    const Row rows[] = {
        {of_type(VT_UI1, Variant(200L)), L"Byte|200"},
        {Variant(std::int16_t{-32768}), L"Integer|-32768"},
        {Variant(2147483647L), L"Long|2147483647"},
        {of_type(VT_R4, Variant(1.5)), L"Single|1.5"},
        {Variant(-0.25), L"Double|-0.25"},
        {Variant(1e15), L"Double|1E+15"},
        {of_type(VT_CY, Variant(1234567.8901)), L"Currency|1234567.8901"},
        {date(37000), L"Date|4/19/2001"},
        {Variant(L""), L"String|"},
        {Variant(L"\xC4rger <&>\"'"), L"String|\xC4rger <&>\"'"},
        {Variant(true), L"Boolean|-1"},
        {Variant(false), L"Boolean|0"},
        {Variant(), L"Empty|"},
    };
    ArchiveNode title = this->title();
    for (const Row& row : rows) {
        CAPTURE(std::wstring(row.text));
        CHECK(written(title, row.value) == row.text);
        CHECK(same(XML_ReadItem(title.node(), L"Item"), row.value));
    }
    CHECK(children_named(title.node(), L"Item") == 1);  // the same item, overwritten in place
    CHECK(error_count() == 0);
    CHECK(message_count() == 0);
}

TEST_CASE_FIXTURE(ArchiveFixture,
                  "strings are written unchanged and read back with office line breaks") {
    ArchiveNode title = this->title();
    CHECK(written(title, Variant(L"a\r\nb\n\rc\r\n\rd\re")) == L"String|a\r\nb\n\rc\r\n\rd\re");
    CHECK(XML_ReadItem(title.node(), L"Item").text() == L"a\nb\nc\nd\re");
}

TEST_CASE_FIXTURE(ArchiveFixture, "an item keeps its place when it is overwritten") {
    ArchiveNode title = this->title();
    XML_WriteItem(title, L"First"_bstr, Variant(1L));
    XML_WriteItem(title, L"Second"_bstr, Variant(2L));
    ArchiveNode again(title.node());  // as a caller who knows nothing of what is in it
    XML_WriteItem(again, L"First"_bstr, Variant(L"new"));
    CHECK(automation::get(title.node(), &IXMLDOMNode::get_xml).view().find(L"new") <
          automation::get(title.node(), &IXMLDOMNode::get_xml).view().find(L"Second"));
    CHECK(children_named(title.node(), L"First") == 1);
}

TEST_CASE_FIXTURE(ArchiveFixture,
                  "values that cannot be archived are refused with their type's number") {
    ArchiveNode title = this->title();
    const auto foreign = test::create<IDispatch>(L"Kelos.ByteCompressor");
    Variant unknown = variant_of(VT_UNKNOWN);
    struct Row {
        Variant value;
        const wchar_t* text;
        int type;
    };
    const Row rows[] = {
        {Variant(static_cast<IDispatch*>(nullptr)), L"Nothing|", 9},
        {Variant(foreign.get()), L"IKelosByteCompressor|", 9},
        {unknown, L"Nothing|", 13},
        {Variant::missing(), L"Error|", 10},
    };
    long shown = 0;
    for (const Row& row : rows) {
        CHECK(written(title, row.value).ends_with(L"|"));
        CHECK(message(++shown) == not_archived + std::to_wstring(row.type));
    }
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ArchiveFixture,
                  "a bare array flag is refused, a real array and null fail to convert") {
    ArchiveNode title = this->title();
    VARIANT bare{};
    bare.vt = VT_ARRAY;
    XML_WriteItem(title, L"Item"_bstr, bare);
    CHECK(message(1) == not_archived + std::wstring(L"8192"));

    for (const VARTYPE type : {VT_VARIANT, VT_UI1}) {  // bytes are no text, either
        Variant array;
        array.parray = SafeArrayCreateVector(type, 0, 2);
        array.vt = static_cast<VARTYPE>(VT_ARRAY | type);
        CHECK(written(title, array) == (type == VT_UI1 ? L"Byte()|" : L"Variant()|"));
        CHECK(error(error_count()) == L"Tessera.XMLPublics|Private Function 'GetString'");
        CHECK(error_code(error_count()) == DISP_E_TYPEMISMATCH);
    }

    CHECK(written(title, variant_of(VT_NULL)) == L"Null|");
    CHECK(error_code(3) == automation::error_invalid_use_of_null);
    CHECK(error_count() == 3);
    CHECK(message_count() == 1);
    CHECK(XML_ReadItem(title.node(), L"Item").vt == VT_NULL);
}

TEST_CASE_FIXTURE(ArchiveFixture, "an item that cannot be read back says so and gives empty") {
    ArchiveNode title = this->title();
    const auto not_read = [](const wchar_t* name, const wchar_t* type) {
        return std::wstring(
                   L"XML-Bearbeitung  (XML_ReadItem)|16|Die Variable kann nicht gelesen "
                   L"werden.\r\n\r\nName = '") +
               name + L"'\r\nType = " + type + L"\r\ngelesene Variable: ''";
    };
    CHECK(XML_ReadItem(title.node(), L"Absent").vt == VT_EMPTY);
    CHECK(message(1) == not_read(L"Absent", L""));
    CHECK(XML_ReadItem({}, L"Absent").vt == VT_EMPTY);
    CHECK(message(2) == not_read(L"Absent", L""));

    const dom::Element element = XML_WriteItem(title, L"Item"_bstr, Variant(L"8::A1"));
    long shown = 2;
    for (const wchar_t* type : {L"Object", L"Nothing", L"Error", L"string", L"LongLong"}) {
        dom::set_attribute(element, L"Type"_bstr, Bstr(type));
        CHECK(XML_ReadItem(title.node(), L"Item").vt == VT_EMPTY);
        CHECK(message(++shown) == not_read(L"Item", type));
    }
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ArchiveFixture, "an item needs a type, but no data") {
    ArchiveNode title = this->title();
    const dom::Element element = XML_WriteItem(title, L"Item"_bstr, Variant(7L));
    automation::call(element, &IXMLDOMElement::removeAttribute, Bstr(L"Data").get());
    CHECK(XML_ReadItem(title.node(), L"Item").vt == VT_EMPTY);
    CHECK(message_count() == 0);
    automation::call(element, &IXMLDOMElement::removeAttribute, Bstr(L"Type").get());
    CHECK(XML_ReadItem(title.node(), L"Item").vt == VT_EMPTY);
    CHECK(message_count() == 1);
}

TEST_CASE_FIXTURE(ArchiveFixture, "data that does not convert to its type is an error") {
    ArchiveNode title = this->title();
    const dom::Element element = XML_WriteItem(title, L"Item"_bstr, Variant(7L));
    struct Row {
        const wchar_t* type;
        const wchar_t* data;
        HRESULT code;
    };
    constexpr Row rows[] = {
        {L"Long", L"seven", DISP_E_TYPEMISMATCH}, {L"Long", L"2147483648", DISP_E_OVERFLOW},
        {L"Integer", L"32768", DISP_E_OVERFLOW},  {L"Byte", L"256", DISP_E_OVERFLOW},
        {L"Boolean", L"", DISP_E_TYPEMISMATCH},   {L"Date", L"no day", DISP_E_TYPEMISMATCH},
    };
    long reports = 0;
    for (const Row& row : rows) {
        dom::set_attribute(element, L"Type"_bstr, Bstr(row.type));
        dom::set_attribute(element, L"Data"_bstr, Bstr(row.data));
        CHECK(XML_ReadItem(title.node(), L"Item").vt == VT_EMPTY);
        CHECK(error(++reports) == L"Tessera.XMLPublics|Public Function 'XML_ReadItem'");
        CHECK(error_code(reports) == row.code);
    }
    CHECK(message_count() == 0);
}

TEST_CASE_FIXTURE(ArchiveFixture,
                  "numbers of every size survive in the user's locale, whatever that is") {
    ArchiveNode title = this->title();
    wchar_t separator[4];
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator, 4);
    for (const double number : {0.1, -1234.5, 1.25e-7, 6.02214076e+23, 1e300}) {
        CAPTURE(number);
        CHECK((written(title, Variant(number)).find(separator) != std::wstring::npos) ==
              (number < 1e300));
        CHECK(XML_ReadItem(title.node(), L"Item").dblVal == doctest::Approx(number).epsilon(1e-12));
        const double single = std::min(number, 1e38);
        written(title, of_type(VT_R4, Variant(single)));
        CHECK(XML_ReadItem(title.node(), L"Item").fltVal == doctest::Approx(single).epsilon(1e-6));
    }
    CHECK(written(title, Variant(L"1.5E3")) == L"String|1.5E3");
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(ArchiveFixture, "a document's title is reused, an element's is always new") {
    const ArchiveNode first = XML_WriteTitle(owner, L"Root"_bstr, L"1"_bstr);
    ArchiveNode root = XML_WriteTitle(owner, L"Root"_bstr, L"2"_bstr);
    CHECK(children_named(owner.node(), L"Root") == 1);
    CHECK(attribute(first.node(), L"Version") == L"2");
    CHECK(attribute(first.node(), L"Name") == L"<none>");
    XML_WriteTitle(root, L"Title"_bstr, L"1"_bstr);
    XML_WriteTitle(root, L"Title"_bstr, L"1"_bstr);
    CHECK(children_named(root.node(), L"Title") == 2);
}

TEST_CASE_FIXTURE(ArchiveFixture, "titles are told apart by their names") {
    ArchiveNode root = XML_WriteTitle(owner, L"Root"_bstr, L"1"_bstr);
    XML_WriteTitle(root, L"Title"_bstr, L"1"_bstr, L"a"_bstr);
    XML_WriteTitle(root, L"Title"_bstr, L"1"_bstr, L"b"_bstr);
    XML_WriteTitle(root, L"Title"_bstr, L"9"_bstr, L"a"_bstr);
    CHECK(children_named(root.node(), L"Title") == 2);
    CHECK(XML_GetVersion(XML_GetTitleNode(root.node(), L"Title", L"a", true)) == 9);
    CHECK(XML_GetVersion(XML_GetTitleNode(root.node(), L"Title", L"b", true)) == 1);
    CHECK_FALSE(XML_GetTitleNode(root.node(), L"Title", L"c", false));
    CHECK(message_count() == 0);
}

TEST_CASE_FIXTURE(ArchiveFixture, "a title is found below a node, or is the detached node itself") {
    ArchiveNode root = XML_WriteTitle(owner, L"Root"_bstr, L"1"_bstr);
    XML_WriteTitle(root, L"Title"_bstr, L"3"_bstr);
    CHECK(XML_GetVersion(XML_GetTitleNode(root.node(), L"Title", {}, true)) == 3);
    // Attached: the root is not looked for among its own children.
    CHECK_FALSE(XML_GetTitleNode(root.node(), L"Root", {}, true));
    CHECK(message(1) ==
          L"XML-Bearbeitung  (XML_GetTitleNode)|16|Root\r\n\r\nArchiv wurde nicht gefunden.");
    const dom::Node detached = dom::create_element(document, L"Root"_bstr);
    CHECK(automation::same_object(XML_GetTitleNode(detached, L"Root", {}, true).get(),
                                  detached.get()));
    CHECK_FALSE(XML_GetTitleNode({}, L"Root", {}, true));
    CHECK(message_count() == 1);
}

TEST_CASE_FIXTURE(ArchiveFixture, "a missing version is 0, a bad one an error") {
    ArchiveNode title = this->title();
    const auto element = title.node().as<IXMLDOMElement>();
    automation::call(element, &IXMLDOMElement::removeAttribute, Bstr(L"Version").get());
    CHECK(XML_GetVersion(title.node()) == 0);
    CHECK(XML_GetVersion({}) == 0);
    CHECK(XML_GetVersion(owner.node()) == 0);
    dom::set_attribute(element, L"Version"_bstr, L"new"_bstr);
    CHECK(XML_GetVersion(title.node()) == 0);
    CHECK(error(1) == L"Tessera.XMLPublics|Public Function 'XML_GetVersion'");
    CHECK(error_count() == 1);
}

TEST_CASE_FIXTURE(ArchiveFixture,
                  "nothing is written below nothing or below nodes that take no elements") {
    ArchiveNode nothing;
    CHECK_FALSE(XML_WriteTitle(nothing, L"Title"_bstr, L"1"_bstr));
    CHECK_FALSE(XML_WriteItem(nothing, L"Item"_bstr, Variant(1L)));
    CHECK(error_count() == 0);

    ArchiveNode root = XML_WriteTitle(owner, L"Root"_bstr, L"1"_bstr);
    CHECK_FALSE(XML_WriteTitle(owner, L"Other"_bstr, L"1"_bstr));  // a second root
    CHECK(error(1) == L"Tessera.XMLPublics|Public Function 'XML_WriteTitle'");
    CHECK(children_named(owner.node(), L"Root") == 1);

    const auto text = automation::get(document, &IXMLDOMDocument::createTextNode, Bstr(L"x").get());
    ArchiveNode text_node(automation::ComPtr<IXMLDOMText>(text).get());
    CHECK_FALSE(XML_WriteItem(text_node, L"Item"_bstr, Variant(1L)));
    CHECK(error(2) == L"Tessera.XMLPublics|Public Function 'XML_WriteItem'");
    XML_WriteAttribute(owner, L"Version"_bstr, Variant(1L));  // a document has none
    CHECK(error(3) == L"Tessera.XMLPublics|Private Function 'XML_WriteAttribute'");
    CHECK(error_count() == 3);
}

TEST_CASE_FIXTURE(ArchiveFixture, "what the parser refuses is reported by whoever asked it") {
    const dom::Node element = title().node();
    constexpr std::size_t get_first_child = 13;
    with_refusal(element, get_first_child, &refuse<IXMLDOMNode**>, [&] {
        CHECK_FALSE(XML_GetItemNode(element, L"Item"));
        CHECK_FALSE(XML_GetTitleNode(element, L"Other", {}, true));
    });
    constexpr std::size_t get_attribute = 44;
    with_refusal(element, get_attribute, &refuse<BSTR, VARIANT*>,
                 [&] { CHECK(XML_GetVersion(element) == 0); });
    CHECK(error(1) == L"Tessera.XMLPublics|Public Function 'XML_GetItemNode'");
    CHECK(error(2) == L"Tessera.XMLPublics|Public Function 'XML_GetTitleNode'");
    CHECK(error(3) == L"Tessera.XMLPublics|Private Function 'GetXMLAttributeValue'");
    CHECK(error_count() == 3);
    CHECK(message_count() == 0);
}
