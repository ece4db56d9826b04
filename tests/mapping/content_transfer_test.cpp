// Tests of internals: what a row of each kind records, on the small project.

#include "mapping/sc_global.h"
#include "support/content_text.h"
#include "support/transcript.h"
#include "support/watched_host.h"

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;
using automation::Variant;

using test::data;
using test::item;
using namespace automation::literals;

namespace {

class MappingFixture : public test::WatchedProject {
  public:
    ComPtr<tessera::SCGlobal> global = automation::make<tessera::SCGlobal>();

    struct Row {
        const wchar_t* pointer = L"S!A1";
        const wchar_t* property = L"Name";
        Variant parameter{};
        const wchar_t* unit = L"";
        const wchar_t* mode = L"";
        bool all_numeric = false;
        bool stay_empty = false;
    };
    void content(const ComPtr<IKelosObject>& object, const Row& row) {
        global->Content(Bstr(row.pointer).get(), object.get(), Bstr(row.property).get(),
                        row.parameter, Bstr(row.unit).get(), Bstr(row.mode).get(),
                        row.all_numeric ? VARIANT_TRUE : VARIANT_FALSE,
                        row.stay_empty ? VARIANT_TRUE : VARIANT_FALSE);
    }
    void content_fix(const wchar_t* pointer, const Variant& value, bool all_numeric = true) {
        global->ContentFix(Bstr(pointer).get(), value, all_numeric ? VARIANT_TRUE : VARIANT_FALSE,
                           all_numeric ? VARIANT_FALSE : VARIANT_TRUE);
    }
    ComPtr<IKelosObject> pump() { return object(L"Anlage|Pumpe"); }
    ComPtr<IKelosObject> attribute(const wchar_t* name) {
        return get(pump(), &IKelosObject::AttributeByFullName, Bstr(name).get());
    }
    std::vector<dom::Node> contents() {
        return test::contents_of(
            get(global->contents_root().node(), &IXMLDOMNode::get_ownerDocument));
    }
    dom::Node last() {
        const auto all = contents();
        REQUIRE_FALSE(all.empty());
        return all.back();
    }
    std::wstring properties(const dom::Node& node) {
        return data(node, L"Property", L"GetName") + L"|" + data(node, L"Property", L"SetName") +
               L"|" + data(node, L"Property", L"QDefProperty");
    }
    std::wstring flags(const dom::Node& node) {
        return data(node, L"Value", L"AllValuesNumeric") + L" " +
               data(node, L"Value", L"EmptyNumericValueStayEmpty");
    }
    // Runs a transcript whose Row records one (object, property, parameter, unit, mode, both flags)
    // and says what came of it.
    void check(const std::wstring& transcript) {
        const auto host = test::make_object(
            {{L"Row", [&](const auto& arguments) { return Variant(recorded(arguments)); }}});
        test::check_transcript(transcript, {{L"Kit", kit.get()}, {L"Host", host->dispatch()}});
    }

  private:
    std::wstring recorded(std::vector<Variant> row) {
        row.resize(7);
        const std::size_t before = contents().size();
        global->Content(Bstr(L"S!A1").get(), automation::object_as<IKelosObject>(row[0]).get(),
                        row[1].bstrVal, row[2], row[3].bstrVal, row[4].bstrVal, row[5].boolVal,
                        row[6].boolVal);
        std::wstring errors = take_errors();
        if (!errors.empty()) errors = L", " + errors.substr(0, errors.size() - 1);
        if (contents().size() == before) return L"nothing" + errors;
        const auto node = last();
        const auto presentation = dom::child_named(node, L"Presentation");
        return properties(node) + L"|" + data(node, L"Property", L"PhysUnit") + L"|" +
               data(node, L"Value", L"LCID") + L"|" + data(node, L"Value", L"IOMode") + L"|" +
               flags(node) + L"|" + item(node, L"Value", L"KelosValue") + L"|" +
               test::values(node) + L"|" +
               std::wstring(dom::attribute(presentation, L"Data"_bstr).text()) + errors;
    }
};

}  // namespace

TEST_CASE_FIXTURE(MappingFixture, "a row records object, position, property, value and direction") {
    content(pump(), {.pointer = L"Blatt!B7", .property = L"description"});
    const auto node = last();
    CHECK(data(node, L"KelosObject", L"SystemUID") == L"P1");
    CHECK(data(node, L"KelosObject", L"PathFullName") == L"Anlage|Pumpe");
    CHECK(data(node, L"Document", L"Pointer") == L"Blatt!B7");
    CHECK(item(node, L"Value", L"LCID") == L"Integer:1031");
    CHECK(get(global->main_pointer(), &ITesseraSCGlobal::get_WorkSet));  // the first object's
    check(
        LR"(
    Set Pump = Kit.Object("Anlage|Pumpe")
    Set Pressure = Pump.AttributeByFullName("Process.Pressure")
    ' The caller's spelling counts. Blanks are no direction: both ways.
    ? Row(Pump, "description", "", "", "O", True, True) -> description|description|1||1031|O|-1 -1|Empty:|1031 Kreiselpumpe=Kreiselpumpe|0
    ? Row(Pump, "Name", "", "", "") -> Name|Name|2||1031|IO|0 0|Empty:|1031 Pumpe=Pumpe|0
    ? Row(Pump, "Name", "", "", "  ") -> Name|Name|2||1031|IO|0 0|Empty:|1031 Pumpe=Pumpe|0
    ? Row(Pump, "Name", "", "", " O ", False, True) -> Name|Name|2||1031| O |0 -1|Empty:|1031 Pumpe=Pumpe|0
    ' A number is a property constant, whose name is the way back and whose number is the host's.
    ? Row(Pressure, "32") -> 32|Value|32||1031|IO|0 0|Empty:|1031 2.5=2,5|0
    ? Row(Pump, "1E1") -> 1E1|Label|10||1031|IO|0 0|Empty:|1031 P-101=P-101|0
    ? Row(Pump, "8") -> 8||0||1031|IO|0 0|Empty:||0
    ' Units are given by label, or taken from the attribute; exact beats the first match.
    ? Row(Pressure, "Value") -> Value|Value|32||1031|IO|0 0|Empty:|1031 2.5=2,5|0
    ? Row(Pressure, "Value", "", " mbar ") -> Value|Value|32|PRESSURE.MBAR|1031|IO|0 0|Empty:|1031 2500=2500|0
    ? Row(Pressure, "Value", "", "PA") -> Value|Value|32|PRESSURE.PAUPPER|1031|IO|0 0|Empty:|1031 250000=250000|0
    ? Row(Pressure, "Value", "", "pa") -> Value|Value|32|PRESSURE.PA|1031|IO|0 0|Empty:|1031 250000=250000|0
    ? Row(Pressure, "Value", "", "MBAR") -> Value|Value|32|PRESSURE.MBAR|1031|IO|0 0|Empty:|1031 2500=2500|0
    ? Row(Pressure, "Value", "", "furlong") -> Value|Value|32||1031|IO|0 0|Empty:|1031 2.5=2,5|0
    ? Row(Pressure, "Value", "", "  ") -> Value|Value|32|PRESSURE.BAR|1031|IO|0 0|Empty:|1031 2.5=2,5|0
    ? Row(Pump, "Name", "", "bar") -> Name|Name|2||1031|IO|0 0|Empty:|1031 Pumpe=Pumpe|0
    ' All values come.
    ? Row(Pump.AttributeByFullName("Build.Material"), "DisplayValue") -> DisplayValue|DisplayValue|30||1031|IO|0 0|Empty:|1031 1=Stahl; 1031 2=Guss|1
    ' The parameter chooses value and language. There is no seventh language.
    ? Row(Pump.AttributeByFullName("Build.Note"), "GetXValue", 2) -> GetXValue|SetXValue|33||1031|IO|0 0|Empty:|1031 Zeile 2=Zeile 2|0
    ? Row(Pump, "GetInternationalDescription", "2") -> GetInternationalDescription|SetInternationalDescription|50||1033|IO|0 0|Empty:|1033 Centrifugal pump=Centrifugal pump|0
    ? Row(Pump, "GetInternationalDescription", "7") -> GetInternationalDescription|SetInternationalDescription|50||1031|IO|0 0|Empty:|1031 Kreiselpumpe=Kreiselpumpe|0
    ' What the host found counts: of the text after the evaluation, of the row before it.
    ? Row(Pump, "GetInternationalDescription", ";2") -> GetInternationalDescription|SetInternationalDescription|50||1031|IO|0 0|Empty:|1033 Centrifugal pump=Centrifugal pump|0
    ' Everything else is an expression on the object, in which nothing of the rows before is left.
    ? Row(Pump, " Label & ""/"" & ""x"" ", "", "bar", "O", True) ->  Label & "/" & "x" | Label & "/" & "x" |0||1031||0 0|String:P-101/x||0
    ? Row(Pump, "AttributeText", """Build.Note""") -> AttributeText|AttributeText|0||1031||0 0|String:Zeile 1||0
    ? Row(Pump, "NoSuchMember") -> NoSuchMember|NoSuchMember|0||1031||0 0|String:<< Error >>||0, Tessera.PropByName|Public Function 'EvalExpression'
    ? Row(Pump, "99999999999") -> nothing, Tessera.SCGlobal|Public Sub 'Content'
    Kit.FailCallNamed "LanguageObject.get_LCID", 0, &H80041234
    ? Row(Pump, "Description") -> Description|Description|1||1031|IO|0 0|Empty:|1031 Kreiselpumpe=Kreiselpumpe|0, Tessera.SCGlobal|Private Function 'GetLCID'
    )");
}

TEST_CASE_FIXTURE(MappingFixture, "the parameter of what depends on the language names it") {
    for (std::wstring name : {L"GetInternationalDescription", L"GetInternationalDescription2",
                              L"GetInternationalDescription3", L"GetInternationalValue",
                              L"GetInternationalXValue", L"GetOwnInternationalDescription",
                              L"GetOwnInternationalValue", L"GetOwnInternationalXValue"})
        for (const wchar_t* lcid : {L"1033", L"1031"}) {
            content(pump(), {.property = name.c_str(), .parameter = Variant(2L)});
            CHECK(data(last(), L"Value", L"LCID") == lcid);
            name[0] = L'g';  // the case of the names counts
        }
    CHECK(item(last(), L"Property", L"SetParameter") == L"Long:2");
}

TEST_CASE_FIXTURE(MappingFixture,
                  "every known name selects its constant and its way back, in any case") {
    struct Expected {
        const wchar_t* name;
        const wchar_t* set_name;
        int constant;
    };
    constexpr const wchar_t* same = nullptr;
    constexpr Expected expected[] = {
        {L"Description", same, 1},
        {L"Description2", same, 6},
        {L"Description3", same, 7},
        {L"Name", same, 2},
        {L"FullName", L"", 3},
        {L"SystemFullName", L"", 4},
        {L"NestedName", L"", 5},
        {L"Label", same, 10},
        {L"FullLabel", L"", 11},
        {L"SignedLabel", L"", 13},
        {L"AliasFullLabel", L"", 20},
        {L"AliasSignedLabel", L"", 22},
        {L"DisplayValue", same, 30},
        {L"GetDisplayXValue", L"SetXValue", 31},
        {L"Value", same, 32},
        {L"GetXValue", L"SetXValue", 33},
        {L"ProductValue", L"", 34},
        {L"GetStatus", L"", 40},
        {L"GetInternationalDescription", L"SetInternationalDescription", 50},
        {L"GetInternationalDescription2", L"SetInternationalDescription2", 52},
        {L"GetInternationalDescription3", L"SetInternationalDescription3", 53},
        {L"GetInternationalValue", L"SetInternationalValue", 51},
        {L"GetInternationalXValue", L"SetInternationalXValue", 54},
        {L"Login", L"", 60},
        {L"FileName", same, 61},
    };
    for (const Expected& row : expected) {
        std::wstring spelled = row.name;
        for (int round = 0; round < 2; ++round) {
            content(pump(), {.property = spelled.c_str()});
            // Setting the read name fills the empty write name, so that it is never empty here.
            const std::wstring set_name =
                row.set_name == same || !*row.set_name ? spelled : row.set_name;
            CHECK(properties(last()) ==
                  spelled + L"|" + set_name + L"|" + std::to_wstring(row.constant));
            CharUpperW(spelled.data());
        }
    }
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(MappingFixture, "no position, nothing recorded") {
    content(pump(), {.pointer = L""});
    content_fix(L"", Variant(L"x"));
    CHECK(contents().empty());
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(MappingFixture, "no object is an error of the row, and the next row goes on") {
    content({}, {});
    CHECK(error(1) == L"Tessera.SCGlobal|Public Sub 'Content'");
    CHECK(error_code(1) == automation::error_object_variable_not_set);
    Variant null;
    null.vt = VT_NULL;
    content(pump(), {.parameter = null});
    CHECK(error_code(2) == automation::error_invalid_use_of_null);
    CHECK(contents().empty());
    content(pump(), {});
    CHECK(contents().size() == 1);
    CHECK(error_count() == 2);
}

TEST_CASE_FIXTURE(MappingFixture, "a query document is expanded cell by cell, both ways") {
    content(document(L"Liste"),
            {.pointer = L"Q!Y5", .property = L"ignored", .mode = L"O", .all_numeric = true});
    std::wstring cells;
    for (const auto& node : contents())
        cells += data(node, L"Document", L"Pointer") + L" " + data(node, L"Property", L"GetName") +
                 L" " + data(node, L"Value", L"IOMode") + L" " +
                 data(node, L"Property", L"PhysUnit") + L" " + test::values(node) + L"\n";
    // The hidden column keeps its place; a missing cell is passed over.
    CHECK(cells ==
          L"Q!Y5 Name IO  1031 Pumpe=Pumpe\n"
          L"Q!Y6 Name IO  1031 Anlage=Anlage\n"
          L"Q!AA5 Value IO PRESSURE.MBAR 1031 2500=2500\n");
    CHECK(flags(last()) == L"-1 0");
    const auto unit_of = [&](const wchar_t* given) {
        content(attribute(L"Process.Pressure"), {.property = L"Value", .unit = given});
        return data(last(), L"Property", L"PhysUnit");
    };
    CHECK(unit_of(L"PRESSURE.PA") == L"PRESSURE.PA");  // as the query's last column left it
    CHECK(error_count() == 0);
    content(document(L"Liste"), {.pointer = L"no pointer"});
    CHECK(error(1) == L"Tessera.SCGlobal|Private Function 'SplitExDocP'");
    CHECK(contents().size() == 4);
    content(document(L"Liste"), {.pointer = L"Q!A2147483647"});  // there is no row after this one
    CHECK(error(2) == L"Tessera.SCGlobal|Sub 'QContent'");
    CHECK(error_code(2) == automation::error_overflow);
    CHECK(contents().size() == 5);
    CHECK(unit_of(L"mbar") == L"PRESSURE.MBAR");         // its first column has no unit
    for (const wchar_t* other : {L"Rahmen", L"Leer"}) {  // of each, one type text is another
        content(document(other), {});
        CHECK(data(last(), L"KelosObject", L"PathFullName") == other);
    }
    CHECK(error_count() == 2);
}

TEST_CASE_FIXTURE(MappingFixture,
                  "a query document that contains itself is refused, others go on") {
    content(document(L"Selbst"), {.pointer = L"Q!A1", .stay_empty = true});
    CHECK(contents().size() == 2);
    CHECK(flags(last()) == L"0 -1");
    CHECK(data(last(), L"Document", L"Pointer") == L"Q!A3");
    CHECK(error(1) == L"Tessera.SCGlobal|Sub 'QContent'");
    CHECK(error_count() == 1);
    content(document(L"Selbst"), {.pointer = L"Q!A1"});  // not for ever
    CHECK(contents().size() == 4);
}

TEST_CASE_FIXTURE(MappingFixture, "of each unknown property of a query's columns is told once") {
    const auto list = document(L"Liste");
    const auto container = get(list, &IKelosDocument::get_QueryContainer);
    const auto query =
        automation::object_as<IKelosQuery>(automation::get_property(container.get(), L"TopQuery"));
    const auto table = get(query, &IKelosQuery::get_ResultTable);
    const auto columns = get(table, &IKelosResultTable::get_Columns);
    const auto value_column = get(columns, &IKelosQColumnDefs::get_Item, 3L);
    // One that the user could not be told of is not counted as told.
    call(kit, &IHostKit::FailCallNamed, Bstr(L"Service.ShowMessage").get(), 1L,
         static_cast<long>(E_ACCESSDENIED));
    for (const long constant : {99L, 99L, 98L, 99L}) {
        call(value_column, &IKelosQColumnDef::put_PropertyConstant, constant);
        content(list, {.pointer = L"Q!A1"});
    }
    CHECK(contents().size() == 8);  // the column of names, each time
    CHECK(error(1) == L"Tessera.SCGlobal|Private Function 'GetProp'");
    CHECK(error_count() == 1);
    CHECK(message_count() == 2);
    CHECK(message(1) == L"Information|64|Unbekannte Property oder Property-Konstante: 99");
    CHECK(message(2) == L"Information|64|Unbekannte Property oder Property-Konstante: 98");
    CHECK(trace(1) == L"Unbekannte Property oder Property-Konstante: 99");
    CHECK(trace(2) == L"Unbekannte Property oder Property-Konstante: 98");
    const auto name_column = get(columns, &IKelosQColumnDefs::get_Item, 1L);
    call(name_column, &IKelosQColumnDef::put_ParameterText, Bstr(L"2").get());
    call(name_column, &IKelosQColumnDef::put_UnitText, Bstr(L" PRESSURE.PA ").get());
    content(list, {.pointer = L"Q!A1"});
    CHECK(item(last(), L"Property", L"GetParameter") == L"String:2");
    CHECK(data(last(), L"Property", L"PhysUnit") == L"PRESSURE.PA");
}

TEST_CASE_FIXTURE(MappingFixture, "a fixed value is output in the project's language") {
    global->set_document(document(L"Leer"));
    content_fix(L"S!A1", Variant(L"a\r\nb"));
    const auto node = last();
    CHECK(item(node, L"Value", L"KelosValue") == L"String:a\nb");
    CHECK(data(node, L"Value", L"IOMode") == L"O");
    CHECK(data(node, L"Value", L"LCID") == L"1031");
    CHECK(flags(node) == L"-1 0");
    CHECK(data(node, L"Property", L"GetName") == L"");
    CHECK(data(node, L"KelosObject", L"SystemUID") == L"");
    content_fix(L"S!A1", Variant(pump().get()));  // objects are no fixed values
    CHECK(contents().size() == 1);
    content_fix(L"S!A1", Variant(1L), false);
    CHECK(flags(last()) == L"0 -1");
    CHECK(error_count() == 0);
    global->set_document({});
    content_fix(L"S!A1", Variant(1L));
    CHECK(error(1) == L"Tessera.SCGlobal|Public Sub 'ContentFix'");
    CHECK(contents().size() == 2);
}

TEST_CASE_FIXTURE(MappingFixture, "the context answers what a script asks for") {
    const auto global_ = global->main_pointer();
    CHECK_FALSE(get(global_, &ITesseraSCGlobal::get_Project));
    CHECK_FALSE(get(global_, &ITesseraSCGlobal::get_ReportObject));
    global->set_workset(workset);
    CHECK(get(global_, &ITesseraSCGlobal::get_Project));
    global->set_document(document(L"Datenblatt"));
    CHECK(trace(1) == L"Set mDocument = vNewValue");
    CHECK(get(global_, &ITesseraSCGlobal::get_MappingTableExcel));
    const auto uid = [](const ComPtr<IKelosObject>& found) {
        return get(found, &IKelosObject::get_SystemUID).str();
    };
    CHECK(uid(get(global_, &ITesseraSCGlobal::get_ReportObject)) == L"P1");
    for (const wchar_t* without : {L"Rahmen", L"Leer"}) {
        global->set_document(document(without));
        CHECK(uid(get(global_, &ITesseraSCGlobal::get_ReportObject)) == L"A1");  // the owner
    }
    CHECK_FALSE(get(global_, &ITesseraSCGlobal::get_MappingTableExcel));
    CHECK(get(global_, &ITesseraSCGlobal::ExcelABC, 703L).view() == L"AAA");
    CHECK(error_count() == 0);
}

TEST_CASE_FIXTURE(MappingFixture, "the options end the document, and their writing is traced") {
    global->set_document(document(L"Datenblatt"));
    const auto root = global->contents_root().node();
    CHECK(global->contents_root().node() == root);
    global->AddOptionsToXml();
    const auto options = dom::child_named(root, L"Options");
    const auto option = dom::child_named(options, L"AllowSheetCreation");
    const auto attribute_of = [&](const wchar_t* name) {
        return std::wstring(dom::attribute(option, Bstr(name)).text());
    };
    CHECK(attribute_of(L"Version") + attribute_of(L"Data") + attribute_of(L"Type") ==
          L"1-1Boolean");
    CHECK(trace(2).starts_with(L"XMLOptions->CreateOptionsRoot: returns <Options "));
    CHECK(trace(3).starts_with(L"OptionMappingTable->XMLNode: returns <AllowSheetCreation "));
    CHECK(trace(4).starts_with(L"XMLOptions->XMLNode: returns <Options "));
    CHECK(trace(5).starts_with(L"Tessera.SCGlobal->AddOptionsToXml: updated root <Contents "));
    CHECK(error_count() == 0);
    fail(L"Service.Trace");
    global->AddOptionsToXml();
    global->set_document({});
    CHECK(take_errors() ==
          L"XMLOptions|Friend Function 'CreateOptionsRoot'\n"
          L"OptionMappingTable|Friend Function 'XMLNode'\n"
          L"XMLOptions|Friend Function 'XMLNode'\n"
          L"Tessera.SCGlobal|Friend Sub 'AddOptionsToXml'\n"
          L"Tessera.SCGlobal|Property Set 'Document'\n");
}
