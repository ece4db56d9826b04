#include "cli/import/import_report.h"

#include <algorithm>

#include "automation/bstr.h"
#include "cli/records/json_fields.h"
#include "cli/text.h"
#include "cli/text_table.h"

namespace cli {
namespace {

using automation::as_u16;

struct OutcomeName {
    Outcome outcome;
    std::u16string_view name;
    std::u16string_view counted;  // in the summary
};
constexpr OutcomeName outcome_names[] = {
    {Outcome::changed, u"changed", u"changed"},
    {Outcome::unchanged, u"unchanged", u"unchanged"},
    {Outcome::blank, u"blank", u"blank"},
    {Outcome::kept, u"kept", u"kept as in the project"},
    {Outcome::conflict, u"conflict", u"in conflict"},
    {Outcome::refused, u"refused", u"refused"},
    {Outcome::failed, u"failed", u"failed"},
};

std::u16string_view name_of(Outcome outcome) {
    return std::ranges::find(outcome_names, outcome, &OutcomeName::outcome)->name;
}

std::u16string_view name_of(CellState state) {
    switch (state) {
        case CellState::absent:
            return u"absent";
        case CellState::blank:
            return u"blank";
        case CellState::value:
            break;
    }
    return u"value";
}

bool has_news(const ImportRow& row) {
    return row.outcome != Outcome::unchanged;
}

// What the project has now; where nobody asked it, what it had.
const std::u16string& old_value(const ImportRow& row) {
    return row.project ? *row.project : row.exported;
}

std::u16string new_value(const ImportRow& row) {
    return row.outcome == Outcome::changed ? row.new_value : row.cell;
}

std::vector<std::u16string> cells_of(const ImportRow& row) {
    const ContentRecord& record = *row.record;
    return {std::u16string(name_of(row.outcome)),
            record.pointer.sheet,
            record.pointer.cell_text,
            record.object.path,
            property_text(record.property),
            old_value(row),
            new_value(row),
            record.property.unit,
            way_back(record)};
}

bool is_error(const ImportRow& row) {
    return row.outcome == Outcome::failed || row.outcome == Outcome::refused ||
           row.outcome == Outcome::conflict;
}

std::u16string in_u16(std::wstring_view text) {
    return std::u16string(as_u16(text));
}

std::u16string line_about(const ImportRow& row, const std::u16string& what) {
    return visible(row.record->pointer.text + u": " + what) + u"\n";
}

// All three values of a conflict; for the others, what stood in the way.
std::u16string told(const ImportRow& row) {
    std::u16string text = std::u16string(name_of(row.outcome)) + u": " + in_u16(row.reason);
    // What else has a reason was changed on both sides.
    if (row.outcome != Outcome::failed && row.outcome != Outcome::refused)
        text += u": \"" + row.exported + u"\" when it was exported, \"" + row.cell +
                u"\" in the sheet, \"" + old_value(row) + u"\" in the project";
    return line_about(row, text);
}

Json row_as_json(const ImportRow& row) {
    Json result{{"outcome", json_text(name_of(row.outcome))}};
    result.update(place_fields(*row.record));
    result["state"] = json_text(name_of(row.state));
    result["exported"] = json_text(row.exported);
    result["sheet_value"] = json_text(row.cell);
    result["project_value"] = json_text(old_value(row));
    if (row.outcome == Outcome::changed) result["new_value"] = json_text(row.new_value);
    result["unit"] = json_text(row.record->property.unit);
    result["way_back"] = json_text(way_back(*row.record));
    if (!row.reason.empty()) result["reason"] = json_text(as_u16(row.reason));
    if (!row.notice.empty()) result["notice"] = json_text(as_u16(row.notice));
    return result;
}

std::u16string counted(std::size_t count) {
    const std::string digits = std::to_string(count);
    return std::u16string(digits.begin(), digits.end());
}

}  // namespace

std::size_t ImportReport::count(Outcome outcome) const {
    return static_cast<std::size_t>(std::ranges::count(rows, outcome, &ImportRow::outcome));
}

bool ImportReport::is_clean() const {
    return std::ranges::none_of(rows, is_error);
}

std::u16string report_as_table(const ImportReport& report, std::size_t width) {
    TextTable table{{u"Result", u"Sheet", u"Cell", u"Object", u"Property", u"Old", u"New", u"Unit",
                     u"Way back"},
                    {}};
    for (const ImportRow& row : report.rows)
        if (has_news(row)) table.rows.push_back(cells_of(row));
    return table.rows.empty() ? std::u16string() : format_table(table, width) + u"\n";
}

std::u16string report_errors(const ImportReport& report) {
    std::u16string text;
    for (const ImportRow& row : report.rows)
        if (is_error(row)) text += told(row);
    return text;
}

std::u16string report_notices(const ImportReport& report) {
    std::u16string text;
    for (const ImportRow& row : report.rows) {
        if (!has_news(row) || is_error(row)) continue;
        if (!row.reason.empty()) text += told(row);
        if (!row.notice.empty()) text += line_about(row, u"notice: " + in_u16(row.notice));
    }
    return text;
}

std::u16string report_summary(const ImportReport& report) {
    std::u16string text;
    for (const OutcomeName& known : outcome_names) {
        const bool is_rare = known.outcome == Outcome::kept;
        if (is_rare && report.count(known.outcome) == 0) continue;
        if (!text.empty()) text += u", ";
        text += counted(report.count(known.outcome)) + u" " + std::u16string(known.counted);
    }
    return text;
}

std::u16string report_as_json(const ImportReport& report) {
    Json result{{"workbook", json_text(report.workbook)},
                {"project", json_text(report.project)},
                {"applied", report.is_applied}};
    if (!report.backup.empty()) result["backup"] = json_text(report.backup);
    for (const OutcomeName& known : outcome_names)
        result["counts"][json_text(known.name)] = report.count(known.outcome);
    result["rows"] = Json::array();
    for (const ImportRow& row : report.rows)
        result["rows"].push_back(row_as_json(row));
    return report_text(result);
}

}  // namespace cli
