#include "cli/content_table.h"

#include "automation/bstr.h"

namespace cli {
namespace {

using automation::as_u16;

struct ContentRow {
    std::wstring pointer;
    std::wstring object;
    std::wstring property;
    std::wstring parameter;
    std::wstring unit;
    std::wstring value;           // of the record itself
    std::wstring display_values;  // of its value items
    std::wstring direction;
};

std::wstring data_of(const dom::Node& item) {
    return std::wstring(dom::attribute(item, automation::Bstr(L"Data")).text());
}

using Field = std::wstring ContentRow::*;
struct KnownItem {
    std::wstring_view title;
    std::wstring_view item;
    Field field;
};
constexpr KnownItem known_items[] = {
    {L"KelosObject", L"PathFullName", &ContentRow::object},
    {L"Property", L"GetName", &ContentRow::property},
    {L"Property", L"GetParameter", &ContentRow::parameter},
    {L"Property", L"PhysUnit", &ContentRow::unit},
    {L"Value", L"KelosValue", &ContentRow::value},
    {L"Value", L"IOMode", &ContentRow::direction},
    {L"Document", L"Pointer", &ContentRow::pointer},
};

void read_title(ContentRow& row, std::wstring_view title, const dom::Node& node) {
    dom::for_each_element(node, [&](const dom::Node& item) {
        const automation::Bstr name = dom::name(item);
        for (const KnownItem& known : known_items)
            if (known.title == title && known.item == name.view()) row.*known.field = data_of(item);
    });
}

void read_value_items(ContentRow& row, const dom::Node& items) {
    bool is_first = true;
    dom::for_each_element(items, [&](const dom::Node& value_item) {
        if (!is_first) row.display_values += L"; ";
        is_first = false;
        dom::for_each_element(value_item, [&](const dom::Node& item) {
            if (dom::name(item).view() == L"DisplayValue") row.display_values += data_of(item);
        });
    });
}

ContentRow read_row(const dom::Node& content) {
    ContentRow row;
    dom::for_each_element(content, [&](const dom::Node& node) {
        const automation::Bstr name = dom::name(node);
        if (name.view() == L"ValueItems")
            read_value_items(row, node);
        else
            read_title(row, name.view(), node);
    });
    return row;
}

// A pointer is a sheet, "!" and a cell; the sheet's name may hold the sign, too.
std::vector<std::u16string> cells_of(const ContentRow& row) {
    const std::u16string_view pointer = as_u16(row.pointer);
    const std::size_t sign = pointer.rfind(u'!');
    const bool has_sheet = sign != pointer.npos;
    std::u16string property(as_u16(row.property));
    if (!row.parameter.empty()) property.append(u"(").append(as_u16(row.parameter)).append(u")");
    const std::wstring& value = row.display_values.empty() ? row.value : row.display_values;
    return {std::u16string(has_sheet ? pointer.substr(0, sign) : std::u16string_view()),
            std::u16string(has_sheet ? pointer.substr(sign + 1) : pointer),
            std::u16string(as_u16(row.object)),
            property,
            std::u16string(as_u16(value)),
            std::u16string(as_u16(row.unit)),
            std::u16string(as_u16(row.direction))};
}

}  // namespace

TextTable content_table(const dom::Node& contents_root) {
    TextTable table{{u"Sheet", u"Cell", u"Object", u"Property", u"Value", u"Unit", u"Direction"},
                    {}};
    dom::for_each_element(contents_root, [&](const dom::Node& node) {
        if (dom::name(node).view() == L"Content") table.rows.push_back(cells_of(read_row(node)));
    });
    return table;
}

}  // namespace cli
