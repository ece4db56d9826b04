#include "cli/records/content_reader.h"

#include <algorithm>

#include "cli/failure.h"
#include "cli/standard_path.h"
#include "cli/text_file.h"
#include "text/leading_number.h"
#include "text/string_forms.h"

namespace cli {
namespace {

using automation::Bstr;
using automation::get;
using namespace automation::literals;

std::u16string text_of(const dom::Element& item, automation::BstrView attribute) {
    return std::u16string(automation::as_u16(dom::attribute(item, attribute).text()));
}

ArchivedValue value_of(const dom::Element& item) {
    ArchivedValue value{text_of(item, L"Type"_bstr), text_of(item, L"Data"_bstr)};
    if (value.is_text()) value.text = tessera::office_string(value.text);
    return value;
}

void read_item(std::u16string& field, const dom::Element& item) {
    field = tessera::office_string(text_of(item, L"Data"_bstr));
}
void read_item(ArchivedValue& field, const dom::Element& item) {
    field = value_of(item);
}
void read_item(long& field, const dom::Element& item) {
    constexpr double least = -2147483648.0;
    constexpr double most = 2147483647.0;
    const double number = tessera::leading_number(text_of(item, L"Data"_bstr));
    field = static_cast<long>(std::clamp(number, least, most));
}
void read_item(bool& field, const dom::Element& item) {
    const std::u16string text = text_of(item, L"Data"_bstr);
    field = text == u"-1" || text == u"1" || text == u"True";
}

// One item that a record may have, and where it goes.
template <class Record>
struct KnownItem {
    std::wstring_view name;
    void (*read)(Record& record, const dom::Element& item);
};

template <class Record, std::size_t count>
void read_items(Record& record, const dom::Node& title, const KnownItem<Record> (&known)[count]) {
    dom::for_each_element(title, [&](const dom::Node& item) {
        const Bstr name = dom::name(item);
        for (const KnownItem<Record>& candidate : known)
            if (candidate.name == name.view()) candidate.read(record, item.as<IXMLDOMElement>());
    });
}

template <auto field, class Record>
void read_field(Record& record, const dom::Element& item) {
    read_item(record.*field, item);
}

constexpr KnownItem<ObjectRecord> object_items[] = {
    {L"SystemUID", read_field<&ObjectRecord::uid>},
    {L"SystemType", read_field<&ObjectRecord::system_type>},
    {L"PathFullName", read_field<&ObjectRecord::path>},
};
constexpr KnownItem<PropertyRecord> property_items[] = {
    {L"GetName", read_field<&PropertyRecord::name>},
    {L"SetName", read_field<&PropertyRecord::write_name>},
    {L"GetParameter", read_field<&PropertyRecord::parameter>},
    {L"SetParameter", read_field<&PropertyRecord::write_parameter>},
    {L"PhysUnit", read_field<&PropertyRecord::unit>},
    {L"QDefProperty", read_field<&PropertyRecord::query_property>},
};
constexpr KnownItem<ContentRecord> value_items[] = {
    {L"LCID", read_field<&ContentRecord::lcid>},
    {L"KelosValue", read_field<&ContentRecord::value>},
    {L"DocumentValue", read_field<&ContentRecord::document_value>},
    {L"IOMode", read_field<&ContentRecord::direction>},
    {L"AllValuesNumeric", read_field<&ContentRecord::all_values_numeric>},
    {L"EmptyNumericValueStayEmpty", read_field<&ContentRecord::empty_numeric_value_stays_empty>},
};
constexpr KnownItem<ContentRecord> document_items[] = {
    {L"Pointer",
     [](ContentRecord& record, const dom::Element& item) {
         record.pointer = parse_pointer(text_of(item, L"Data"_bstr));
     }},
};
constexpr KnownItem<ListItem> list_items[] = {
    {L"LCID", read_field<&ListItem::lcid>},
    {L"Value", read_field<&ListItem::value>},
    {L"DisplayValue", read_field<&ListItem::display>},
};

void read_list(ContentRecord& record, const dom::Node& title) {
    dom::for_each_element(title, [&](const dom::Node& node) {
        if (dom::name(node).view() != L"ValueItem") return;
        read_items(record.items.emplace_back(), node, list_items);
    });
}

constexpr KnownItem<ContentRecord> titles[] = {
    {L"KelosObject",
     [](ContentRecord& record, const dom::Element& title) {
         read_items(record.object, title, object_items);
     }},
    {L"Property",
     [](ContentRecord& record, const dom::Element& title) {
         read_items(record.property, title, property_items);
     }},
    {L"Value", [](ContentRecord& record,
                  const dom::Element& title) { read_items(record, title, value_items); }},
    {L"Document", [](ContentRecord& record,
                     const dom::Element& title) { read_items(record, title, document_items); }},
    {L"ValueItems",
     [](ContentRecord& record, const dom::Element& title) { read_list(record, title); }},
    {L"Presentation", read_field<&ContentRecord::presentation>},
};

long content_count(const dom::Node& contents_root) {
    long count = 0;
    dom::for_each_element(contents_root, [&](const dom::Node& node) {
        if (dom::name(node).view() == L"Content") ++count;
    });
    return count;
}

// What stands in a file for the encoding was of use for its bytes only.
std::u16string_view without_declaration(std::u16string_view text) {
    if (!text.starts_with(u"<?xml")) return text;
    const std::size_t end = text.find(u"?>");
    return end == text.npos ? text : text.substr(end + 2);
}

[[noreturn]] void fail_as_content(const std::wstring& name, const std::wstring& reason) {
    throw Failure(name + L" is no content document: " + reason +
                  L"; \"tessera export\" writes one");
}

std::wstring parse_failure(const dom::Document& document) {
    const auto error = get(document, &IXMLDOMDocument::get_parseError);
    std::wstring reason = L"it is not well-formed XML";
    Bstr words;
    if (SUCCEEDED(error->get_reason(words.put())) && !words.empty()) reason += L": " + words.str();
    while (reason.ends_with(L'\n') || reason.ends_with(L'\r') || reason.ends_with(L'.'))
        reason.pop_back();
    long line = 0;
    if (SUCCEEDED(error->get_line(&line)) && line > 0)
        reason += L" (line " + std::to_wstring(line) + L")";
    return reason;
}

}  // namespace

ContentRecords read_contents(const dom::Node& contents_root, const RecordRead& told) {
    ContentRecords records;
    const long count = told ? content_count(contents_root) : 0;
    dom::for_each_element(contents_root, [&](const dom::Node& node) {
        const Bstr name = dom::name(node);
        if (name.view() == L"Content") {
            ContentRecord& record = records.contents.emplace_back();
            record.number = records.contents.size();
            read_items(record, node, titles);
            if (told) told(static_cast<long>(record.number), count);
        } else if (name.view() == L"Options") {
            if (const auto option = dom::child_named(node, L"AllowSheetCreation"))
                read_item(records.allows_sheet_creation, option);
        }
    });
    return records;
}

bool is_contents_root(const dom::Node& element) {
    return element && dom::name(element).view() == L"Contents" &&
           dom::attribute(element, L"Version"_bstr).text() == L"1";
}

// Entities could make a short file a very long text; nothing that writes content documents has any.
dom::Document parse_content_document(std::u16string_view text, const std::wstring& name) {
    if (text.find(u"<!DOCTYPE") != text.npos)
        fail_as_content(name, L"it has a document type declaration");
    if (text.find(u'\0') != text.npos) fail_as_content(name, L"it has a null character");
    dom::Document document = dom::create_document();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    document->loadXML(Bstr(without_declaration(text)).get(), &loaded);
    if (loaded == VARIANT_FALSE) fail_as_content(name, parse_failure(document));
    if (!is_contents_root(dom::root(document)))
        fail_as_content(name, L"its root is no \"Contents\" of version 1");
    return document;
}

dom::Document load_content_document(const std::wstring& path) {
    return parse_content_document(read_text_file(path, L"the content document"),
                                  quoted_input(path));
}

}  // namespace cli
