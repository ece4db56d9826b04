#include "cli/review/content_diff.h"

#include <map>
#include <set>

#include "cli/records/ascii.h"
#include "cli/workbook/sheet_name.h"

namespace cli {
namespace {

// Which records are of one cell: sheet and cell in one form, and the how-many-th of them it is.
class CellKeys {
  public:
    std::pair<std::u16string, std::size_t> next(const CellPointer& pointer) {
        std::u16string name =
            pointer.cell ? folded_sheet_name(pointer.sheet) + u"!" + cell_name(*pointer.cell)
                         : pointer.text;
        const std::size_t number = ++count_[name];
        return {std::move(name), number};
    }

  private:
    std::map<std::u16string, std::size_t> count_;
};

// Texts that a reader cannot tell apart are told with what makes them differ.
void add_value(std::vector<Difference>& differences, std::u16string_view what,
               const ArchivedValue& before, const ArchivedValue& after) {
    if (before == after) return;
    if (before.text != after.text) {
        differences.push_back({what, before.text, after.text});
    } else {
        differences.push_back(
            {what, before.type + u" " + before.text, after.type + u" " + after.text});
    }
}

void add_text(std::vector<Difference>& differences, std::u16string_view what,
              const std::u16string& before, const std::u16string& after) {
    if (before != after) differences.push_back({what, before, after});
}

std::u16string flags_text(const ContentRecord& record) {
    std::u16string text = record.all_values_numeric ? u"numbers only" : u"";
    if (!record.empty_numeric_value_stays_empty) return text;
    return text.empty() ? u"empty stays empty" : text + u", empty stays empty";
}

std::u16string object_text(const ObjectRecord& object) {
    return object.uid.empty() ? object.path : object.path + u" (" + object.uid + u")";
}

// Without their order: the current value stands first.
std::u16string entries_text(const ContentRecord& record) {
    std::set<std::u16string> entries;
    for (const ListItem& item : record.items)
        entries.insert(item.value.text + u"=" + item.display.text);
    std::u16string text;
    for (const std::u16string& entry : entries)
        text += text.empty() ? entry : u"; " + entry;
    return text;
}

void add_values(std::vector<Difference>& differences, const ContentRecord& before,
                const ContentRecord& after) {
    if (before.display_value().text != after.display_value().text)
        add_value(differences, u"value", before.display_value(), after.display_value());
    else
        add_value(differences, u"value", before.host_value(), after.host_value());
    add_value(differences, u"document value", before.document_value, after.document_value);
    if (before.is_value_list() || after.is_value_list())
        add_text(differences, u"list", entries_text(before), entries_text(after));
}

std::vector<Difference> differences_of(const ContentRecord& before, const ContentRecord& after) {
    std::vector<Difference> differences;
    add_values(differences, before, after);
    add_text(differences, u"unit", before.property.unit, after.property.unit);
    add_text(differences, u"object", object_text(before.object), object_text(after.object));
    add_text(differences, u"property", property_text(before.property),
             property_text(after.property));
    add_text(differences, u"way back", before.property.write_name, after.property.write_name);
    add_text(differences, u"direction", before.direction, after.direction);
    add_text(differences, u"locale", decimal(before.lcid), decimal(after.lcid));
    add_text(differences, u"flags", flags_text(before), flags_text(after));
    return differences;
}

}  // namespace

std::vector<CellChange> compare_contents(const std::vector<ContentRecord>& before,
                                         const std::vector<ContentRecord>& after) {
    std::map<std::pair<std::u16string, std::size_t>, const ContentRecord*> old_cells;
    CellKeys old_keys;
    for (const ContentRecord& record : before)
        old_cells.emplace(old_keys.next(record.pointer), &record);

    std::vector<CellChange> changes;
    CellKeys new_keys;
    for (const ContentRecord& record : after) {
        const auto found = old_cells.find(new_keys.next(record.pointer));
        if (found == old_cells.end()) {
            changes.push_back({ChangeKind::added, nullptr, &record, {}});
            continue;
        }
        auto differences = differences_of(*found->second, record);
        if (!differences.empty())
            changes.push_back(
                {ChangeKind::changed, found->second, &record, std::move(differences)});
        old_cells.erase(found);
    }
    CellKeys removed_keys;
    for (const ContentRecord& record : before)
        if (old_cells.contains(removed_keys.next(record.pointer)))
            changes.push_back({ChangeKind::removed, &record, nullptr, {}});
    return changes;
}

std::u16string_view name_of(ChangeKind kind) noexcept {
    switch (kind) {
        case ChangeKind::added:
            return u"added";
        case ChangeKind::removed:
            return u"removed";
        case ChangeKind::changed:
            return u"changed";
    }
    return {};
}

}  // namespace cli
