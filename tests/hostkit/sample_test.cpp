// The sample project holds what its readers and the other suites count on.
#include <algorithm>
#include <set>

#include "automation/conversion.h"
#include "hostkit/literal_project.h"

using namespace test;

namespace {

struct SampleFixture : ProjectFixture {
    SampleFixture() : ProjectFixture(test::sample(L"plant.xml")) {}
};

long walk(const ComPtr<IKelosObject>& top) {
    const auto children =
        automation::object_as<IKelosObjects>(automation::get_property(top.get(), L"Children"));
    const long count = get(children, &IKelosObjects::get_Count);
    long found = count;
    for (long i = 1; i <= count; ++i)
        found += walk(get(children, &IKelosObjects::get_Item, i));
    return found;
}

std::wstring lower(std::wstring text) {
    std::transform(text.begin(), text.end(), text.begin(), towlower);
    return text;
}

// The number of each property that a row may name; the others are expressions.
long constant_named(const std::wstring& name) {
    if (automation::is_numeric(name)) return automation::to_long(Variant(name));
    const auto resolver = create<IKelosPropertyConstant>(L"KelosQuery.PropertyConstant");
    for (long constant = 1; constant <= kqpFileName; ++constant) {
        call(resolver, &IKelosPropertyConstant::put_Constant, constant);
        if (lower(get(resolver, &IKelosPropertyConstant::get_Name).str()) == lower(name))
            return constant;
    }
    return kqpNone;
}

// The text of the group's unit with the label; the attribute's own for a blank label.
std::wstring unit_text(const ComPtr<IKelosObject>& object, const std::wstring& label) {
    const auto attribute = object.try_as<IKelosAttribute>();
    if (!attribute || label.empty()) return {};
    const auto own = get(attribute, &IKelosAttribute::get_Unit);
    REQUIRE(own);
    if (label == L" ") return get(own, &IKelosUnit::get_UnitText).str();
    const auto group = get(own, &IKelosUnit::get_Group);
    const long count = get(group, &IKelosUnitGroup::get_Count);
    for (long i = 1; i <= count; ++i) {
        const auto unit = get(group, &IKelosUnitGroup::get_Item, i);
        if (lower(get(unit, &IKelosUnit::get_Label).str()) == lower(label))
            return get(unit, &IKelosUnit::get_UnitText).str();
    }
    FAIL("no unit of this label");
    return {};
}

}  // namespace

TEST_CASE_FIXTURE(SampleFixture, "every row of the sample's mapping table can be mapped") {
    const auto table = object(L"Dokumente|Anlagenliste|Zuordnung").as<IKelosMappingTable>();
    const long rows = get(table, &IKelosMappingTable::GetCount);
    CHECK(rows >= 60);
    std::set<std::wstring> sheets;
    std::set<std::wstring> directions;
    std::set<long> constants;
    for (long row = 1; row <= rows; ++row) {
        const std::wstring target = get(table, &IKelosMappingTable::get_Target, row).str();
        CAPTURE(target);
        sheets.insert(target.substr(0, target.find(L'!')));
        directions.insert(get(table, &IKelosMappingTable::get_IO, row).str());
        const auto source = get(table, &IKelosMappingTable::get_SourceObject, row);
        if (!source) continue;
        const auto property = get(table, &IKelosMappingTable::get_SourceProperty, row);
        const long constant = constant_named(property.str());
        constants.insert(constant);
        if (constant == kqpNone) continue;
        const Variant index = get(table, &IKelosMappingTable::get_SourceIndex, row);
        const std::wstring unit =
            unit_text(source, get(table, &IKelosMappingTable::get_UNIT, row).str());
        const Evaluation found =
            evaluate(source, constant, automation::to_text(index).str().c_str(), 0, unit.c_str());
        CHECK(found.entries.find(L'=') != std::wstring::npos);
        if (!unit.empty()) CHECK(found.unit == unit);
    }
    CHECK(sheets == std::set<std::wstring>{L"Pumpen", L"Behälter", L"Messstellen"});
    CHECK(directions == std::set<std::wstring>{L"", L"I", L"IO", L"O"});
    // Each of the 25 known properties, and expressions.
    CHECK(constants.size() == 26);
}

TEST_CASE_FIXTURE(SampleFixture, "the sample's plant, documents and queries are there") {
    const auto project = get(workset, &IKelosWorkset::get_CurrentProject);
    CHECK(walk(project) >= 40);
    const auto script = [&](const wchar_t* name) {
        const auto attribute =
            get(document(name), &IKelosObject::AttributeByFullName, Bstr(L"Vex").get());
        if (!attribute) return std::wstring(L"none");
        return automation::to_text(get(attribute, &IKelosAttribute::get_Value, 1L)).str();
    };
    CHECK(script(L"Anlagenliste") == L"none");
    CHECK(script(L"Kurzliste") == L"Sub DoVex()\r\nEnd Sub");
    CHECK(script(L"Pumpendatenblatt").size() > 500);
    CHECK(get(document(L"Prüfprotokoll"), &IKelosDocument::get_Delegate));
    const auto allowed =
        get(object(L"Dokumente|Anlagenliste|Zuordnung"), &IKelosObject::AttributeByFullName,
            Bstr(L"Y00T00192.Y00A05508").get());
    CHECK(get(allowed, &IKelosAttribute::get_ValueText).view() == L"-1");

    struct Expected {
        const wchar_t* query;
        long rows;
        long total;
    };
    const Expected queries[] = {{L"Pumpenliste", 6, 6},
                                {L"Anlagenstruktur", 3, 29},
                                {L"Stückliste", 2, 14},
                                {L"Prüfplan", 4, 7},
                                {L"Signalliste", 100000, 100000}};
    REQUIRE(get(kit, &IHostKit::get_QueryCount) == 5);
    for (const Expected& expected : queries) {
        CAPTURE(expected.query);
        const auto query = get(kit, &IHostKit::get_Query, Bstr(expected.query).get());
        call(query, &IKelosQuery::Run);
        const auto table = get(query, &IKelosQuery::get_ResultTable);
        CHECK(get(table, &IKelosResultTable::get_RowCount) == expected.rows);
        CHECK(get(table, &IKelosResultTable::get_TotalRowCount) == expected.total);
    }
}
