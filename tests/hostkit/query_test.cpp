// The kit's queries: results, nesting, column definitions.
#include "automation/conversion.h"
#include "hostkit/literal_project.h"

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

ComPtr<IKelosResultTable> result_of(const ComPtr<IKelosQuery>& query) {
    return get(query, &IKelosQuery::get_ResultTable);
}

ComPtr<IKelosResultTable> run(const ComPtr<IKelosQuery>& query) {
    call(query, &IKelosQuery::Run);
    return result_of(query);
}

std::wstring text_of(const ComPtr<IKelosResultTable>& table, long row, long column) {
    const auto cell = get(table, &IKelosResultTable::get_Cell, row, column);
    return cell ? get(cell, &IKelosCell::get_Text).str() : L"-";
}

// Cells parted by ",", rows by ";", the rows of a nested query in brackets behind their row.
std::wstring listing(const ComPtr<IKelosResultTable>& table) {
    std::wstring text;
    const long rows = get(table, &IKelosResultTable::get_RowCount);
    const long columns = get(table, &IKelosResultTable::get_ColumnCount);
    for (long row = 1; row <= rows; ++row) {
        if (row > 1) text += L";";
        for (long column = 1; column <= columns; ++column)
            text += (column > 1 ? L"," : L"") + text_of(table, row, column);
        if (const auto nested = get(table, &IKelosResultTable::get_NestedQuery, row))
            text += L"(" + listing(result_of(nested)) + L")";
    }
    return text;
}

ComPtr<IKelosQColumnDef> column_of(const ComPtr<IKelosResultTable>& table, long column) {
    return get(get(table, &IKelosResultTable::get_Columns), &IKelosQColumnDefs::get_Item, column);
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
    const LiteralProject project(plant, R"(
<query name='Pumps'><column name='N' property='Name'/><select type='pump' below='A'/></query>
<query name='Direct'><column name='N' property='Name'/><select type='pump' below='A' levels='direct'/></query>
<query name='All'><column name='N' property='Name'/><select below='A'/></query>
<query name='Nowhere'><column name='N' property='Name'/><select/></query>)");
    CHECK(listing(run(project.query(L"Pumps"))) == L"P1;P1a;P2;P3");
    CHECK(listing(run(project.query(L"DIRECT"))) == L"P1;P3");
    CHECK(listing(run(project.query(L"All"))) == L"P1;P1a;B;P2;P3");
    CHECK(listing(run(project.query(L"Nowhere"))).empty());
    CHECK_FALSE(project.query(L"Unknown"));
}

TEST_CASE("before its run a query has columns and no rows, and one run fills every view of it") {
    const LiteralProject project(R"(
<project name='W' type='project' current='yes'>
  <object type='pump' name='P1'/>
  <object type='pump' name='P2'/>
  <document name='D' query='Pumps'/>
</project>)",
                                 R"(
<query name='Pumps'><column name='N' property='Name'/><select type='pump' below='W'/></query>)");
    const auto document = get(project.kit, &IHostKit::get_Document, Bstr(L"D").get());
    const auto container = get(document, &IKelosDocument::get_QueryContainer);
    const auto top =
        automation::object_as<IKelosQuery>(automation::get_property(container.get(), L"TopQuery"));
    const auto table = result_of(top);
    CHECK(get(table, &IKelosResultTable::get_RowCount) == 0);
    CHECK(get(table, &IKelosResultTable::get_ColumnCount) == 1);
    CHECK(column_of(table, 1));
    CHECK_FALSE(get(table, &IKelosResultTable::get_Cell, 1L, 1L));
    call(project.query(L"Pumps"), &IKelosQuery::Run);
    CHECK(get(table, &IKelosResultTable::get_RowCount) == 2);
    call(top, &IKelosQuery::Run);
    CHECK(get(table, &IKelosResultTable::get_RowCount) == 2);
    CHECK(get(document, &IKelosDocument::get_TypeText).view() == L"J");
    CHECK(get(document, &IKelosDocument::get_SubTypeText).view() == L"1");
}

TEST_CASE("nested queries stand behind their rows: empty ones, missing ones, and in the last row") {
    const LiteralProject project(plant, R"(
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
</query>)");
    const auto table = run(project.query(L"Q"));
    CHECK(listing(table) == L"A,-(a;b);x,-;y,z();P1,(P1a(P1.P1a))");
    CHECK(get(table, &IKelosResultTable::get_TotalRowCount) == 8);
    CHECK_FALSE(get(table, &IKelosResultTable::get_NestedQuery, 2L));
    // Callers count columns on through nested queries; there is simply no cell.
    for (const long beyond : {-1L, 0L, 3L}) {
        CHECK_FALSE(get(table, &IKelosResultTable::get_Cell, 1L, beyond));
        CHECK_FALSE(column_of(table, beyond));
    }
    CHECK_FALSE(get(table, &IKelosResultTable::get_Cell, 5L, 1L));
    CHECK_FALSE(get(table, &IKelosResultTable::get_NestedQuery, 5L));
}

TEST_CASE("queries nest as deep as the file says, and as the plant is when they nest themselves") {
    for (const int levels : {3, 20, 21, 300}) {
        CAPTURE(levels);
        const LiteralProject project(plant, chain(levels));
        auto query = project.query(L"L1");
        CHECK(get(run(query), &IKelosResultTable::get_TotalRowCount) == levels);
        int depth = 0;
        while (query) {
            ++depth;
            const auto table = result_of(query);
            CHECK(text_of(table, 1, 1) == std::to_wstring(depth));
            query = get(table, &IKelosResultTable::get_NestedQuery, 1L);
        }
        CHECK(depth == levels);
    }
    const LiteralProject project(plant, R"(
<query name='R'><column name='N' property='Name'/>
  <select below='W' levels='direct' recursive='yes'/></query>)");
    CHECK(listing(run(project.query(L"R"))) == L"A(P1(P1a());B(P2());P3());D()");
    CHECK(get(result_of(project.query(L"R")), &IKelosResultTable::get_TotalRowCount) == 7);
}

TEST_CASE("a cell shows an object, an attribute of it, or what the file says") {
    const LiteralProject project(plant, R"(
<query name='Q'>
  <column name='N' property='Name'/>
  <column name='P' property='DisplayValue' attribute='x.y' unit='PRESSURE.KPA'/>
  <column name='V' property='Value' parameter='x.y'/>
  <row object='A|P1'/>
  <row object='A|P1|P1a'/>
  <row><cell object='A|B'/><cell text='drei' value='3' type='long'/><cell object='A' value='7' type='double'/></row>
</query>)");
    const auto table = run(project.query(L"Q"));
    CHECK(listing(table) == L"P1,200,2;P1a,-,-;B,drei,7");
    const auto shown = [&](long row, long column) {
        const auto cell = get(table, &IKelosResultTable::get_Cell, row, column);
        const auto object = get(cell, &IKelosCell::get_Object);
        if (!object) return std::wstring(L"none");
        return get(object, &IKelosObject::get_PathFullName, static_cast<IKelosProject*>(nullptr))
            .str();
    };
    CHECK(shown(1, 1) == L"W|A|P1");
    CHECK(shown(1, 2) == L"W|A|P1|x.y");
    CHECK(shown(1, 3) == L"W|A|P1");
    CHECK(shown(3, 1) == L"W|A|B");
    CHECK(shown(3, 2) == L"none");
    CHECK(shown(3, 3) == L"W|A");
    const auto cell = get(table, &IKelosResultTable::get_Cell, 3L, 2L);
    CHECK(get(cell, &IKelosCell::get_Value).vt == VT_I4);
}

TEST_CASE("a translate object is told by its type name and refers to the object") {
    const LiteralProject project(plant, R"(
<query name='Q'><column name='N' property='Name'/>
  <row><cell translate='A|P1' property='Description2' sub-type='110' sub-key='K-7' text='Text'/></row></query>)");
    const auto cell = get(run(project.query(L"Q")), &IKelosResultTable::get_Cell, 1L, 1L);
    CHECK_FALSE(get(cell, &IKelosCell::get_Object));
    CHECK(get(cell, &IKelosCell::get_Text).view() == L"Text");
    const Variant value = get(cell, &IKelosCell::get_Value);
    CHECK(automation::type_name(value).view() == L"TranslateObject");
    const auto translated = value.object().as<IDispatch>();
    const auto member = [&](const wchar_t* name) {
        return automation::get_property(translated.get(), name);
    };
    CHECK(member(L"Property").text() == L"Description2");
    CHECK(automation::to_long(member(L"SubObjectType")) == 110);
    CHECK(member(L"SubObjectKey").text() == L"K-7");
    const auto object = automation::object_as<IKelosObject>(member(L"KelosObject"));
    CHECK(automation::get_property(object.get(), L"Name").text() == L"P1");
}

TEST_CASE("generated rows count, need no memory and nest the same in every row") {
    const LiteralProject project(plant, R"(
<query name='Q'><column name='N' property='Name'/><column name='V' property='Value'/>
  <generate rows='100000' object='A'>
    <cell text='Signal {row}'/><cell text='{row}' value='S{row}'/>
    <query name='M'><column name='C' property='Name'/><generate rows='2'><cell text='{row}'/></generate></query>
  </generate></query>)");
    const auto table = run(project.query(L"Q"));
    CHECK(get(table, &IKelosResultTable::get_RowCount) == 100000);
    CHECK(get(table, &IKelosResultTable::get_TotalRowCount) == 300000);
    CHECK(text_of(table, 100000, 1) == L"Signal 100000");
    const auto cell = get(table, &IKelosResultTable::get_Cell, 99999L, 2L);
    CHECK(get(cell, &IKelosCell::get_Value).text() == L"S99999");
    const auto nested = get(table, &IKelosResultTable::get_NestedQuery, 50000L);
    CHECK(listing(result_of(nested)) == L"1;2");
}

TEST_CASE("more rows than 32 bits can count are an error of the count") {
    const LiteralProject beyond(plant, R"(
<query name='Q'><generate rows='50000'><query><generate rows='50000'/></query></generate></query>)");
    CHECK(error_of([&] { get(run(beyond.query(L"Q")), &IKelosResultTable::get_TotalRowCount); }) ==
          L"There are more rows than can be counted");
}

TEST_CASE("columns describe themselves in their language") {
    const LiteralProject project(plant, R"(
<query name='Q'>
  <column name='N' property='description' heading='Benennung'>
    <translation language='English' heading='Description'/></column>
  <column name='E' property='Description' lcid='1033' shown='no'/>
  <column name='X' property='GetXValue' parameter='2;x.y' unit='PRESSURE.BAR' relevant='no'/>
  <column name='?' property='99'/>
  <row object='A'/>
</query>)");
    const auto table = run(project.query(L"Q"));
    const auto heading = [&](long column) {
        return get(column_of(table, column), &IKelosQColumnDef::get_Heading).str();
    };
    CHECK(listing(table) == L"Bereich,Area,-,-");
    CHECK(heading(1) == L"Benennung");
    CHECK(heading(2) == L"E");
    // What is set on a column stays with the query.
    call(column_of(table, 1), &IKelosQColumnDef::put_LCID, 1033L);
    CHECK(heading(1) == L"Description");
    CHECK(text_of(table, 1, 1) == L"Area");

    const auto value = column_of(table, 3);
    CHECK(get(value, &IKelosQColumnDef::get_GetName).view() == L"GetXValue");
    CHECK(get(value, &IKelosQColumnDef::get_SetName).view() == L"SetXValue");
    CHECK(get(value, &IKelosQColumnDef::get_GetParameter).text() == L"2;x.y");
    CHECK(get(value, &IKelosQColumnDef::get_SetParameter).text() == L"2;x.y");
    CHECK(get(value, &IKelosQColumnDef::get_Relevant) == VARIANT_FALSE);
    CHECK(get(value, &IKelosQColumnDef::get_Shown) == VARIANT_TRUE);
    CHECK(get(value, &IKelosQColumnDef::get_LCID) == 1031);
    CHECK(get(column_of(table, 2), &IKelosQColumnDef::get_Shown) == VARIANT_FALSE);
    const auto unknown = column_of(table, 4);
    CHECK(static_cast<long>(get(unknown, &IKelosQColumnDef::get_Kind)) == 99);
    CHECK(get(unknown, &IKelosQColumnDef::get_GetName).empty());
    CHECK(get(unknown, &IKelosQColumnDef::get_GetParameter).vt == VT_EMPTY);
}

TEST_CASE("a column writes itself below an element and into an empty document") {
    const LiteralProject project(plant, R"(
<query name='Q'><column name='N &amp; M' property='Value' parameter='x.y' unit='PRESSURE.BAR' heading='Wert'/></query>)");
    const auto column = column_of(result_of(project.query(L"Q")), 1);
    const auto document = automation::create_object<IDispatch>(L"Msxml2.DOMDocument.6.0");
    const Variant text(L"<Columns/>");
    automation::call_method(document.get(), L"loadXML", {text});
    const auto root = automation::object_as<IDispatch>(
        automation::get_property(document.get(), L"documentElement"));
    ComPtr<IXMLDOMNode> node;
    root->QueryInterface(IID_IXMLDOMNode, reinterpret_cast<void**>(node.put()));
    call(column, &IKelosQColumnDef::WriteXML, node.get());
    const auto written =
        automation::object_as<IDispatch>(automation::get_property(root.get(), L"firstChild"));
    const auto attribute = [&](const wchar_t* name) {
        const Variant wanted(name);
        return automation::to_text(
                   automation::call_method(written.get(), L"getAttribute", {wanted}))
            .str();
    };
    CHECK(automation::get_property(written.get(), L"nodeName").text() == L"Column");
    CHECK(attribute(L"Name") == L"N & M");
    CHECK(attribute(L"Heading") == L"Wert");
    CHECK(attribute(L"Property") == L"Value");
    CHECK(attribute(L"PropertyConstant") == L"32");
    CHECK(attribute(L"Parameter") == L"x.y");
    CHECK(attribute(L"Unit") == L"PRESSURE.BAR");
    CHECK_FALSE(error_of([&] {
                    call(column, &IKelosQColumnDef::WriteXML, static_cast<IXMLDOMNode*>(nullptr));
                }).empty());
}

TEST_CASE("a definition must be initialised, and initialising clears it") {
    const LiteralProject project(plant);
    const auto column = create<IKelosQColumnDef>(L"KelosQuery.QColumnDef");
    const auto evaluator = [&] { get(column, &IKelosQColumnDef::get_Evaluator); };
    CHECK(error_of([&] { call(column, &IKelosQColumnDef::put_LCID, 1L); }) ==
          L"InitNew has not been called");
    call(column, &IKelosQColumnDef::InitNew, 0L);
    CHECK(error_of(evaluator) == L"InitEvaluator has not been called");
    call(column, &IKelosQColumnDef::InitEvaluator, 0L);
    CHECK(error_of(evaluator).empty());
    call(column, &IKelosQColumnDef::put_PropertyConstant, 32L);
    call(column, &IKelosQColumnDef::put_ParameterText, Bstr(L"x").get());
    CHECK(get(column, &IKelosQColumnDef::get_Kind) == kqpValue);
    call(column, &IKelosQColumnDef::InitNew, 0L);
    CHECK(get(column, &IKelosQColumnDef::get_Kind) == kqpNone);
    CHECK(get(column, &IKelosQColumnDef::get_ParameterText).empty());
}

TEST_CASE_FIXTURE(ComFixture, "property constants have the names that callers know them by") {
    struct Known {
        long constant;
        const wchar_t* name;
    };
    const Known known[] = {
        {1, L"Description"},
        {2, L"Name"},
        {3, L"Fullname"},
        {4, L"SystemFullName"},
        {5, L"NestedName"},
        {6, L"Description2"},
        {7, L"Description3"},
        {10, L"Label"},
        {11, L"FullLabel"},
        {13, L"SignedLabel"},
        {20, L"AliasFullLabel"},
        {22, L"AliasSignedLabel"},
        {30, L"DisplayValue"},
        {31, L"GetDisplayXValue"},
        {32, L"Value"},
        {33, L"GetXValue"},
        {34, L"ProductValue"},
        {40, L"GetStatus"},
        {50, L"GetInternationalDescription"},
        {51, L"GetInternationalValue"},
        {52, L"GetInternationalDescription2"},
        {53, L"GetInternationalDescription3"},
        {54, L"GetInternationalXValue"},
        {60, L"Login"},
        {61, L"FileName"},
    };
    const auto resolver = create<IKelosPropertyConstant>(L"KelosQuery.PropertyConstant");
    long next = 0;
    const auto resolve = [&](long constant) {
        call(resolver, &IKelosPropertyConstant::put_Constant, constant);
        return get(resolver, &IKelosPropertyConstant::get_Name).str() + L"=" +
               std::to_wstring(get(resolver, &IKelosPropertyConstant::get_PropertyNumber));
    };
    for (const Known& property : known) {
        for (; next < property.constant; ++next)
            CHECK(resolve(next) == L"=0");
        CHECK(resolve(next) == property.name + (L"=" + std::to_wstring(next)));
        ++next;
    }
    CHECK(resolve(62) == L"=0");
    CHECK(resolve(-1) == L"=0");
}
