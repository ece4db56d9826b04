// Through the DLL: the kit's queries: results, nesting, column definitions.
#include "automation/conversion.h"
#include "support/literal_project.h"
#include "support/transcript.h"

using namespace test;

namespace {

constexpr char plant[] = R"(
<project name='W' type='project' current='yes'>
  <object type='area' name='A' description='Bereich'>
    <translation language='English' description='Area'/>
    <object type='pump' name='P1'><attribute name='x.y' type='double' unit='PRESSURE.BAR' value='2'/>
      <object type='pump' name='P1a'/></object>
    <object type='area' name='B'><object type='pump' name='P2'/></object>
    <object type='pump' name='P3'><attribute name='x.y' type='double' unit='PRESSURE.BAR' value='3'/></object>
  </object>
  <object type='area' name='D'/>
</project>)";

std::wstring text_of(const ComPtr<IKelosResultTable>& table, long row, long column) {
    const auto cell = get(table, &IKelosResultTable::get_Cell, row, column);
    return cell ? get(cell, &IKelosCell::get_Text).str() : L"-";
}

// Cells parted by ",", rows by ";", the rows of a nested query in brackets behind their row.
std::wstring listing(const ComPtr<IKelosQuery>& query) {
    const auto table = get(query, &IKelosQuery::get_ResultTable);
    std::wstring text;
    for (long row = 1; row <= get(table, &IKelosResultTable::get_RowCount); ++row) {
        if (row > 1) text += L";";
        for (long column = 1; column <= get(table, &IKelosResultTable::get_ColumnCount); ++column)
            text += (column > 1 ? L"," : L"") + text_of(table, row, column);
        if (const auto nested = get(table, &IKelosResultTable::get_NestedQuery, row))
            text += L"(" + listing(nested) + L")";
    }
    return text;
}

// Plays the transcript on the queries of the plant. Scripts also have List(query), and List(name),
// which runs the query of that name before.
void check(const char* queries, const std::wstring& transcript, const char* body = plant) {
    const LiteralProject project(body, queries);
    const auto helpers =
        make_object({{L"List", [&](const auto& arguments) {
                          const Variant& wanted = arguments.at(0);
                          if (wanted.is_object())
                              return Variant(listing(automation::object_as<IKelosQuery>(wanted)));
                          const auto query = project.query(std::wstring(wanted.text()).c_str());
                          call(query, &IKelosQuery::Run);
                          return Variant(listing(query));
                      }}});
    check_transcript(transcript, {{L"Kit", project.kit.get()}, {L"Helpers", helpers->dispatch()}});
}

// Queries nested in the one row of another, all the way down.
std::string chain(int levels) {
    std::string text;
    for (int level = levels; level >= 1; --level) {
        const std::string number = std::to_string(level);
        text = "<query name='L" + number + "'><column name='C" + number +
               "' property='Name'/><row><cell text='" + number + "'/>" + text + "</row></query>";
    }
    return text;
}

}  // namespace

TEST_CASE("a selection finds objects by type below an object, parents first") {
    check(R"(
<query name='Pumps'><column name='N' property='Name'/><select type='pump' below='A'/></query>
<query name='Direct'><column name='N' property='Name'/><select type='pump' below='A' levels='direct'/></query>
<query name='All'><column name='N' property='Name'/><select below='A'/></query>
<query name='Nowhere'><column name='N' property='Name'/><select/></query>
<query name='R'><column name='N' property='Name'/>
  <select below='W' levels='direct' recursive='yes'/></query>
<query name='Again'><column name='N' property='Name'/><select below='A' recursive='yes'/></query>)",
          LR"(
    ? List("Pumps") -> P1;P1a;P2;P3
    ? List("DIRECT") -> P1;P3
    ? List("All") -> P1;P1a;B;P2;P3
    ? List("Nowhere") -> ""
    ? Query("Unknown") -> Nothing
    ' As deep as the plant is.
    ? List("R") -> A(P1(P1a());B(P2());P3());D()
    ? Query("R").ResultTable.TotalRowCount -> 7
    ? List("Again") -> P1(P1a());P1a();B(P2());P2();P3()
    ? Query("Again").ResultTable.TotalRowCount -> 7
)");
}

TEST_CASE("before its run a query has columns and no rows, and one run fills every view of it") {
    check(
        "<query name='Pumps'><column name='N' property='Name'/>"
        "<select type='pump' below='W'/></query>",
        LR"(
    Set table = Document("D").QueryContainer.TopQuery.ResultTable
    ? table.RowCount & table.ColumnCount & table.Columns.Item(1).Name -> 01N
    ? table.Cell(1, 1) -> Nothing
    Query("Pumps").Run
    ? table.RowCount -> 2
    Document("D").QueryContainer.TopQuery.Run
    ? table.RowCount -> 2
    ? Document("D").TypeText & Document("D").SubTypeText -> J1
)",
        R"(
<project name='W' type='project' current='yes'>
  <object type='pump' name='P1'/>
  <object type='pump' name='P2'/>
  <document name='D' query='Pumps'/>
</project>)");
}

TEST_CASE("nested queries stand behind their rows: empty ones, missing ones, and in the last row") {
    check(R"(
<query name='Q'>
  <column name='A' property='Name'/><column name='B' property='Description'/>
  <row object='A'><cell/><cell missing='yes'/>
    <query name='N1'><column name='C' property='Name'/>
      <row><cell text='a'/></row><row><cell text='b'/></row></query></row>
  <row><cell text='x'/></row>
  <row><cell text='y'/><cell text='z'/><query name='N2'><column name='C' property='Name'/></query></row>
  <row object='A|P1'>
    <query name='N3'><column name='C' property='Name'/><select levels='direct'>
      <query name='N4'><column name='D' property='NestedName'/><row/></query></select></query></row>
</query>)",
          LR"(
    ? List("Q") -> A,-(a;b);x,-;y,z();P1,(P1a(P1.P1a))
    Set table = Query("Q").ResultTable
    ? table.TotalRowCount -> 8
    ? table.NestedQuery(2) -> Nothing
    ' Callers count columns on through nested queries; there is simply no cell.
    ? table.Cell(1, -1) -> Nothing
    ? table.Cell(1, 0) -> Nothing
    ? table.Cell(1, 3) -> Nothing
    ? table.Columns.Item(-1) -> Nothing
    ? table.Columns.Item(0) -> Nothing
    ? table.Columns.Item(3) -> Nothing
    ? table.Cell(5, 1) -> Nothing
    ? table.NestedQuery(5) -> Nothing
)");
}

TEST_CASE("queries nest as deep as the file says") {
    for (const int levels : {3, 20, 21, 300}) {
        CAPTURE(levels);
        const LiteralProject project(plant, chain(levels));
        auto query = project.query(L"L1");
        call(query, &IKelosQuery::Run);
        const auto total = get(query, &IKelosQuery::get_ResultTable);
        CHECK(get(total, &IKelosResultTable::get_TotalRowCount) == levels);
        int depth = 0;
        while (query) {
            const auto table = get(query, &IKelosQuery::get_ResultTable);
            CHECK(text_of(table, 1, 1) == std::to_wstring(++depth));
            query = get(table, &IKelosResultTable::get_NestedQuery, 1L);
        }
        CHECK(depth == levels);
    }
}

TEST_CASE("a cell shows an object, an attribute of it, or what the file says") {
    check(R"(
<query name='Q'>
  <column name='N' property='Name'/>
  <column name='P' property='DisplayValue' attribute='x.y' unit='PRESSURE.KPA'/>
  <column name='V' property='Value' parameter='x.y'/>
  <row object='A|P1'/>
  <row object='A|P1|P1a'/>
  <row><cell object='A|B'/><cell text='drei' value='3' type='long'/><cell object='A' value='7' type='double'/></row>
</query>
<query name='T'><column name='N' property='Name'/>
  <row><cell translate='A|P1' property='Description2' sub-type='110' sub-key='K-7' text='Text'/></row></query>)",
          LR"(
    ? List("Q") -> P1,200,2;P1a,-,-;B,drei,7
    Set table = Query("Q").ResultTable
    ? table.Cell(1, 1).Object.PathFullName(Nothing) -> W|A|P1
    ? table.Cell(1, 2).Object.PathFullName(Nothing) -> W|A|P1|x.y
    ? table.Cell(1, 3).Object.PathFullName(Nothing) -> W|A|P1
    ? table.Cell(3, 1).Object.PathFullName(Nothing) -> W|A|B
    ? table.Cell(3, 2).Object -> Nothing
    ? table.Cell(3, 3).Object.PathFullName(Nothing) -> W|A
    ? TypeName(table.Cell(3, 2).Value) -> Long
    ' A translate object is told by its type name and refers to the object.
    Query("T").Run
    Set cell = Query("T").ResultTable.Cell(1, 1)
    ? cell.Object -> Nothing
    ? cell.Text -> Text
    ? cell.Value -> [TranslateObject]
    ? cell.Value.Property & cell.Value.SubObjectType & cell.Value.SubObjectKey -> Description2110K-7
    ? cell.Value.KelosObject.Name -> P1
)");
}

TEST_CASE("generated rows count, need no memory and nest the same in every row") {
    check(R"(
<query name='Q'><column name='N' property='Name'/><column name='V' property='Value'/>
  <generate rows='100000' object='A'>
    <cell text='Signal {row}'/><cell text='{row}' value='S{row}'/>
    <query name='M'><column name='C' property='Name'/><generate rows='2'><cell text='{row}'/></generate></query>
  </generate></query>
<query name='Beyond'><generate rows='50000'><query><generate rows='50000'/></query></generate></query>)",
          LR"(
    Query("Q").Run
    Set table = Query("Q").ResultTable
    ? table.RowCount & " " & table.TotalRowCount -> 100000 300000
    ? table.Cell(100000, 1).Text -> Signal 100000
    ? table.Cell(99999, 2).Value -> S99999
    ? List(table.NestedQuery(50000)) -> 1;2
    ' More rows than 32 bits can count are as many as they can.
    Query("Beyond").Run
    ? Query("Beyond").ResultTable.TotalRowCount -> 2147483647
)");
}

TEST_CASE("a query that nests itself is counted without walking all of its rows") {
    std::string objects;
    for (int level = 0; level < 40; ++level)
        objects = "<object type='area' name='A'>" + objects + "</object>";
    check(
        "<query name='Q'><column name='N' property='Name'/><select below='W' "
        "recursive='yes'/></query>",
        LR"(
    Query("Q").Run
    ? Query("Q").ResultTable.TotalRowCount -> 2147483647
)",
        ("<project name='W' type='project' current='yes'>" + objects + "</project>").c_str());
}

TEST_CASE("columns describe themselves in their language") {
    check(R"(
<query name='Q'>
  <column name='N' property='description' heading='Benennung'>
    <translation language='English' heading='Description'/></column>
  <column name='E' property='Description' lcid='1033' shown='no'/>
  <column name='X' property='GetXValue' parameter='2;x.y' unit='PRESSURE.BAR' relevant='no'/>
  <column name='?' property='99'/>
  <row object='A'/>
</query>)",
          LR"(
    ? List("Q") -> Bereich,Area,-,-
    Set columns = Query("Q").ResultTable.Columns
    ? columns.Item(1).Heading & columns.Item(2).Heading -> BenennungE
    ' What is set on a column stays with the query.
    columns.Item(1).LCID = 1033
    ? Query("Q").ResultTable.Columns.Item(1).Heading -> Description
    ? Query("Q").ResultTable.Cell(1, 1).Text -> Area
    Set indexed = columns.Item(3)
    ? indexed.GetName & indexed.GetParameter & " " & indexed.SetName & indexed.SetParameter -> GetXValue2;x.y SetXValue2;x.y
    ? indexed.LCID & indexed.Relevant & indexed.Shown & columns.Item(2).Shown -> 1031FalseTrueFalse
    Set unknown = columns.Item(4)
    ? unknown.Kind & unknown.GetName & TypeName(unknown.GetParameter) -> 99Empty
)");
}

TEST_CASE("a column writes itself below an element and into an empty document") {
    check(R"(
<query name='Q'><column name='N &amp; M' property='Value' parameter='x.y' unit='PRESSURE.BAR' heading='Wert'/></query>)",
          LR"(
    Set page = Make("Msxml2.DOMDocument.6.0")
    page.async = False
    ? page.loadXML("<Columns/>") -> True
    Set column = Query("Q").ResultTable.Columns.Item(1)
    column.WriteXML page.documentElement
    Set written = page.documentElement.firstChild
    ? written.nodeName -> Column
    ? written.getAttribute("Name") & "|" & written.getAttribute("Heading") -> N & M|Wert
    ? written.getAttribute("Property") & written.getAttribute("PropertyConstant") -> Value32
    ? written.getAttribute("Parameter") & "|" & written.getAttribute("Unit") -> x.y|PRESSURE.BAR
    column.WriteXML Nothing -> ! Object variable not set
)");
}

TEST_CASE("a definition must be initialised, and initialising clears it") {
    check("",
          LR"(
    Set column = Make("KelosQuery.QColumnDef")
    column.LCID = 1 -> ! InitNew has not been called
    column.InitNew 0
    ? column.Evaluator -> ! InitEvaluator has not been called
    column.InitEvaluator 0
    ? column.Evaluator Is Nothing -> False
    column.PropertyConstant = 32
    column.ParameterText = "x"
    ? column.Kind & column.ParameterText -> 32x
    column.InitNew 0
    ? column.Kind & column.ParameterText -> 0
)");
}

TEST_CASE_FIXTURE(ComFixture, "property constants have the names that callers know them by") {
    const auto resolver = create<IKelosPropertyConstant>(L"KelosQuery.PropertyConstant");
    std::wstring names;
    for (long constant = -1; constant <= 62; ++constant) {
        call(resolver, &IKelosPropertyConstant::put_Constant, constant);
        const auto name = get(resolver, &IKelosPropertyConstant::get_Name);
        const long number = get(resolver, &IKelosPropertyConstant::get_PropertyNumber);
        if (number != 0 || !name.empty())
            names += std::to_wstring(number) + L" " + name.str() + L"; ";
        CHECK((number == 0 || number == constant));
    }
    CHECK(names ==
          L"1 Description; 2 Name; 3 Fullname; 4 SystemFullName; 5 NestedName; "
          L"6 Description2; 7 Description3; 10 Label; 11 FullLabel; 13 SignedLabel; "
          L"20 AliasFullLabel; 22 AliasSignedLabel; 30 DisplayValue; 31 GetDisplayXValue; "
          L"32 Value; 33 GetXValue; 34 ProductValue; 40 GetStatus; "
          L"50 GetInternationalDescription; 51 GetInternationalValue; "
          L"52 GetInternationalDescription2; 53 GetInternationalDescription3; "
          L"54 GetInternationalXValue; 60 Login; 61 FileName; ");
}
