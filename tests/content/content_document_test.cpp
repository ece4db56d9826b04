// Through the DLL: a content document as a whole, its records written, read and missing.

#include "automation/dom.h"
#include "support/transcript.h"

using namespace test;
using namespace automation::literals;

namespace {

class ContentFixture : public ComFixture {
  public:
    ComPtr<ITessera> content = create<ITessera>(L"Tessera.Tessera");

    dom::Node write(IXMLDOMNode* owner) { return get(content, &ITessera::get_XMLNode, owner); }
    void read(IXMLDOMNode* node) {
        call(content, &ITessera::putref_XMLNode, static_cast<IXMLDOMNode*>(nullptr), node);
    }
    // Runs it with the content object as C. Told is how many messages there are and the first one,
    // and forgets them.
    void check(const std::wstring& transcript) {
        const auto host =
            make_object({{L"Told", [&](const auto&) {
                              std::wstring told = std::to_wstring(message_count());
                              if (message_count() > 0) told += L" " + message(1);
                              for (std::size_t at; (at = told.find(L"\r\n")) != told.npos;)
                                  told.replace(at, 2, L"/");
                              call(service(), &IHostKitService::Clear);
                              return Variant(told);
                          }}});
        check_transcript(L"Set C = Make(\"Tessera.Tessera\")\n" + transcript,
                         {{L"Host", host->dispatch()}});
        CHECK(error_count() == 0);
    }
};

// The element as text without white space between the elements, items as Name(Type:Data).
std::wstring outline(const dom::Node& node) {
    const auto attribute = [&](automation::BstrView name) {
        return std::wstring(dom::attribute(node, name).text());
    };
    std::wstring text = dom::name(node).str();
    const std::wstring type = attribute(L"Type"_bstr);
    if (!type.empty()) return text + L"(" + type + L":" + attribute(L"Data"_bstr) + L")";
    text += attribute(L"Version"_bstr) + L"{";
    for (dom::Node child = dom::first_child(node); child; child = dom::next_sibling(child))
        text += outline(child) + L" ";
    return text + L"}";
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

TEST_CASE_FIXTURE(ContentFixture, "every writing appends to the one root of a document") {
    check(
        LR"(
    Set D = C.XMLNode(Nothing).ownerDocument
    ? D.firstChild.nodeName -> xml
    ? D.firstChild.xml -> <?xml encoding="ISO-10646-UCS-2"?>
    Set R = D.documentElement
    ? R.nodeName & R.getAttribute("Version") -> Contents1
    ? C.TitleIdent & C.XMLNode(D).getAttribute("Version") -> Content1
    ? C.CreateContentsRoot(D).selectNodes("Content").length -> 2
    ? C.XMLNode(R).parentNode.selectNodes("Content").length -> 3
    ? D.selectNodes("Contents").length -> 1
    ' Below an element a root is always a new one.
    ? C.CreateContentsRoot(R).parentNode.selectNodes("Contents").length -> 1
    ? C.CreateContentsRoot(R).parentNode.selectNodes("Contents").length -> 2
    ? Told -> 0
    )");
}

TEST_CASE_FIXTURE(ContentFixture, "what was written is read back into the same records") {
    check(
        LR"(
    C.Document.Pointer = "Blatt " & Chr(252) & "!B3"
    C.Property.GetName = "GetXValue"
    C.Property.SetName = "SetXValue"
    C.Property.GetParameter = 3
    C.Property.QDefProperty = 33
    C.Value.LCID = 1031
    C.Value.KelosValue(1) = "a" & vbCrLf & "b"
    C.Value.DocumentValue(0) = 2.5
    C.Value.IOMode = "IO"
    C.Value.AllValuesNumeric = True
    C.ValueItems.Add C.ValueItems.AddNew(1, "eins", 1031), 1
    C.ValueItems.Presentation = 2
    Set Written = C.XMLNode(Nothing)
    Set Other = Make("Tessera.Tessera")
    Set P = Other.Property
    Other.XMLNode(Nothing) = Written
    ? Other.Property Is P -> True
    ? P.SetName -> SetXValue
    ? Other.XMLNode(Nothing).xml = Written.xml -> True
    ? Told -> 0
    )");
}

TEST_CASE_FIXTURE(ContentFixture, "what cannot be found is told and stays as it is") {
    check(
        LR"(
    Set D = C.CreateDOMDocument
    Set R = C.CreateContentsRoot(D)
    C.Document.Pointer = "S!A1"
    Set Earlier = C.XMLNode(R)
    C.Document.Pointer = "S!A2"
    Set Later = C.XMLNode(R)
    ' Without a node the owner's first content element is read.
    Set C.XMLNode(R) = Nothing
    ? C.Document.Pointer -> S!A1
    Set C.XMLNode(Nothing) = Later
    ? C.Document.Pointer -> S!A2
    Set C.XMLNode(Nothing) = Nothing
    ? Told -> 0
    ' Attached: searched below, where there is none. Detached: taken itself.
    Set C.XMLNode(Later) = Nothing
    ? Told -> 1 XML-Bearbeitung  (XML_GetTitleNode)|16|Content//Archiv wurde nicht gefunden.
    R.removeChild Earlier
    Set C.XMLNode(Earlier) = Nothing
    ? Told & " " & C.Document.Pointer -> 0 S!A1
    Function Missing(Title) : C.Document.Pointer = "S!A1" : Set E = C.XMLNode(Nothing) : _
        E.removeChild E.selectSingleNode(Title) : C.Document.Pointer = "kept" : _
        Set C.XMLNode(Nothing) = E : Missing = Told & " " & C.Document.Pointer : End Function
    ? Missing("KelosObject") -> 2 XML-Bearbeitung  (XML_GetTitleNode)|16|KelosObject//Archiv wurde nicht gefunden. S!A1
    ? Missing("Property") -> 2 XML-Bearbeitung  (XML_GetTitleNode)|16|Property//Archiv wurde nicht gefunden. S!A1
    ? Missing("Value") -> 2 XML-Bearbeitung  (XML_GetTitleNode)|16|Value//Archiv wurde nicht gefunden. S!A1
    ? Missing("ValueItems") -> 2 XML-Bearbeitung  (XML_GetTitleNode)|16|ValueItems//Archiv wurde nicht gefunden. S!A1
    ? Missing("Document") -> 1 XML-Bearbeitung  (XML_GetTitleNode)|16|Document//Archiv wurde nicht gefunden. kept
    ' The presentation is read from beside its list only.
    C.ValueItems.Presentation = 3
    Set E = C.XMLNode(Nothing)
    E.selectSingleNode("ValueItems").appendChild E.selectSingleNode("Presentation")
    Set C.XMLNode(Nothing) = E
    ? C.ValueItems.Presentation -> 0
    ? Told -> 1 XML-Bearbeitung  (XML_ReadItem)|16|Die Variable kann nicht gelesen werden.//Name = 'Presentation'/Type = /gelesene Variable: ''
    ' An old title is upgraded when it shows the display value.
    Function Upgraded(Name) : C.Property.GetName = Name : Set E = C.XMLNode(Nothing) : _
        Set P = E.selectSingleNode("Property") : P.setAttribute "Version", "1" : _
        P.removeChild P.selectSingleNode("QDefProperty") : C.Property.QDefProperty = 2 : _
        Set C.XMLNode(Nothing) = E : Upgraded = C.Property.QDefProperty : End Function
    ? Upgraded("displayvalue") -> 30
    ? Upgraded("Label") -> 2
    ? Told -> 0
    )");
}

TEST_CASE_FIXTURE(ContentFixture,
                  "what is read becomes what the record holds, or stops its reading") {
    const auto read_text = [&](const wchar_t* text) {
        const auto document = dom::create_document();
        REQUIRE(get(document, &IXMLDOMDocument::loadXML, Bstr(text).get()) == VARIANT_TRUE);
        read(dom::root(document).get());
        return outline(write(nullptr));
    };
    // A document's title of this name goes first.
    CHECK(read_text(LR"(<Content><KelosObject><SystemUID Type="Long" Data="7"/>
<SystemType Type="String" Data="3"/><PathFullName Type="Boolean" Data="-1"/></KelosObject>
<Property Version="2"><GetName Type="Long" Data="8"/><SetName Type="String" Data="S"/>
<GetParameter Type="Byte" Data="1"/><SetParameter Type="Single" Data="2"/>
<PhysUnit Type="Integer" Data="9"/><QDefProperty Type="String" Data="30"/></Property>
<Value><LCID Type="String" Data="1031"/><KelosValue Type="Long" Data="1"/>
<DocumentValue Type="String" Data="2"/><IOMode Type="Long" Data="5"/>
<AllValuesNumeric Type="Long" Data="2"/>
<EmptyNumericValueStayEmpty Type="String" Data="True"/></Value>
<Document><Pointer Type="String" Data="first"/></Document>
<Document Name="True"><Pointer Type="Long" Data="4"/></Document>
<ValueItems><ValueItem><LCID Type="Long" Data="6"/><Value Type="Long" Data="1"/>
<DisplayValue Type="String" Data="b"/></ValueItem></ValueItems>
<Presentation Type="String" Data="2"/></Content>)") ==
          L"Content1{KelosObject1{SystemUID(String:7) SystemType(Long:3) "
          L"PathFullName(String:True) } "
          L"Property2{GetName(String:8) SetName(String:S) GetParameter(Byte:1) "
          L"SetParameter(Single:2) PhysUnit(String:9) QDefProperty(Long:30) } "
          L"Value1{LCID(Integer:1031) KelosValue(Long:1) DocumentValue(String:2) "
          L"IOMode(String:5) AllValuesNumeric(Boolean:-1) "
          L"EmptyNumericValueStayEmpty(Boolean:-1) } "
          L"Document1{Pointer(String:4) } ValueItems1{"
          L"ValueItem1{LCID(Integer:6) Value(Long:1) DisplayValue(String:b) } } "
          L"Presentation(Long:2) }");
    const std::wstring text = read_text(
        LR"(<Content><KelosObject><SystemUID Type="String" Data="U"/>
<SystemType Type="String" Data="x"/></KelosObject>
<Property Version="2"><GetName Type="String" Data="G"/><SetName Type="Null" Data=""/></Property>
<Value><LCID Type="Long" Data="0"/><KelosValue Type="Empty"/><DocumentValue Type="Empty"/>
<IOMode Type="Empty"/><AllValuesNumeric Type="String" Data="x"/></Value>
<Document><Pointer Type="Null" Data=""/></Document>
<ValueItems><ValueItem><LCID Type="String" Data="x"/></ValueItem></ValueItems>
<Presentation Type="String" Data="many"/></Content>)");
    constexpr std::pair<const wchar_t*, const wchar_t*> stopped[] = {
        {L"KelosObject", L"{SystemUID(String:U) SystemType(Long:3) PathFullName(String:True)"},
        {L"Property", L"{GetName(String:G) SetName(String:S) GetParameter(Byte:1)"},
        {L"Value", L" IOMode(String:) AllValuesNumeric(Boolean:-1) Empty"},
        {L"Document", L"{Pointer(String:4)"},
        {L"ValueItem", L"ValueItems1{ValueItem1{LCID(Integer:0) "},
        {L"ValueItems", L"} Presentation(Long:2)"}};
    long reports = 0;
    for (const auto& [record, kept] : stopped) {
        CHECK(error(++reports) == L"Tessera." + std::wstring(record) + L"|Property Let 'XMLNode'");
        CHECK(text.find(kept) != text.npos);
    }
    CHECK(error_count() == reports);
    CHECK(message_count() == 0);
}

TEST_CASE_FIXTURE(ContentFixture,
                  "owners that take no elements are reported, and nothing is returned") {
    const auto document = get(content, &ITessera::CreateDOMDocument);
    const dom::Node declaration = get(document, &IXMLDOMDocument::get_firstChild);
    CHECK_FALSE(write(declaration.get()));
    CHECK(error(1) == L"Tessera.XMLPublics|Public Function 'XML_WriteTitle'");
    CHECK(error_count() == 1);  // what is not written below nothing is no failure of its own

    const auto other = get(content, &ITessera::CreateDOMDocument);
    get(other, &IXMLDOMDocument::appendChild,
        static_cast<IXMLDOMNode*>(dom::create_element(other, L"Other"_bstr).get()));
    CHECK_FALSE(get(content, &ITessera::CreateContentsRoot,
                    static_cast<IXMLDOMNode*>(other.get())));  // it has a root of another name
    CHECK(error(error_count()) == L"Tessera.XMLPublics|Public Function 'XML_WriteTitle'");
}
