#include "cli/review/check_report.h"

#include <algorithm>

#include "cli/records/ascii.h"
#include "cli/records/json_fields.h"
#include "cli/text_table.h"

namespace cli {
namespace {

constexpr std::size_t places_told = 20;

std::u16string count_text(std::size_t count, std::u16string_view noun) {
    std::u16string text = decimal(static_cast<long>(count)) + u" ";
    text.append(noun);
    return count == 1 ? text : text + u"s";
}

std::vector<const Finding*> findings_of(const CheckReport& report, Rule rule) {
    std::vector<const Finding*> found;
    for (const Finding& finding : report.findings)
        if (finding.rule == rule) found.push_back(&finding);
    return found;
}

TextTable rules_table(const CheckReport& report) {
    TextTable table{{u"Class", u"Rule", u"Count", u"What is wrong"}, {}};
    for (const RuleText& rule : rules)
        if (const auto found = findings_of(report, rule.rule); !found.empty())
            table.rows.push_back({std::u16string(name_of(rule.severity)), std::u16string(rule.id),
                                  decimal(static_cast<long>(found.size())),
                                  std::u16string(rule.sentence)});
    return table;
}

void append_places(TextTable& table, const CheckReport& report, const RuleText& rule) {
    const std::vector<const Finding*> found = findings_of(report, rule.rule);
    const std::u16string id(rule.id);
    for (std::size_t i = 0; i < std::min(found.size(), places_told); ++i) {
        const ContentRecord& record = report.contents[found[i]->record];
        table.rows.push_back({id, decimal(static_cast<long>(record.number)), record.pointer.text,
                              record.object.path, property_text(record.property),
                              found[i]->detail});
    }
    if (found.size() > places_told)
        table.rows.push_back(
            {id, u"", u"", u"", u"",
             u"and " + decimal(static_cast<long>(found.size() - places_told)) + u" more"});
}

TextTable places_table(const CheckReport& report) {
    TextTable table{{u"Rule", u"Row", u"Pointer", u"Object", u"Property", u"Detail"}, {}};
    for (const RuleText& rule : rules)
        append_places(table, report, rule);
    return table;
}

Json rule_as_json(const CheckReport& report, const RuleText& rule) {
    Json places = Json::array();
    for (const Finding* finding : findings_of(report, rule.rule)) {
        Json place = place_fields(report.contents[finding->record]);
        place["detail"] = json_text(finding->detail);
        places.push_back(std::move(place));
    }
    return {{"rule", json_text(rule.id)},
            {"class", json_text(name_of(rule.severity))},
            {"sentence", json_text(rule.sentence)},
            {"checked", report.has_project || !rule.needs_project},
            {"count", places.size()},
            {"places", std::move(places)}};
}

}  // namespace

std::size_t CheckReport::count(Severity severity) const {
    return static_cast<std::size_t>(std::ranges::count(
        findings, severity, [](const Finding& finding) { return text_of(finding.rule).severity; }));
}

std::u16string report_as_text(const CheckReport& report, std::size_t width) {
    if (report.findings.empty()) return {};
    return format_table(rules_table(report), width) + u"\n" +
           format_table(places_table(report), width) + u"\n";
}

std::u16string report_summary(const CheckReport& report) {
    std::u16string text = count_text(report.contents.size(), u"row");
    text += u": " + count_text(report.count(Severity::error), u"error");
    text += u", " + count_text(report.count(Severity::warning), u"warning");
    text += u", " + count_text(report.count(Severity::notice), u"notice");
    if (!report.has_project) text += u"; objects and units are checked with \"--project\" only";
    return text;
}

std::u16string report_as_json(const CheckReport& report) {
    Json checked = Json::array();
    for (const RuleText& rule : rules)
        checked.push_back(rule_as_json(report, rule));
    return report_text({{"file", json_text(report.file)},
                        {"rows", report.contents.size()},
                        {"errors", report.count(Severity::error)},
                        {"warnings", report.count(Severity::warning)},
                        {"notices", report.count(Severity::notice)},
                        {"rules", std::move(checked)}});
}

}  // namespace cli
