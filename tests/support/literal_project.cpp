#include "support/literal_project.h"

#include "automation/conversion.h"

namespace test {
namespace {

// Two lines, so that a test can tell on which line its own text stands.
constexpr char head[] =
    "<kelos-project-file version='1'>"
    "<languages current='Deutsch'><language name='Deutsch' lcid='1031'/>"
    "<language name='English' lcid='1033'/><language name='Polski' lcid='1045'/></languages>"
    "<users current='anna'><user login='anna' rights='1'/><user login='gast' rights='0'/></users>"
    "<system-types><system-type name='project' number='1'/>"
    "<system-type name='area' number='100'/><system-type name='pump' number='120'/></system-types>"
    "<units><unit-group name='PRESSURE'><unit name='PA' label='Pa'/>"
    "<unit name='BAR' label='bar' factor='100000'/><unit name='KPA' label='kPa' factor='1000'/>"
    "<unit name='MPA' label='MPa' factor='1000000'/>"
    "</unit-group><unit-group name='TEMPERATURE'><unit name='K' label='K'/>"
    "<unit name='C' label='&#xB0;C' offset='273.15'/>"
    "<unit name='F' label='&#xB0;F' factor='5/9' offset='2298.35/9'/></unit-group></units>"
    "<value-lists><value-list name='State' presentation='option-buttons' type='long'>"
    "<item value='1' text='an'><translation language='English' text='on'/></item>"
    "<item value='2' text='aus'><translation language='English' text='off'/></item>"
    "<item value='3' text='defekt'/></value-list></value-lists>\n\n";

}  // namespace

TemporaryFile::TemporaryFile(const std::string& bytes) {
    wchar_t folder[MAX_PATH];
    wchar_t name[MAX_PATH];
    REQUIRE(GetTempPathW(MAX_PATH, folder) != 0);
    REQUIRE(GetTempFileNameW(folder, L"kit", 0, name) != 0);
    path_ = name;
    const HANDLE file =
        CreateFileW(name, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    REQUIRE(file != INVALID_HANDLE_VALUE);
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
    REQUIRE(written == bytes.size());
}

TemporaryFile::~TemporaryFile() {
    DeleteFileW(path_.c_str());
}

std::string project_text(const std::string& body, const std::string& queries) {
    return head + body + (queries.empty() ? "" : "<queries>" + queries + "</queries>") +
           "\n</kelos-project-file>";
}

LiteralProject::LiteralProject(const std::string& body, const std::string& queries)
    : kit(create<IHostKit>(L"Kelos.HostKit")) {
    const TemporaryFile file(project_text(body, queries));
    workset = get(kit, &IHostKit::Open, Bstr(file.path()).get());
}

ComPtr<IKelosObject> LiteralProject::object(const wchar_t* path) const {
    return get(kit, &IHostKit::get_Object, Bstr(path).get());
}

ComPtr<IKelosQuery> LiteralProject::query(const wchar_t* name) const {
    return get(kit, &IHostKit::get_Query, Bstr(name).get());
}

Evaluation evaluate(const ComPtr<IKelosObject>& object, long constant, const wchar_t* parameter,
                    long lcid, const wchar_t* unit) {
    const auto column = create<IKelosQColumnDef>(L"KelosQuery.QColumnDef");
    call(column, &IKelosQColumnDef::InitNew, 0L);
    call(column, &IKelosQColumnDef::InitEvaluator, 0L);
    call(column, &IKelosQColumnDef::put_PropertyConstant, constant);
    call(column, &IKelosQColumnDef::put_ParameterText, Bstr(parameter).get());
    call(column, &IKelosQColumnDef::put_LCID, lcid);
    call(column, &IKelosQColumnDef::put_UnitText, Bstr(unit).get());
    const auto evaluator = get(column, &IKelosQColumnDef::get_Evaluator);
    const Variant holder(object.get());
    const auto list = get(evaluator, &IKelosValueEvaluator::Evaluate, static_cast<VARIANT>(holder));
    Evaluation result;
    result.lcid = get(column, &IKelosQColumnDef::get_LCID);
    result.unit = get(column, &IKelosQColumnDef::get_UnitText).str();
    if (!list) return result;
    result.entries.clear();
    const long count = get(list, &IKelosValueList::get_Count);
    for (long i = 1; i <= count; ++i) {
        const auto entry = get(list, &IKelosValueList::get_Item, i);
        if (i > 1) result.entries += L", ";
        result.entries += automation::to_text(get(entry, &IKelosValueEntry::get_Value)).view();
        result.entries += L"=";
        result.entries +=
            automation::to_text(get(entry, &IKelosValueEntry::get_DisplayValue)).view();
    }
    result.presentation = get(list, &IKelosValueList::get_Presentation);
    return result;
}

}  // namespace test
