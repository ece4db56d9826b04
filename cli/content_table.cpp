#include "cli/content_table.h"

namespace cli {
namespace {

// The entries of a value list are parted by semicolons.
std::u16string values_of(const ContentRecord& record) {
    std::u16string text;
    for (const ListItem& item : record.items) {
        if (&item != &record.items.front()) text += u"; ";
        text += item.display.text;
    }
    return text.empty() ? record.value.text : text;
}

}  // namespace

TextTable content_table(const std::vector<ContentRecord>& contents) {
    TextTable table{{u"Sheet", u"Cell", u"Object", u"Property", u"Value", u"Unit", u"Direction"},
                    {}};
    table.rows.reserve(contents.size());
    for (const ContentRecord& record : contents)
        table.rows.push_back({record.pointer.sheet, record.pointer.cell_text, record.object.path,
                              property_text(record.property), values_of(record),
                              record.property.unit, record.direction});
    return table;
}

}  // namespace cli
