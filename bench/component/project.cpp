#include "bench/component/project.h"

#include <sstream>
#include <stdexcept>

namespace bench {
namespace {

constexpr char head[] =
    "<kelos-project-file version='1'>"
    "<languages current='Deutsch'><language name='Deutsch' lcid='1031'/></languages>"
    "<users current='anna'><user login='anna' rights='1'/></users>"
    "<system-types><system-type name='project' number='1'/>"
    "<system-type name='pump' number='120'/><system-type name='table' number='300'/></system-types>"
    "<units><unit-group name='FLOW'><unit name='M3H' label='m3/h'/></unit-group></units>"
    "<attribute-types><attribute-type name='Process.Flow' type='double' unit='FLOW.M3H'/>"
    "</attribute-types>"
    "<project name='Anlage' uid='PRJ-1' type='project' current='yes' language='Deutsch'>"
    "<object type='pump' name='Pumpe' uid='P1' label='P-101' description='Kreiselpumpe'>"
    "<attribute name='Process.Flow' value='12.5'/></object>";

std::string mapping(int rows) {
    if (rows == 0) return {};
    return "<object type='table' name='Zuordnung'><mapping><rows sheet='Blatt'><generate rows='" +
           std::to_string(rows / 2) +
           "'><row cell='A{row}' object='Pumpe' property='Description'/>"
           "<row cell='B{row}' value='Zeile {row}'/></generate></rows></mapping></object>";
}

std::string query(const char* name, int columns, int rows) {
    std::string text = std::string("<query name='") + name + "'>";
    for (int i = 1; i <= columns; ++i)
        text += "<column name='Spalte " + std::to_string(i) + "' property='Description'/>";
    for (int i = 0; i < rows; ++i)
        text += "<row object='Pumpe'/>";
    return text + "</query>";
}

}  // namespace

ScratchFile::ScratchFile(const std::string& bytes) {
    wchar_t folder[MAX_PATH];
    wchar_t name[MAX_PATH];
    if (!GetTempPathW(MAX_PATH, folder) || !GetTempFileNameW(folder, L"bch", 0, name))
        throw std::runtime_error("there is no temporary folder");
    path_ = name;
    const HANDLE file =
        CreateFileW(name, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
    if (written != bytes.size()) throw std::runtime_error("the project file was not written");
}

ScratchFile::~ScratchFile() {
    DeleteFileW(path_.c_str());
}

std::string project_text(int mapping_rows, int query_rows) {
    return head + mapping(mapping_rows) +
           "<document name='Liste' type-text='L' sub-type-text='2' owner='Pumpe'>"
           "<shows object='Zuordnung'/></document></project><queries>" +
           query("Q10", 10, query_rows) + query("Q2", 2, query_rows) +
           "</queries></kelos-project-file>";
}

Project::Project(int mapping_rows, int query_rows) : kit(create<IHostKit>(L"Kelos.HostKit")) {
    const ScratchFile file(project_text(mapping_rows, query_rows));
    workset = get(kit, &IHostKit::Open, Bstr(file.path()).get());
}

ComPtr<IKelosObject> Project::pump() const {
    return get(kit, &IHostKit::get_Object, Bstr(L"Pumpe").get());
}

ComPtr<IKelosDocument> Project::list() const {
    return get(kit, &IHostKit::get_Document, Bstr(L"Liste").get());
}

ComPtr<IKelosQuery> Project::query(const wchar_t* name) const {
    return get(kit, &IHostKit::get_Query, Bstr(name).get());
}

ComPtr<IKelosMappingTable> Project::mapping_table() const {
    return get(kit, &IHostKit::get_Object, Bstr(L"Zuordnung").get()).as<IKelosMappingTable>();
}

std::wstring Project::calls_of(const std::function<void()>& work) const {
    call(kit, &IHostKit::put_LogsCalls, VARIANT_TRUE);
    work();
    std::wistringstream lines(get(kit, &IHostKit::TakeCalls).str());
    call(kit, &IHostKit::put_LogsCalls, VARIANT_FALSE);
    std::wstring calls;
    for (std::wstring line; std::getline(lines, line);)
        if (!line.starts_with(L"Service.")) calls += line + L"\n";
    return calls;
}

ComPtr<IXMLDOMDocument> execute(const Project& project, const std::wstring& script) {
    const auto runner = create<ITesseraVexScript>(L"Tessera.VexScript");
    call(runner, &ITesseraVexScript::putref_WorkSet, project.workset.get());
    call(runner, &ITesseraVexScript::putref_Document, project.list().get());
    const Bstr text(script.empty() ? get(runner, &ITesseraVexScript::GetVexScript,
                                         project.list().get(), VARIANT_FALSE)
                                         .str()
                                   : script);
    auto document = get(runner, &ITesseraVexScript::Execute, text.get());
    if (!document) throw std::runtime_error("the script gave no content document");
    return document;
}

}  // namespace bench
