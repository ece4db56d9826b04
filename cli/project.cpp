#include "cli/project.h"

#include "automation/conversion.h"
#include "automation/dispatch.h"
#include "automation/error.h"
#include "cli/failure.h"

namespace cli {

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;
using automation::Variant;

namespace {

// So many names fit into a line that says which there are.
constexpr int names_in_a_line = 8;

std::wstring quoted(std::wstring_view text) {
    return std::wstring(L"\"").append(text).append(L"\"");
}

template <class NameOf>
std::wstring listed(long count, NameOf&& name_of) {
    if (count == 0) return L"it has none";
    std::wstring text = L"it has ";
    for (long i = 1; i <= count; ++i) {
        if (i > 1) text += L", ";
        if (i > names_in_a_line) return text + L"and " + std::to_wstring(count - i + 1) + L" more";
        text += quoted(name_of(i));
    }
    return text;
}

std::wstring name_of(const ComPtr<IKelosObject>& object) {
    return get(object.as<IHostKitDocument>(), &IHostKitDocument::get_Name).str();
}

// What the kit says names the file and, where it can, the line.
ComPtr<IKelosWorkset> open(const ComPtr<IHostKit>& kit, const std::wstring& path) {
    try {
        return get(kit, &IHostKit::Open, Bstr(path).get());
    } catch (const automation::Error&) {
        throw Failure(automation::current_error().description.str());
    }
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

Project::Project(const std::wstring& path, bool with_windows)
    : path_(path),
      service_(recording_service(with_windows)),
      kit_(automation::create_object<IHostKit>(L"Kelos.HostKit")),
      workset_(open(kit_, path)) {}

ChosenDocument Project::document(const std::optional<std::wstring>& name) const {
    if (!name) return first_mapping_document();
    const auto found = get(kit_, &IHostKit::get_Document, Bstr(*name).get());
    if (!found)
        throw Failure(quoted(path_) + L" has no document " + quoted(*name) + L"; " +
                      document_names());
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
    throw Failure(quoted(path_) +
                  L" has no document with a mapping table; name one with "
                  L"\"--document\": " +
                  document_names());
}

ComPtr<IKelosQuery> Project::query(const std::wstring& name) const {
    auto found = get(kit_, &IHostKit::get_Query, Bstr(name).get());
    if (!found)
        throw Failure(quoted(path_) + L" has no query " + quoted(name) + L"; " + query_names());
    return found;
}

std::wstring Project::document_names() const {
    const auto documents = get(kit_, &IHostKit::get_Documents);
    return listed(get(documents, &IKelosObjects::get_Count),
                  [&](long i) { return name_of(get(documents, &IKelosObjects::get_Item, i)); });
}

std::wstring Project::query_names() const {
    return listed(get(kit_, &IHostKit::get_QueryCount),
                  [&](long i) { return get(kit_, &IHostKit::get_QueryName, i).str(); });
}

}  // namespace cli
