// tessera list: what a project file has that the other commands can be given by name.

#include "automation/bstr.h"
#include "automation/dispatch.h"
#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/project.h"
#include "cli/records/json_fields.h"
#include "cli/standard_path.h"
#include "cli/text_table.h"
#include "tessera.h"
#include "text/trim.h"

namespace cli {

using automation::as_u16;
using automation::Bstr;
using automation::ComPtr;
using automation::get;

namespace {

struct ListedDocument {
    std::u16string name;
    std::u16string path;
    std::u16string description;
    std::optional<long> mapping_rows;
    std::u16string_view script;
};

std::u16string u16(const Bstr& text) {
    return std::u16string(text.u16());
}

// What an export runs: the document's own script, or the default one for its mapping table. The
// component decides it: a stored script that is nothing but its frame gives way to the default one,
// and a user who may not change the place of a script gets none.
std::u16string_view script_of(const ComPtr<ITesseraVexScript>& runner,
                              const ChosenDocument& document) {
    const Bstr stored = stored_script(document);
    const Bstr script =
        get(runner, &ITesseraVexScript::GetVexScript, document.document.get(), VARIANT_FALSE);
    if (tessera::trim_blanks(script.view()).empty()) return {};
    return script.view() == stored.view() ? u"own" : u"default";
}

ListedDocument listed(const ComPtr<ITesseraVexScript>& runner, const ComPtr<IKelosObject>& object) {
    const auto details = object.as<IHostKitDocument>();
    const ChosenDocument document{object.as<IKelosDocument>(), {}};
    ListedDocument result;
    result.name = u16(get(details, &IHostKitDocument::get_Name));
    result.path = u16(get(details, &IHostKitDocument::get_FullName));
    result.description = u16(get(details, &IHostKitDocument::get_Description));
    if (const auto table = mapping_table(document))
        result.mapping_rows = get(table, &IKelosMappingTable::GetCount);
    result.script = script_of(runner, document);
    return result;
}

std::vector<ListedDocument> documents_of(const Project& project) {
    const auto objects = get(project.kit(), &IHostKit::get_Documents);
    const auto runner = automation::create_object<ITesseraVexScript>(L"Tessera.VexScript");
    std::vector<ListedDocument> documents;
    const long count = get(objects, &IKelosObjects::get_Count);
    for (long i = 1; i <= count; ++i)
        documents.push_back(listed(runner, get(objects, &IKelosObjects::get_Item, i)));
    return documents;
}

TextTable table_of(const std::vector<ListedDocument>& documents) {
    TextTable table{{u"Document", u"Path", u"Rows", u"Script", u"Description"}, {}};
    for (const ListedDocument& document : documents)
        table.rows.push_back({document.name, document.path,
                              document.mapping_rows
                                  ? std::u16string(as_u16(std::to_wstring(*document.mapping_rows)))
                                  : u"",
                              std::u16string(document.script), document.description});
    return table;
}

TextTable table_of(const char16_t* heading, const std::vector<std::wstring>& names) {
    TextTable table{{heading}, {}};
    for (const std::wstring& name : names)
        table.rows.push_back({std::u16string(as_u16(name))});
    return table;
}

Json names_as_json(const std::vector<std::wstring>& names) {
    Json list = Json::array();
    for (const std::wstring& name : names)
        list.push_back({{"name", json_text(as_u16(name))}});
    return list;
}

Json as_json(const ListedDocument& document) {
    Json fields{{"name", json_text(document.name)},
                {"path", json_text(document.path)},
                {"description", json_text(document.description)},
                {"mappingRows", nullptr},
                {"script", nullptr}};
    if (document.mapping_rows) fields["mappingRows"] = *document.mapping_rows;
    if (!document.script.empty()) fields["script"] = json_text(document.script);
    return fields;
}

std::u16string report_as_json(const Project& project, const Arguments& arguments) {
    Json documents = Json::array();
    for (const ListedDocument& document : documents_of(project))
        documents.push_back(as_json(document));
    return report_text(Json{{"project", json_text(as_u16(input_name(arguments.input)))},
                            {"documents", std::move(documents)},
                            {"queries", names_as_json(project.query_names())},
                            {"languages", names_as_json(project.language_names())},
                            {"language", json_text(as_u16(project.language()))},
                            {"user", json_text(as_u16(project.user()))}});
}

void write_tables(const Project& project, ConsoleStream& out) {
    const std::size_t width = out.width();
    const auto write = [&](const TextTable& table) {
        if (!table.rows.empty()) out.write(format_table(table, width) + u"\n");
    };
    write(table_of(documents_of(project)));
    write(table_of(u"Query", project.query_names()));
    write(table_of(u"Language", project.language_names()));
    out.write_line(L"language: " + project.language() + L", user: " + project.user());
}

}  // namespace

int run_list(const Arguments& arguments, Console& console) {
    const Project project(arguments.input, arguments);
    if (arguments.json)
        console.out.write(report_as_json(project, arguments));
    else
        write_tables(project, console.out);
    return exit_success;
}

}  // namespace cli
