// Walks over queries.

#include "bench/component/blueprint.h"
#include "bench/component/measure.h"
#include "bench/component/project.h"

namespace bench {
namespace {

// The parts of a host's query that a walk reads.
struct Result {
    explicit Result(const ComPtr<IKelosQuery>& query) {
        call(query, &IKelosQuery::Run);
        table = get(query, &IKelosQuery::get_ResultTable);
        rows = get(table, &IKelosResultTable::get_RowCount);
        columns = get(table, &IKelosResultTable::get_ColumnCount);
        const auto list = get(table, &IKelosResultTable::get_Columns);
        for (long i = 1; i <= columns; ++i)
            definitions.push_back(get(list, &IKelosQColumnDefs::get_Item, i));
    }
    ComPtr<IKelosResultTable> table;
    long rows = 0;
    long columns = 0;
    std::vector<ComPtr<IKelosQColumnDef>> definitions;
};

void read_object(const ComPtr<IKelosObject>& object) {
    get(object, &IKelosObject::get_SystemUID);
    get(object, &IKelosObject::get_SystemType);
    const auto project = get(object, &IKelosObject::get_Project);
    get(object, &IKelosObject::get_PathFullName, project.get());
}

void read_row_cell(const Result& result, long row, long column) {
    const auto cell = get(result.table, &IKelosResultTable::get_Cell, row, column);
    get(cell, &IKelosCell::get_Value);
    read_object(get(cell, &IKelosCell::get_Object));
    get(cell, &IKelosCell::get_Text);
    const auto& definition = result.definitions[static_cast<std::size_t>(column) - 1];
    get(definition, &IKelosQColumnDef::get_Name);
    get(definition, &IKelosQColumnDef::get_Name);
}

void read_content_cell(const Result& result, long row, long column) {
    const auto& definition = result.definitions[static_cast<std::size_t>(column) - 1];
    const auto cell = get(result.table, &IKelosResultTable::get_Cell, row, column);
    get(cell, &IKelosCell::get_Value);
    read_object(get(cell, &IKelosCell::get_Object));
    get(definition, &IKelosQColumnDef::get_GetName);
    get(definition, &IKelosQColumnDef::get_GetParameter);
    get(definition, &IKelosQColumnDef::get_PropertyConstant);
    const Bstr name = get(definition, &IKelosQColumnDef::get_SetName);
    if (!name.empty()) get(definition, &IKelosQColumnDef::get_SetParameter);
    get(cell, &IKelosCell::get_Text);
    get(definition, &IKelosQColumnDef::get_LCID);
}

ComPtr<ITesseraQContent> query_content(const Project& project, const ComPtr<IKelosQuery>& query) {
    auto content = create<ITesseraQContent>(L"Tessera.QContent");
    const auto cursor = get(content, &ITesseraQContent::get_HQuery);
    call(cursor, &ITesseraHQuery::putref_WorkSet, project.workset.get());
    call(cursor, &ITesseraHQuery::putref_Query, query.get());
    return content;
}

void close_forms() {
    const auto service = create<IHostKitService>(L"Kelos.Service");
    const auto application = get(service, &IHostKitService::get_Application);
    const auto windows = get(application, &IKelosApplication::get_WindowService);
    const auto forms = get(windows.as<IHostKitWindowService>(), &IHostKitWindowService::get_Forms);
    for (long n = get(forms, &IHostKitForms::get_Count); n > 0; --n) {
        const auto form = get(forms, &IHostKitForms::get_Item, n);
        DestroyWindow(static_cast<HWND>(LongToHandle(get(form, &IHostKitForm::get_Window))));
    }
}

// A walk whose form is gone: its window goes through the system, whose answers take as long as
// other processes let them, and is measured by itself.
ComPtr<ITesseraQContent> query_content_without_form(const Project& project,
                                                    const ComPtr<IKelosQuery>& query) {
    auto content = query_content(project, query);
    close_forms();
    return content;
}

bool is_at_end(const ComPtr<ITesseraHQuery>& cursor) {
    return get(cursor, &ITesseraHQuery::get_EOF) != VARIANT_FALSE;
}

void walk_row_texts(const ComPtr<ITesseraQContent>& content) {
    const auto cursor = get(content, &ITesseraQContent::get_HQuery);
    while (!is_at_end(cursor)) {
        Bstr text;
        get(content, &ITesseraQContent::XMLRowAsString, text.put(), VARIANT_FALSE);
        call(cursor, &ITesseraHQuery::MoveNext);
    }
}

void read_row_texts(const Result& result, const Blueprint& blueprint) {
    for (long row = 1; row <= result.rows; ++row) {
        for (long column = 1; column <= result.columns; ++column)
            read_row_cell(result, row, column);
        const auto document = dom::create_document();
        blueprint.create(document.get(), document.get());
        get(document, &IXMLDOMDocument::get_xml);
        get(result.table, &IKelosResultTable::get_NestedQuery, row);
    }
}

Figures row_texts() {
    constexpr int rows = 100;
    const Project project(2, rows);
    const auto query = project.query(L"Q10");
    const Result result(query);
    const auto first = query_content(project, query);
    const auto sample = get(first, &ITesseraQContent::XMLRow);
    const Blueprint blueprint(dom::root(sample));
    return compare(
        75, rows,
        [&] {
            const auto content = query_content_without_form(project, query);
            return seconds([&] { walk_row_texts(content); });
        },
        [&] { return seconds([&] { read_row_texts(result, blueprint); }); });
}

Figures complete() {
    constexpr int rows = 20'000;
    const Project project(2, rows);
    const auto query = project.query(L"Q2");
    const Result result(query);
    const auto document_of = [&] {
        return get(query_content(project, query), &ITesseraQContent::XMLComplete);
    };
    const auto sample = document_of();
    const auto headings = dom::child_named(dom::root(sample), L"Content");
    const auto second_heading = dom::sibling_named(headings, L"Content");
    const Blueprint blueprint(dom::sibling_named(second_heading, L"Content"));
    return compare(
        9, rows,
        [&] {
            const auto content = query_content_without_form(project, query);
            ComPtr<IXMLDOMDocument> written;
            return seconds([&] { written = get(content, &ITesseraQContent::XMLComplete); });
        },
        [&] {
            const RootedDocument target(L"Contents");
            return seconds([&] {
                for (long row = 1; row <= result.rows; ++row) {
                    for (long column = 1; column <= result.columns; ++column) {
                        read_content_cell(result, row, column);
                        blueprint.create(target.document.get(), target.root.get());
                    }
                    get(result.table, &IKelosResultTable::get_NestedQuery, row);
                }
            });
        });
}

// A walk with a look at the state after every row, over and over: an abort must be seen.
double walk_time(const ComPtr<ITesseraHQuery>& cursor, int moves) {
    return seconds([&] {
        for (int i = 0; i < moves; ++i) {
            call(cursor, &ITesseraHQuery::MoveNext);
            get(cursor, &ITesseraHQuery::get_State);
        }
    });
}

Figures progress() {
    constexpr int moves = 100'000;
    const Project project(2, moves);
    const auto query = project.query(L"Q2");
    call(query, &IKelosQuery::Run);
    const auto walk = [&](bool with_form) {
        const auto cursor = create<ITesseraHQuery>(L"Tessera.HQuery");
        call(cursor, &ITesseraHQuery::putref_WorkSet, project.workset.get());
        call(cursor, &ITesseraHQuery::putref_Query, query.get());
        if (!with_form) close_forms();
        return walk_time(cursor, moves - 1);
    };
    return compare(
        9, moves, [&] { return walk(true); }, [&] { return walk(false); });
}

}  // namespace

Benchmarks query_benchmarks() {
    return {
        {"row-texts", "query walk, XMLRowAsString per row of 10 columns",
         "direct host calls, direct creation, the parser's xml", 1.1, row_texts},
        {"complete", "XMLComplete, 20,000 rows of 2 columns", "direct host calls, direct creation",
         1.1, complete},
        {"progress", "MoveNext with progress shown, State after each", "without a form", 1.1,
         progress},
    };
}

}  // namespace bench
