#include "cli/project.h"

#include "automation/conversion.h"
#include "automation/dispatch.h"
#include "automation/error.h"
#include "automation/text.h"
#include "cli/console.h"
#include "cli/failure.h"
#include "cli/nearest.h"
#include "cli/spooled_input.h"
#include "cli/standard_path.h"

namespace cli {

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;
using automation::Variant;

namespace {

// So many names fit into a line that says which there are.
constexpr std::size_t names_in_a_line = 8;

std::wstring quoted(std::wstring_view text) {
    return std::wstring(L"\"").append(text).append(L"\"");
}

using Names = std::vector<std::wstring>;

std::wstring listed(const Names& names) {
    if (names.empty()) return L"it has none";
    std::wstring text = L"it has ";
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i > 0) text += L", ";
        if (i == names_in_a_line)
            return text + L"and " + std::to_wstring(names.size() - i) + L" more";
        text += quoted(names[i]);
    }
    return text;
}

// "it has no query "Pumpn"; it has "Pumps"; did you mean "Pumps"?"
[[noreturn]] void fail_unknown(const std::wstring& whose, const wchar_t* what,
                               const std::wstring& name, const Names& known) {
    throw Failure(whose + L" has no " + what + L" " + quoted(name) + L"; " + listed(known) +
                  suggestion(name, known));
}

std::wstring name_of(const ComPtr<IKelosObject>& object) {
    return get(object.as<IHostKitDocument>(), &IHostKitDocument::get_Name).str();
}

// What the system said to the kit, if that is why: a file that cannot be opened, not its content.
std::wstring system_reason(HRESULT code) {
    if (HRESULT_FACILITY(code) != FACILITY_WIN32) return {};
    const auto error = static_cast<DWORD>(HRESULT_CODE(code));
    return error == ERROR_INVALID_DATA ? L"" : L": " + reason_of(error);
}

// What the kit says names the file and, where it can, the line.
ComPtr<IKelosWorkset> open(const ComPtr<IHostKit>& kit, const std::wstring& path) {
    try {
        return get(kit, &IHostKit::Open, Bstr(path).get());
    } catch (const automation::Error&) {
        const automation::ErrorReport error = automation::current_error();
        throw Failure(error.description.str() + system_reason(error.code));
    }
}

ComPtr<IKelosWorkset> open_standard(const ComPtr<IHostKit>& kit) {
    const SpooledInput spooled;
    try {
        return open(kit, spooled.path());
    } catch (const Failure& failure) {
        throw Failure(spooled.renamed(failure.text()));
    }
}

ComPtr<IKelosLanguages> languages_of(const ComPtr<IKelosWorkset>& workset) {
    return get(get(workset, &IKelosWorkset::get_CurrentProject), &IKelosProject::get_Languages);
}

// By its name in any case, or by its locale identifier.
bool is_called(const ComPtr<IKelosLanguage>& language, const std::wstring& name) {
    return automation::equal_ignoring_case(get(language, &IKelosLanguage::get_Name).view(), name) ||
           std::to_wstring(get(language, &IKelosLanguage::get_LCID)) == name;
}

}  // namespace

ComPtr<IHostKitService> recording_service(bool with_windows) {
    const auto service = automation::create_object<IHostKitService>(L"Kelos.Service");
    call(service, &IHostKitService::Clear);
    call(service, &IHostKitService::put_Mode, hkmRecording);
    call(service, &IHostKitService::put_Language, hklEnglish);
    call(service, &IHostKitService::put_TraceLimit, 0L);
    call(service, &IHostKitService::put_OffersApplication,
         with_windows ? VARIANT_TRUE : VARIANT_FALSE);
    return service;
}

ComPtr<IKelosMappingTable> mapping_table(const ChosenDocument& document) {
    const auto objects = get(document.document, &IKelosDocument::get_Objects);
    const long count = get(objects, &IKelosObjects::get_Count);
    for (long i = 1; i <= count; ++i)
        if (const auto table =
                get(objects, &IKelosObjects::get_Item, i).try_as<IKelosMappingTable>())
            return table;
    return {};
}

Bstr stored_script(const ChosenDocument& document) {
    const auto attributes = get(document.document, &IKelosObject::get_Attributes);
    const Variant name(L"Vex");
    const auto script = get(attributes, &IKelosAttributes::get_Item, static_cast<VARIANT>(name));
    if (!script) return {};
    return automation::to_text(get(script, &IKelosAttribute::get_Value, 1L));
}

Project::Project(const std::wstring& path, const Arguments& arguments)
    : name_(quoted_input(path)),
      service_(recording_service(arguments.window)),
      kit_(automation::create_object<IHostKit>(L"Kelos.HostKit")),
      workset_(is_standard(path) ? open_standard(kit_) : open(kit_, path)) {
    if (arguments.user) log_in(*arguments.user);
    if (arguments.language) choose_language(*arguments.language);
}

// The projects of a file share its languages. What the host itself says follows, too.
void Project::choose_language(const std::wstring& name) {
    const auto languages = languages_of(workset_);
    const long count = get(languages, &IKelosLanguages::get_Count);
    long number = 1;
    while (number <= count && !is_called(get(languages, &IKelosLanguages::get_Item, number), name))
        ++number;
    if (number > count) fail_unknown(name_, L"language", name, language_names());
    const auto projects = get(workset_.as<IHostKitWorkset>(), &IHostKitWorkset::get_Projects);
    for (long i = get(projects, &IKelosObjects::get_Count); i >= 1; --i)
        call(get(projects, &IKelosObjects::get_Item, i).as<IHostKitProject>(),
             &IHostKitProject::put_CurrentLanguageNumber, number);
    const auto chosen = get(languages, &IKelosLanguages::get_Item, number);
    const bool is_german = PRIMARYLANGID(get(chosen, &IKelosLanguage::get_LCID)) == LANG_GERMAN;
    call(service_, &IHostKitService::put_Language, is_german ? hklGerman : hklEnglish);
}

void Project::log_in(const std::wstring& login) {
    try {
        call(workset_.as<IHostKitWorkset>(), &IHostKitWorkset::put_CurrentLogin, Bstr(login).get());
    } catch (const automation::Error&) {
        throw Failure(name_ + L" has no user " + quoted(login) +
                      L"; its element \"users\" lists them");
    }
}

ChosenDocument Project::document(const std::optional<std::wstring>& name) const {
    if (!name) return first_mapping_document();
    const auto found = get(kit_, &IHostKit::get_Document, Bstr(*name).get());
    if (!found) fail_unknown(name_, L"document", *name, document_names());
    return {found, name_of(found)};
}

ChosenDocument Project::first_mapping_document() const {
    const auto functions = automation::create_object<ITesseraGFunctions>(L"Tessera.GFunctions");
    const auto documents = get(kit_, &IHostKit::get_Documents);
    const long count = get(documents, &IKelosObjects::get_Count);
    for (long i = 1; i <= count; ++i) {
        const auto document = get(documents, &IKelosObjects::get_Item, i).as<IKelosDocument>();
        if (get(functions, &ITesseraGFunctions::ISMappingTable, document.get()) != VARIANT_FALSE)
            return {document, name_of(document)};
    }
    throw Failure(name_ + L" has no document with a mapping table; name one with \"--document\": " +
                  listed(document_names()));
}

ComPtr<IKelosQuery> Project::query(const std::wstring& name) const {
    auto found = get(kit_, &IHostKit::get_Query, Bstr(name).get());
    if (!found) fail_unknown(name_, L"query", name, query_names());
    return found;
}

Names Project::document_names() const {
    const auto documents = get(kit_, &IHostKit::get_Documents);
    Names names;
    for (long i = 1, count = get(documents, &IKelosObjects::get_Count); i <= count; ++i)
        names.push_back(name_of(get(documents, &IKelosObjects::get_Item, i)));
    return names;
}

Names Project::query_names() const {
    Names names;
    for (long i = 1, count = get(kit_, &IHostKit::get_QueryCount); i <= count; ++i)
        names.push_back(get(kit_, &IHostKit::get_QueryName, i).str());
    return names;
}

Names Project::language_names() const {
    const auto languages = languages_of(workset_);
    Names names;
    for (long i = 1, count = get(languages, &IKelosLanguages::get_Count); i <= count; ++i)
        names.push_back(
            get(get(languages, &IKelosLanguages::get_Item, i), &IKelosLanguage::get_Name).str());
    return names;
}

std::wstring Project::language() const {
    const auto project = get(workset_, &IKelosWorkset::get_CurrentProject);
    return get(get(project, &IKelosProject::get_CurrentLanguage), &IKelosLanguage::get_Name).str();
}

std::wstring Project::user() const {
    return get(workset_.as<IHostKitWorkset>(), &IHostKitWorkset::get_CurrentLogin).str();
}

}  // namespace cli
