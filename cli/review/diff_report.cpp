#include "cli/review/diff_report.h"

#include <algorithm>

#include "cli/records/ascii.h"
#include "cli/records/json_fields.h"
#include "cli/text_table.h"

namespace cli {
namespace {

void append_rows(TextTable& table, const CellChange& change) {
    const ContentRecord& record = change.record();
    const std::u16string kind(name_of(change.kind));
    const auto append = [&](std::u16string_view what, const std::u16string& before,
                            const std::u16string& after) {
        table.rows.push_back({kind, record.pointer.text, record.object.path,
                              property_text(record.property), std::u16string(what), before, after});
    };
    if (change.kind == ChangeKind::added) append(u"value", u"", record.display_value().text);
    if (change.kind == ChangeKind::removed) append(u"value", record.display_value().text, u"");
    for (const Difference& difference : change.differences)
        append(difference.what, difference.before, difference.after);
}

Json change_as_json(const CellChange& change) {
    Json result{{"change", json_text(name_of(change.kind))}};
    result.update(place_fields(change.record()));
    if (change.kind != ChangeKind::changed) {
        result["value"] = json_text(change.record().display_value().text);
        return result;
    }
    for (const Difference& difference : change.differences)
        result["differences"].push_back({{"what", json_text(difference.what)},
                                         {"old", json_text(difference.before)},
                                         {"new", json_text(difference.after)}});
    return result;
}

std::size_t unchanged_count(const DiffReport& report) {
    return report.rows_before - report.count(ChangeKind::removed) -
           report.count(ChangeKind::changed);
}

}  // namespace

std::size_t DiffReport::count(ChangeKind kind) const {
    return static_cast<std::size_t>(std::ranges::count(changes, kind, &CellChange::kind));
}

std::u16string report_as_text(const DiffReport& report, std::size_t width) {
    if (report.changes.empty()) return {};
    TextTable table{{u"Change", u"Pointer", u"Object", u"Property", u"What", u"Old", u"New"}, {}};
    for (const CellChange& change : report.changes)
        append_rows(table, change);
    return format_table(table, width) + u"\n";
}

std::u16string report_summary(const DiffReport& report) {
    const auto counted = [](std::size_t count) { return decimal(static_cast<long>(count)); };
    return u"rows: " + counted(report.count(ChangeKind::added)) + u" added, " +
           counted(report.count(ChangeKind::removed)) + u" removed, " +
           counted(report.count(ChangeKind::changed)) + u" changed, " +
           counted(unchanged_count(report)) + u" unchanged";
}

std::u16string report_as_json(const DiffReport& report) {
    Json changes = Json::array();
    for (const CellChange& change : report.changes)
        changes.push_back(change_as_json(change));
    return report_text({{"old", json_text(report.before)},
                        {"new", json_text(report.after)},
                        {"added", report.count(ChangeKind::added)},
                        {"removed", report.count(ChangeKind::removed)},
                        {"changed", report.count(ChangeKind::changed)},
                        {"unchanged", unchanged_count(report)},
                        {"changes", std::move(changes)}});
}

}  // namespace cli
