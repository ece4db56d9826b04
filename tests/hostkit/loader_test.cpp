// Through the DLL: what the kit reads in project files, and says about those that it cannot use.
#include "support/literal_project.h"
#include "support/transcript.h"

using namespace test;

namespace {

// The sentence behind the file's path.
std::wstring problem_of(const std::string& bytes) {
    const TemporaryFile file(bytes);
    const auto kit = create<IHostKit>(L"Kelos.HostKit");
    const std::wstring error =
        error_of([&] { get(kit, &IHostKit::Open, Bstr(file.path()).get()); });
    if (error.empty()) return error;
    REQUIRE(error.starts_with(file.path()));
    return error.substr(file.path().size());
}

std::string in_project(const std::string& content) {
    return project_text("<project name='W' type='project' current='yes'>\n" + content +
                        "\n</project>");
}

struct Faulty {
    const char* text;
    const wchar_t* problem;
};

}  // namespace

TEST_CASE_FIXTURE(ComFixture, "a malformed file is refused with its line") {
    const Faulty files[] = {
        {"", L": the file is empty"},
        {"<!-- only a comment -->", L", line 1: the file ends too early"},
        {"<a>\n<b>\n</a>", L", line 3: an end tag does not match its start tag"},
        {"<a>\n<b>\n", L", line 2: <b> has no end tag"},
        {"<a>\n<!-- b", L", line 1: <a> has no end tag"},
        {"<a>\n<![CDATA[b", L", line 1: <a> has no end tag"},
        {"<a>\n<b c=1/></a>", L", line 2: an attribute's value is not in quotation marks"},
        {"<a>\n<b c='1'\n c='2'/></a>", L", line 3: an attribute stands twice"},
        {"<a>\n<b c='1<2'/></a>", L", line 2: there is a \"<\" where none may be"},
        {"<!DOCTYPE a [<!ENTITY e 'x'>]>\n<a>&e;</a>",
         L", line 1: there is a document type declaration"},
        {"<a/>",
         L", line 1: this is no project file: its root element is not "
         L"<kelos-project-file>"},
        {"<kelos-project-file version='2'/>",
         L", line 1: this version of project files is not known"},
    };
    for (const Faulty& file : files) {
        CAPTURE(file.text);
        CHECK(problem_of(file.text) == file.problem);
    }
    CHECK(problem_of(std::string("<a>\n\n<b c='\0'/></a>", 18)) ==
          L", line 3: there is a null character");
}

TEST_CASE_FIXTURE(ComFixture,
                  "whatever a file breaks off in, or has in one place, it is read or refused") {
    const std::string file = in_project(
        "<object type='pump' name='&#x50;&amp;'><!-- a --><attribute name='A' "
        "value='1'/></object>\n"
        "<document name='D'><script><![CDATA[ x ]]></script></document><?p i?>");
    // The catalogues before are of the same elements and attributes.
    for (std::size_t i = file.find("<project"); i < file.size(); ++i) {
        CAPTURE(i);
        CHECK(problem_of(file.substr(0, i)) != L"");
        for (const char character : {'\0', '<', '&', '\'', '>', '-'})
            problem_of(std::string(file).replace(i, 1, 1, character));
    }
}

TEST_CASE_FIXTURE(ComFixture, "a file that is not there is refused with its name") {
    const auto kit = create<IHostKit>(L"Kelos.HostKit");
    ComPtr<IKelosWorkset> workset;
    CHECK(kit->Open(Bstr(L"no such file.xml").get(), workset.put()) ==
          HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    check_transcript(
        L"Kit.Open \"no such file.xml\" -> ! The file \"no such file.xml\" cannot be opened",
        {{L"Kit", kit.get()}});
}

TEST_CASE_FIXTURE(ComFixture, "what a project file may not say is refused with its line") {
    // The content is line 4 of the file.
    const Faulty contents[] = {
        {"<object type='pump' name='P' colour='red'/>",
         L", line 4: <object> has no attribute \"colour\""},
        {"<thing/>", L", line 4: <thing> may not stand inside <project>"},
        {"<object type='pump'/>", L", line 4: the attribute \"name\" is missing"},
        {"<object type='pump' name=''/>", L", line 4: a name may not be empty"},
        {"<object type='pump' name='a|b'/>", L", line 4: a name may not contain \"|\""},
        {"<object type='fan' name='P'/>", L", line 4: there is no system type \"fan\""},
        {"<object type='pump' name='P'/>\n<object type='pump' name='P'/>",
         L", line 5: there is a second object \"W|P\""},
        {"<object type='pump' name='P' uid='1'/>\n<object type='pump' name='Q' uid='1'/>",
         L", line 5: there is a second object of its type with the identifier \"1\""},
        {"<attribute name='A' type='double' value='1,5'/>",
         L", line 4: \"1,5\" is no value of the type that is asked for"},
        {"<attribute name='A' type='double' value='nan'/>",
         L", line 4: \"nan\" is no value of the type that is asked for"},
        {"<attribute name='A' type='double' decimals='100' value='1'/>",
         L", line 4: \"decimals\" is not between 0 and 99"},
        {"<attribute name='A' type='date' value='2026-02-30'/>",
         L", line 4: \"2026-02-30\" is no value of the type that is asked for"},
        {"<attribute name='A' type='colour'/>", L", line 4: there is no value type \"colour\""},
        {"<attribute name='A' unit='PRESSURE.bar'/>",
         L", line 4: there is no unit \"PRESSURE.bar\""},
        {"<attribute name='A' list='Modes'/>", L", line 4: there is no value list \"Modes\""},
        {"<attribute name='A'/>\n<attribute name='A'/>",
         L", line 5: there is a second attribute \"A\""},
        {"<attribute name='A' type='long' value='1'>\n"
         "<translation language='English' value='one'/></attribute>",
         L", line 5: <translation> has no attribute \"value\""},
        {"<translation language='Dansk' description='x'/>",
         L", line 4: there is no language \"Dansk\""},
        {"<rights user='otto' mask='1'/>", L", line 4: there is no user \"otto\""},
        {"<rights user='anna' mask='all'/>",
         L", line 4: \"all\" is not a whole number, which \"mask\" must be"},
        {"<shows object='W'/>", L", line 4: <shows> may stand inside <document> only"},
        {"<document name='D'><shows object='Q'/></document>",
         L", line 4: there is no object \"Q\""},
        {"<document name='D' owner='Q'/>", L", line 4: there is no object \"Q\""},
        {"<document name='D' query='Q'/>", L", line 4: there is no query \"Q\""},
        {"<mapping/>", L", line 4: <mapping> may stand inside <object> only"},
        {"<object type='area' name='M'><mapping><rows>\n<row cell='A1' object='Q'/>"
         "</rows></mapping></object>",
         L", line 5: there is no object \"Q\""},
        {"<object type='area' name='M'><mapping><rows object='M'>\n<row cell='A1' attribute='x.y'/>"
         "</rows></mapping></object>",
         L", line 5: \"W|M\" has no attribute \"x.y\""},
    };
    for (const Faulty& content : contents) {
        CAPTURE(content.text);
        CHECK(problem_of(in_project(content.text)) == content.problem);
    }
}

TEST_CASE_FIXTURE(ComFixture, "a unit whose factor is no number is refused") {
    for (const char* const factor : {"inf", "1/0", "nan(1)", "1e300/1e-300"}) {
        std::string text = in_project("");
        text.replace(text.find("5/9"), 3, factor);
        CHECK(problem_of(text).ends_with(L" is neither a number nor a fraction"));
    }
}

TEST_CASE_FIXTURE(ComFixture,
                  "what a row of a mapping table may not say is refused with its line") {
    const Faulty rows[] = {
        {"<row cell='7A' property='Name'/>", L"\"7A\" is no cell"},
        {"<row cell='A{row}' property='Name'/>", L"\"A{row}\" is no cell"},
        {"<generate rows='2'><row cell='A{row}x' value=''/></generate>", L"\"A{row}x\" is no cell"},
        {"<row cell='A1' property='Name' io='i'/>",
         L"\"i\" is no direction: \"I\", \"O\" and \"IO\" are"},
        {"<row cell='A1' attribute='x.p' property='Value' unit='K'/>",
         L"\"PRESSURE\" has no unit with the label \"K\""},
        {"<generate rows='2147483647'><row cell='A1' value=''/><row cell='B1' "
         "value=''/></generate>",
         L"there are more rows than can be counted"},
        {"<generate rows='2147483646'><row cell='A1' value=''/></generate><row cell='A2' "
         "value=''/>",
         L"there are more rows than can be counted"},
    };
    for (const Faulty& row : rows) {
        CAPTURE(row.text);
        const std::string text =
            std::string(
                "<object type='area' name='M'><attribute name='x.p' type='double'"
                " unit='PRESSURE.PA' value='1'/><mapping><rows object='M'>\n"
                "<row cell='A1' attribute='x.p' property='Value' unit=' BAR ' io='IO'/>") +
            row.text + "</rows></mapping></object>";
        CHECK(problem_of(in_project(text)) == std::wstring(L", line 5: ") + row.problem);
    }
}

TEST_CASE_FIXTURE(ComFixture, "elements that stand too deep are refused with their line") {
    std::string nested;
    for (int level = 0; level < 100000; ++level)
        nested += "\n<object type='area' name='A'>";
    // The project stands in line 3, two levels deep; its objects begin in line 5.
    CHECK(problem_of(in_project(nested)) ==
          L", line 1003: elements stand more than 1000 deep inside each other");
}

TEST_CASE_FIXTURE(ComFixture, "what a query may not say is refused") {
    const Faulty queries[] = {
        {"<query/>", L"the query has no name"},
        {"<query name='Q'/><query name='q'/>", L"there is a second query \"q\""},
        {"<query name='Q'><column name='C' property='Colour'/></query>",
         L"there is no property \"Colour\""},
        {"<query name='Q'><column name='C' property='Name' unit='BAR'/></query>",
         L"there is no unit \"BAR\""},
        {"<query name='Q'><row><cell/></row></query>", L"there are more cells than columns"},
        {"<query name='Q'><row/><select/></query>",
         L"the rows of a query come from one source only"},
        {"<query name='Q'><generate rows='2'/><row/></query>",
         L"the rows of a query come from one source only"},
        {"<query name='Q'><generate rows='-1'/></query>", L"the number of rows is negative"},
        {"<query name='Q'><select recursive='yes'><query/></select></query>",
         L"a selection nests one query only"},
        {"<query name='Q'><select levels='two'/></query>",
         L"\"levels\" is neither \"all\" nor \"direct\""},
    };
    for (const Faulty& query : queries) {
        CAPTURE(query.text);
        const std::string text =
            project_text("<project name='W' type='project' current='yes'/>", query.text);
        CHECK(problem_of(text) == std::wstring(L", line 3: ") + query.problem);
    }
}

TEST_CASE_FIXTURE(ComFixture, "a file is read in the encoding that its mark or declaration says") {
    const std::string project = in_project("<object type='area' name='\xC4\x80'/>");
    const auto declared = [&](const char* encoding, const std::string& name) {
        std::string text = project;
        text.replace(text.find("\xC4\x80"), 2, name);
        return std::string("<?xml version='1.0' encoding='") + encoding + "'?>" + text;
    };
    const auto utf16 = [](const std::string& bytes, bool big_first) {
        std::string result;
        for (const char byte : bytes)
            result += big_first ? std::string{'\0', byte} : std::string{byte, '\0'};
        return result;
    };
    const std::string wide = utf16(declared("UTF-16", "\xE4"), false);
    const std::string wide_big = utf16(declared("utf-16", "\xE4"), true);
    struct Encoded {
        std::string bytes;
        const wchar_t* name;  // or, from a comma on, the problem
    };
    const Encoded files[] = {
        {in_project("<object type='area' name='Größe 木 \xF0\x9D\x84\x9E'/>"),
         L"Gr\u00F6\u00DFe \u6728 \U0001D11E"},
        {"\xEF\xBB\xBF" + in_project("<object type='area' name='木'/>"), L"\u6728"},
        {declared("utf-8", "\xC3\xA4"), L"\u00E4"},
        {declared("ISO-8859-1", "\xE4"), L"\u00E4"},
        {declared("Windows-1252", "\x80"), L"\u20AC"},
        {"\xFF\xFE" + wide, L"\u00E4"},
        {"\xFE\xFF" + wide_big, L"\u00E4"},
        {wide, L"\u00E4"},
        {wide_big, L"\u00E4"},
        {declared("utf-8", "\xE4"), L", line 4: there are bytes that are no UTF-8"},
        {declared("windows-1252", "\x81"), L", line 4: there are bytes that are no windows-1252"},
        {wide + std::string("\0\xDC", 2), L", line 6: there are bytes that are no UTF-16"},
        {declared("utf-16", "a"), L", line 1: the file is not encoded in UTF-16, as it says"},
        {declared("IBM037", "a"),
         L", line 1: the encoding \"IBM037\" is not read: UTF-8, UTF-16, windows-1252 and "
         L"ISO-8859-1 are"},
    };
    for (const Encoded& file : files) {
        CAPTURE(file.name);
        if (*file.name == L',') {
            CHECK(problem_of(file.bytes) == file.name);
            continue;
        }
        const TemporaryFile written(file.bytes);
        const auto kit = create<IHostKit>(L"Kelos.HostKit");
        get(kit, &IHostKit::Open, Bstr(written.path()).get());
        CHECK(get(kit, &IHostKit::get_Object, Bstr(file.name).get()));
    }
}

TEST_CASE("no text changes wherever the parser cuts the file into blocks") {
    std::string objects;
    const auto letters = [](int i) { return i == 1000 ? 20000 : i % 7; };
    for (int i = 0; i < 2000; ++i) {
        std::string text = "a";
        for (int letter = 0; letter <= letters(i); ++letter)
            text += letter % 3 == 2 ? "\xF0\x9F\x98\x80" : "\xC3\xA4\xE2\x82\xAC";
        objects +=
            "<object type='pump' name='P" + std::to_string(i) + "' description='" + text + "'/>";
    }
    const LiteralProject project("<project name='Plant' type='project' current='yes'>" + objects +
                                 "</project>");
    for (int i = 0; i < 2000; ++i) {
        std::wstring text = L"a";
        for (int letter = 0; letter <= letters(i); ++letter)
            text += letter % 3 == 2 ? L"\xD83D\xDE00" : L"\xE4\x20AC";
        const auto object = project.object((L"P" + std::to_wstring(i)).c_str());
        REQUIRE(get(object.as<IHostKitObject>(), &IHostKitObject::get_Description).str() == text);
    }
}

TEST_CASE("a document gives what it shows, whom it belongs to, its entries and its script") {
    const LiteralProject project(
        R"(
<project name='W' type='project' current='yes'>
  <object type='area' name='A'><object type='pump' name='P'>
    <attribute name='Note' value='a&#13;&#10;b&#x0D;&#10;&#13;&#9;c
d'/></object></object>
  <document name='Plan' type-text='T' sub-type-text='7' owner='A' delegate='A|P'>
    <shows object='A|P'/>
    <object type='area' name='Own'/>
    <entry name='@ReportObject' object='A'/>
    <entry name='@Nothing'/>
  </document>)"
        "<document name='Empty'><script>\r\n    Sub DoVex()\r\n    End "
        "Sub\r\n</script></document><document name='Lines'>"
        "<script marker='x'><![CDATA[\n\n  Sub DoVex()\n\n      a = \"<&\"\n"
        "  End Sub '&#13;]]></script></document></project>");
    check_transcript(
        LR"(
    Set plan = Document("PLAN")
    ? plan.Objects.Item(1).PathFullName(Nothing) -> W|A|P
    ' Line ends that are written as references stay as they are, others become blanks.
    ? Replace(Replace(plan.Objects.Item(1).AttributeByFullName("Note").Value(1), vbCr, "r"), vbLf, "n") -> arnbrnr	c d
    ? plan.Objects.Item(2).PathFullName(Nothing) -> W|Plan|Own
    ? plan.Owner.PathFullName(Nothing) & " " & plan.Delegate.PathFullName(Nothing) -> W|A W|A|P
    ? plan.TypeText & plan.SubTypeText -> T7
    ? plan.QueryContainer -> Nothing
    ? plan.NamedEntries.Count -> 2
    ? plan.NamedEntries.Item("@ReportObject").Object.PathFullName(Nothing) -> W|A
    ? plan.NamedEntries.Item("@Nothing").Object -> Nothing
    ? plan.NamedEntries.Item("@reportobject") -> Nothing
    ' A stored script has its lines, without the file's indentation.
    Set script = Document("Empty").AttributeByFullName("Vex")
    ? Replace(script.Value(1), vbCrLf, "/") & " " & script.Marker -> Sub DoVex()/End Sub ~
    Set script = Document("Lines").AttributeByFullName("Vex")
    ? Replace(script.Value(1), vbCrLf, "/") & " " & script.Marker -> Sub DoVex()//    a = "<&"/End Sub '&#13; x
)",
        {{L"Kit", project.kit.get()}});
}

TEST_CASE("rows of a mapping table stand in file order, generated ones counted on") {
    const LiteralProject project(R"(
<project name='W' type='project' current='yes'>
  <object type='area' name='A'><attribute name='x.y' type='double' value='1'/></object>
  <object type='area' name='T'>
    <mapping>
      <rows sheet='S' object='A'>
        <row cell='A1' property='Name' io='I'/>
        <generate rows='2' from='10'>
          <row cell='B{row}' attribute='x.y' property='Value' index='2' unit='bar'/>
          <row cell='C{row}' value='Row {row}' io='O'/>
        </generate>
        <row cell='A2' value='1.5' type='double'/>
      </rows>
      <rows>
        <row target='' io='I'/>
        <row target='X!A1!{row}' value=''/>
      </rows>
    </mapping>
  </object>
</project>)");
    const auto object = project.object(L"T");
    const auto table =
        automation::object_as<IKelosMappingTable>(automation::get_property(object.get(), L"XObj"));
    CHECK(automation::same_object(table.get(), object.as<IKelosMappingTable>().get()));
    check_transcript(
        LR"(
    ? GetCount -> 8
    ? Target(1) & " " & Target(2) & " " & Target(3) & " " & Target(4) -> S!A1 S!B10 S!C10 S!B11
    ? Target(5) & " " & Target(6) & " " & Target(7) & " " & Target(8) -> S!C11 S!A2  X!A1!{row}
    ? Value(5) & TypeName(Value(6)) & TypeName(Value(7)) -> Row 11DoubleEmpty
    ? TypeName(SourceIndex(2)) & TypeName(SourceIndex(1)) -> LongEmpty
    ? UNIT(4) & IO(1) & SourceObject(4).Name -> barIy
    ? SourceObject(3) -> Nothing
    ? SourceObject(6) -> Nothing
    ? SourceObject(7) -> Nothing
    ? SourceObject(8) -> Nothing
    ? Target(0) -> ! Subscript out of range
    ? Target(-1) -> ! Subscript out of range
    ? Target(9) -> ! Subscript out of range
)",
        {{L"Table", table.get()}});
    // A script may ask the object that carries the table as well.
    check_transcript(L"? Target(2) -> S!B10", {{L"Carrier", object.get()}});
}
