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

}  // namespace

TEST_CASE_FIXTURE(CallsFixture, "a property of an object") {
    content(L"S!A1", L"Anlage|Pumpe", L"Description");
    CHECK(calls() ==
          LR"(
PlainObject.get_SystemType "Pumpe"
PlainObject.get_SystemUID "Pumpe"
PlainObject.get_SystemType "Pumpe"
PlainObject.get_Project "Pumpe"
PlainObject.get_PathFullName "Pumpe", IHostKitProject
PlainObject.get_WorkSet "Pumpe"
WorksetObject.get_CurrentProject
ProjectObject.get_CurrentLanguage
LanguageObject.get_LCID
ColumnDefinition.put_PropertyConstant 1
ColumnDefinition.put_ParameterText ""
ColumnDefinition.put_UnitText ""
ColumnDefinition.put_LCID 1031
ColumnDefinition.get_UnitText
ColumnDefinition.get_LCID
ColumnDefinition.get_Kind
ColumnDefinition.get_Evaluator
Evaluator.Evaluate IHostKitObject
ValueListObject.get_Count
ValueListObject.get_Item 1
ColumnDefinition.get_LCID
ValueEntry.get_DisplayValue
ValueEntry.get_Value
ValueListObject.get_Presentation
)");
}

TEST_CASE_FIXTURE(CallsFixture, "a value in another unit") {
    content(L"S!A1", L"Anlage|Pumpe#Process.Pressure", L"Value", Variant(L""), L"mbar");
    CHECK(calls() ==
          LR"(
AttributeObject.get_SystemType "Process.Pressure"
AttributeObject.get_SystemUID "Process.Pressure"
AttributeObject.get_SystemType "Process.Pressure"
AttributeObject.get_Project "Process.Pressure"
AttributeObject.get_PathFullName "Process.Pressure", IHostKitProject
AttributeObject.get_WorkSet "Process.Pressure"
WorksetObject.get_CurrentProject
ProjectObject.get_CurrentLanguage
LanguageObject.get_LCID
ColumnDefinition.put_PropertyConstant 32
ColumnDefinition.put_ParameterText ""
ColumnDefinition.put_UnitText ""
ColumnDefinition.put_LCID 1031
AttributeObject.get_SystemType "Process.Pressure"
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
ColumnDefinition.get_UnitText
ColumnDefinition.get_LCID
ColumnDefinition.get_Kind
ColumnDefinition.get_Evaluator
Evaluator.Evaluate IHostKitAttribute
ValueListObject.get_Count
ValueListObject.get_Item 1
ColumnDefinition.get_LCID
ValueEntry.get_DisplayValue
ValueEntry.get_Value
ValueListObject.get_Presentation
)");
}

TEST_CASE_FIXTURE(CallsFixture, "a value of a list") {
    content(L"S!A1", L"Anlage|Pumpe#Build.Material", L"DisplayValue");
    CHECK(calls() ==
          LR"(
AttributeObject.get_SystemType "Build.Material"
AttributeObject.get_SystemUID "Build.Material"
AttributeObject.get_SystemType "Build.Material"
AttributeObject.get_Project "Build.Material"
AttributeObject.get_PathFullName "Build.Material", IHostKitProject
AttributeObject.get_WorkSet "Build.Material"
WorksetObject.get_CurrentProject
ProjectObject.get_CurrentLanguage
LanguageObject.get_LCID
ColumnDefinition.put_PropertyConstant 30
ColumnDefinition.put_ParameterText ""
ColumnDefinition.put_UnitText ""
ColumnDefinition.put_LCID 1031
ColumnDefinition.get_UnitText
ColumnDefinition.get_LCID
ColumnDefinition.get_Kind
ColumnDefinition.get_Evaluator
Evaluator.Evaluate IHostKitAttribute
ValueListObject.get_Count
ValueListObject.get_Item 1
ColumnDefinition.get_LCID
ValueEntry.get_DisplayValue
ValueEntry.get_Value
ValueListObject.get_Item 2
ColumnDefinition.get_LCID
ValueEntry.get_DisplayValue
ValueEntry.get_Value
ValueListObject.get_Presentation
)");
}

TEST_CASE_FIXTURE(CallsFixture, "a text in one language") {
    content(L"S!A1", L"Anlage|Pumpe", L"GetInternationalDescription", Variant(2L));
    CHECK(calls() ==
          LR"(
PlainObject.get_SystemType "Pumpe"
PlainObject.get_SystemUID "Pumpe"
PlainObject.get_SystemType "Pumpe"
PlainObject.get_Project "Pumpe"
PlainObject.get_PathFullName "Pumpe", IHostKitProject
PlainObject.get_WorkSet "Pumpe"
WorksetObject.get_CurrentProject
ProjectObject.get_CurrentLanguage
ProjectObject.get_Languages
LanguageList.get_Count
LanguageList.get_Item 2
LanguageObject.get_LCID
ColumnDefinition.put_PropertyConstant 50
ColumnDefinition.put_ParameterText "2"
ColumnDefinition.put_UnitText ""
ColumnDefinition.put_LCID 1033
ColumnDefinition.get_UnitText
ColumnDefinition.get_LCID
ColumnDefinition.get_Kind
ColumnDefinition.get_Evaluator
Evaluator.Evaluate IHostKitObject
ValueListObject.get_Count
ValueListObject.get_Item 1
ColumnDefinition.get_LCID
ValueEntry.get_DisplayValue
ValueEntry.get_Value
ValueListObject.get_Presentation
)");
}

TEST_CASE_FIXTURE(CallsFixture, "an expression") {
    content(L"S!A1", L"Anlage|Pumpe", L"Name & Description");
    CHECK(calls() ==
          LR"(
PlainObject.get_SystemType "Pumpe"
PlainObject.get_SystemUID "Pumpe"
PlainObject.get_SystemType "Pumpe"
PlainObject.get_Project "Pumpe"
PlainObject.get_PathFullName "Pumpe", IHostKitProject
PlainObject.get_WorkSet "Pumpe"
WorksetObject.get_CurrentProject
ProjectObject.get_CurrentLanguage
LanguageObject.get_LCID
new KelosScript.Engine
ScriptEngine.put_ReportErrors False
ScriptEngine.AddModule "Glob", ITesseraPropByName, True
ScriptEngine.Evaluate "CurrentObject.Name & Description", "Glob"
PlainObject.get_Name "Pumpe"
)");
}

TEST_CASE_FIXTURE(CallsFixture, "a query document") {
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
ColumnDefinition.get_Shown
ColumnDefinition.get_PropertyConstant
ColumnDefinition.get_ParameterText
ColumnDefinition.get_UnitText
ResultTable.get_RowCount
ResultTable.get_Cell 1, 1
CellObject.get_Object
PlainObject.get_SystemType "Pumpe"
PlainObject.get_SystemUID "Pumpe"
PlainObject.get_SystemType "Pumpe"
PlainObject.get_Project "Pumpe"
PlainObject.get_PathFullName "Pumpe", IHostKitProject
PlainObject.get_WorkSet "Pumpe"
WorksetObject.get_CurrentProject
ProjectObject.get_CurrentLanguage
LanguageObject.get_LCID
ColumnDefinition.put_PropertyConstant 2
ColumnDefinition.put_ParameterText ""
ColumnDefinition.put_UnitText ""
ColumnDefinition.put_LCID 1031
ColumnDefinition.get_UnitText
ColumnDefinition.get_LCID
ColumnDefinition.get_Kind
ColumnDefinition.get_Evaluator
Evaluator.Evaluate IHostKitObject
ValueListObject.get_Count
ValueListObject.get_Item 1
ColumnDefinition.get_LCID
ValueEntry.get_DisplayValue
ValueEntry.get_Value
ValueListObject.get_Presentation
ResultTable.get_Cell 2, 1
CellObject.get_Object
PlainObject.get_SystemType "Anlage"
PlainObject.get_SystemUID "Anlage"
PlainObject.get_SystemType "Anlage"
PlainObject.get_Project "Anlage"
PlainObject.get_PathFullName "Anlage", IHostKitProject
PlainObject.get_WorkSet "Anlage"
WorksetObject.get_CurrentProject
ProjectObject.get_CurrentLanguage
LanguageObject.get_LCID
ColumnDefinition.put_PropertyConstant 2
ColumnDefinition.put_ParameterText ""
ColumnDefinition.put_UnitText ""
ColumnDefinition.put_LCID 1031
ColumnDefinition.get_UnitText
ColumnDefinition.get_LCID
ColumnDefinition.get_Kind
ColumnDefinition.get_Evaluator
Evaluator.Evaluate IHostKitObject
ValueListObject.get_Count
ValueListObject.get_Item 1
ColumnDefinition.get_LCID
ValueEntry.get_DisplayValue
ValueEntry.get_Value
ValueListObject.get_Presentation
ColumnList.get_Item 2
ColumnDefinition.get_Shown
ColumnList.get_Item 3
ColumnDefinition.get_Shown
ColumnDefinition.get_PropertyConstant
ColumnDefinition.get_ParameterText
ColumnDefinition.get_UnitText
ResultTable.get_RowCount
ResultTable.get_Cell 1, 3
CellObject.get_Object
AttributeObject.get_SystemType "Process.Pressure"
AttributeObject.get_SystemUID "Process.Pressure"
AttributeObject.get_SystemType "Process.Pressure"
AttributeObject.get_Project "Process.Pressure"
AttributeObject.get_PathFullName "Process.Pressure", IHostKitProject
AttributeObject.get_WorkSet "Process.Pressure"
WorksetObject.get_CurrentProject
ProjectObject.get_CurrentLanguage
LanguageObject.get_LCID
ColumnDefinition.put_PropertyConstant 32
ColumnDefinition.put_ParameterText ""
ColumnDefinition.put_UnitText ""
ColumnDefinition.put_LCID 1031
ColumnDefinition.put_UnitText "PRESSURE.MBAR"
ColumnDefinition.get_UnitText
ColumnDefinition.get_LCID
ColumnDefinition.get_Kind
ColumnDefinition.get_Evaluator
Evaluator.Evaluate IHostKitAttribute
ValueListObject.get_Count
ValueListObject.get_Item 1
ColumnDefinition.get_LCID
ValueEntry.get_DisplayValue
ValueEntry.get_Value
ValueListObject.get_Presentation
ResultTable.get_Cell 2, 3
)");
}
