#include "cli/preview/page_data.h"

#include <map>

#include "cli/records/json_fields.h"

namespace cli {
namespace {

std::string_view kind_name(PropertyKind kind) {
    switch (kind) {
        case PropertyKind::none:
            return "fixed value";
        case PropertyKind::known:
            return "property";
        case PropertyKind::numbered:
            return "property by number";
        case PropertyKind::expression:
            return "expression";
    }
    return {};
}

// A page of many cells is small when it does not say what is not there.
void set(Json& fields, const char* name, std::u16string_view text) {
    if (!text.empty()) fields[name] = json_text(text);
}

Json list_of(const ContentRecord& record) {
    Json list = Json::array();
    for (const ListItem& item : record.items)
        list.push_back({json_text(item.value.text), json_text(item.display.text)});
    return list;
}

void set_values(Json& cell, const ContentRecord& record) {
    const ArchivedValue& value = record.host_value();
    set(cell, "text", record.display_value().text);
    set(cell, "type", value.type);
    if (value.text != record.display_value().text) set(cell, "value", value.text);
    set(cell, "unit", record.property.unit);
    set(cell, "direction", record.direction);
    if (record.document_value.holds_value()) {
        cell["documentValue"] = json_text(record.document_value.text);
        set(cell, "documentType", record.document_value.type);
    }
    if (record.is_value_list()) cell["list"] = list_of(record);
}

void set_change(Json& cell, const CellChange& change) {
    cell["change"] = json_text(name_of(change.kind));
    for (const Difference& difference : change.differences)
        cell["differences"].push_back({json_text(difference.what), json_text(difference.before),
                                       json_text(difference.after)});
}

Json cell_data(const ContentRecord& record, const CellChange* change) {
    Json cell{{"number", record.number}};
    set(cell, "pointer", record.pointer.text);
    if (record.pointer.cell) {
        cell["column"] = record.pointer.cell->column;
        cell["row"] = record.pointer.cell->row;
    }
    set(cell, "object", record.object.path);
    set(cell, "uid", record.object.uid);
    set(cell, "property", property_text(record.property));
    set(cell, "wayBack", record.property.write_name);
    cell["kind"] = kind_name(record.property_kind());
    if (record.lcid != 0) cell["locale"] = record.lcid;
    set_values(cell, record);
    if (change) set_change(cell, *change);
    return cell;
}

// Sheets in the order in which they are met. What has no cell is gathered below a name that no
// sheet has.
class Sheets {
  public:
    void add(const ContentRecord& record, const CellChange* change) {
        const bool has_place = record.pointer.cell && is_on_sheet(*record.pointer.cell);
        const std::u16string name = has_place ? record.pointer.sheet : u"";
        const auto [place, is_new] = index_.emplace(std::pair(has_place, name), sheets_.size());
        if (is_new)
            sheets_.push_back(
                {{"name", json_text(name)}, {"hasCells", has_place}, {"cells", Json::array()}});
        sheets_[place->second]["cells"].push_back(cell_data(record, change));
    }

    Json take() { return std::move(sheets_); }

  private:
    std::map<std::pair<bool, std::u16string>, std::size_t> index_;
    Json sheets_ = Json::array();
};

// Nothing ends a script element, or begins a comment in it, without this character.
std::string inside_script(const std::string& json) {
    std::string text;
    text.reserve(json.size());
    for (const char character : json)
        character == '<' ? text.append("\\u003c") : text.append(1, character);
    return text;
}

}  // namespace

std::string page_data(const PageSource& source) {
    std::map<const ContentRecord*, const CellChange*> changes;
    for (const CellChange& change : source.changes)
        changes.emplace(&change.record(), &change);
    Sheets sheets;
    for (const ContentRecord& record : source.contents) {
        const auto change = changes.find(&record);
        sheets.add(record, change == changes.end() ? nullptr : change->second);
        source.told(static_cast<long>(record.number), static_cast<long>(source.contents.size()));
    }
    for (const CellChange& change : source.changes)
        if (change.kind == ChangeKind::removed) sheets.add(*change.before, &change);
    Json data{{"file", json_text(source.file)}, {"sheets", sheets.take()}};
    set(data, "against", source.against);
    return inside_script(data.dump());
}

}  // namespace cli
