// Through the DLL: what a row of each kind calls on its host, in order.

#include "support/watched_host.h"

using namespace test;

namespace {

class CallsFixture : public WatchedProject {
  public:
    CallsFixture() {
        global = create<ITesseraSCGlobal>(L"Tessera.SCGlobal");
        content(L"A0", L"Anlage", L"Name");  // what the first row asks for once
        call(service(), &IHostKitService::Clear);
        log_calls();
    }

    ComPtr<ITesseraSCGlobal> global;

    void content(const wchar_t* pointer, const wchar_t* path, const wchar_t* property,
                 const Variant& parameter = Variant(L""), const wchar_t* unit = L"") {
        const std::wstring name(path);
        const auto separator = name.find(L'#');
        auto object = this->object(name.substr(0, separator).c_str());
        if (separator != name.npos)
            object = get(object, &IKelosObject::AttributeByFullName,
                         Bstr(name.substr(separator + 1)).get());
        calls();
        global->Content(Bstr(pointer).get(), object.get(), Bstr(property).get(), parameter,
                        Bstr(unit).get(), Bstr(L"IO").get(), VARIANT_FALSE, VARIANT_FALSE);
    }
};

// What is asked of a row's object before its values.
std::wstring object_read(const std::wstring& type, const std::wstring& name) {
    const std::wstring subject = L" \"" + name + L"\"";
    std::wstring calls;
    for (const wchar_t* member : {L"SystemType", L"SystemUID", L"SystemType", L"Project"})
        calls += type + L".get_" + member + subject + L"\n";
    return calls + type + L".get_PathFullName" + subject + L", IHostKitProject\n" + type +
           L".get_WorkSet" + subject +
           L"\nWorksetObject.get_CurrentProject\nProjectObject.get_CurrentLanguage\n";
}

struct Column {
    int property;
    const wchar_t* role;  // of the object, as it is handed to the evaluation
    std::wstring parameter = L"";
    std::wstring lcid = L"1031";
    std::wstring unit = L"";  // the calls that choose it
    int entries = 1;
};

// How the values of a known property are read.
std::wstring column_read(const Column& column) {
    std::wstring calls = L"LanguageObject.get_LCID\nColumnDefinition.put_PropertyConstant " +
                         std::to_wstring(column.property) +
                         L"\nColumnDefinition.put_ParameterText \"" + column.parameter +
                         L"\"\nColumnDefinition.put_UnitText \"\"\nColumnDefinition.put_LCID " +
                         column.lcid + L"\n" + column.unit +
                         LR"(ColumnDefinition.get_UnitText
ColumnDefinition.get_LCID
ColumnDefinition.get_Kind
ColumnDefinition.get_Evaluator
Evaluator.Evaluate )" + column.role +
                         L"\nValueListObject.get_Count\n";
    for (int i = 1; i <= column.entries; ++i)
        calls +=
            L"ValueListObject.get_Item " + std::to_wstring(i) +
            L"\nColumnDefinition.get_LCID\nValueEntry.get_DisplayValue\nValueEntry.get_Value\n";
    return calls + L"ValueListObject.get_Presentation\n";
}

}  // namespace

TEST_CASE_FIXTURE(CallsFixture, "a known property") {
    content(L"S!A1", L"Anlage|Pumpe", L"Description");
    CHECK(calls() == L"\n" + object_read(L"PlainObject", L"Pumpe") +
                         column_read({.property = 1, .role = L"IHostKitObject"}));
    content(L"S!A1", L"Anlage|Pumpe#Build.Material", L"DisplayValue");
    CHECK(calls() == L"\n" + object_read(L"AttributeObject", L"Build.Material") +
                         column_read({.property = 30, .role = L"IHostKitAttribute", .entries = 2}));
}

TEST_CASE_FIXTURE(CallsFixture, "a value in another unit") {
    content(L"S!A1", L"Anlage|Pumpe#Process.Pressure", L"Value", Variant(L""), L"mbar");
    CHECK(calls() == L"\n" + object_read(L"AttributeObject", L"Process.Pressure") +
                         column_read({.property = 32,
                                      .role = L"IHostKitAttribute",
                                      .unit = LR"(AttributeObject.get_SystemType "Process.Pressure"
AttributeObject.get_Unit "Process.Pressure"
UnitObject.get_Group
UnitGroupObject.get_Count
UnitGroupObject.get_Item 1
UnitObject.get_Label
UnitGroupObject.get_Item 2
UnitObject.get_Label
UnitGroupObject.get_Item 3
UnitObject.get_Label
UnitGroupObject.get_Item 4
UnitObject.get_Label
UnitObject.get_UnitText
ColumnDefinition.put_UnitText "PRESSURE.MBAR"
)"}));
}

// The current language is read although another one is asked for.
TEST_CASE_FIXTURE(CallsFixture, "a text in one language") {
    content(L"S!A1", L"Anlage|Pumpe", L"GetInternationalDescription", Variant(2L));
    CHECK(calls() == L"\n" + object_read(L"PlainObject", L"Pumpe") +
                         LR"(ProjectObject.get_Languages
LanguageList.get_Count
LanguageList.get_Item 2
)" + column_read({.property = 50, .role = L"IHostKitObject", .parameter = L"2", .lcid = L"1033"}));
}

TEST_CASE_FIXTURE(CallsFixture, "an expression") {
    content(L"S!A1", L"Anlage|Pumpe", L"Name & Description");
    CHECK(calls() == L"\n" + object_read(L"PlainObject", L"Pumpe") +
                         LR"(LanguageObject.get_LCID
new KelosScript.Engine
ScriptEngine.put_ReportErrors False
ScriptEngine.AddModule "Glob", ITesseraPropByName, True
ScriptEngine.Evaluate "CurrentObject.Name & Description", "Glob"
PlainObject.get_Name "Pumpe"
)");
}

TEST_CASE_FIXTURE(CallsFixture, "a query document") {
    const std::wstring column =
        LR"(ColumnDefinition.get_Shown
ColumnDefinition.get_PropertyConstant
ColumnDefinition.get_ParameterText
ColumnDefinition.get_UnitText
ResultTable.get_RowCount
)";
    const auto cell = [](const wchar_t* place, const std::wstring& type, const wchar_t* name) {
        return std::wstring(L"ResultTable.get_Cell ") + place + L"\nCellObject.get_Object\n" +
               object_read(type, name);
    };
    const Column name{.property = 2, .role = L"IHostKitObject"};
    const Column value{.property = 32,
                       .role = L"IHostKitAttribute",
                       .unit = L"ColumnDefinition.put_UnitText \"PRESSURE.MBAR\"\n"};
    content(L"S!A1", L"Liste", L"Name");
    CHECK(calls() ==
          LR"(
DocumentObject.get_SystemType "Liste"
DocumentObject.get_TypeText
DocumentObject.get_SubTypeText
DocumentObject.get_QueryContainer
QueryContainer.get_TopQuery
QueryObject.get_ResultTable
ResultTable.get_Columns
QueryObject.Run
ResultTable.get_ColumnCount
ColumnList.get_Item 1
)" + column + cell(L"1, 1", L"PlainObject", L"Pumpe") +
              column_read(name) + cell(L"2, 1", L"PlainObject", L"Anlage") + column_read(name) +
              L"ColumnList.get_Item 2\nColumnDefinition.get_Shown\nColumnList.get_Item 3\n" +
              column + cell(L"1, 3", L"AttributeObject", L"Process.Pressure") + column_read(value) +
              L"ResultTable.get_Cell 2, 3\n");
}
