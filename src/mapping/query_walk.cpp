// How the global mapping object expands a query document: one row of its own for every cell of the
// columns that are shown.

#include <cstdint>
#include <limits>

#include "automation/dispatch.h"
#include "host/error_boundary.h"
#include "host/service.h"
#include "mapping/document_pointer.h"
#include "mapping/number_system.h"
#include "mapping/sc_global.h"
#include "text/trim.h"

namespace tessera {

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;
using automation::Variant;
using kelos::KnownProperty;

namespace {

constexpr MemberName member(const wchar_t* label) {
    return {L"Tessera.SCGlobal", label};
}

// The mode of every cell's row; the caller's is not passed on.
constexpr wchar_t mode_both_ways[] = L"IO";
constexpr wchar_t key_unknown_property[] = L"~02ad8 Unbekannte Property oder Property-Konstante";
constexpr wchar_t key_information[] = L"~008a0 Information";

// The n-th position (from 1) from the first one on.
long position(long first, long n) {
    const std::int64_t place = std::int64_t{first} + n - 1;
    if (place > std::numeric_limits<long>::max()) automation::fail(automation::error_overflow);
    return static_cast<long>(place);
}

ComPtr<IKelosQuery> top_query(IKelosDocument* document) {
    const auto container = get(document, &IKelosDocument::get_QueryContainer);
    if (!container) return {};
    return automation::object_as<IKelosQuery>(
        automation::get_property(container.get(), L"TopQuery"));
}

// A host may answer with another object for the same document each time; without an identifier they
// are told apart by themselves alone.
bool is_same(IKelosDocument* left, IKelosDocument* right) {
    if (automation::same_object(left, right)) return true;
    const Bstr uid = get(left, &IKelosObject::get_SystemUID);
    return !uid.empty() && uid.view() == get(right, &IKelosObject::get_SystemUID).view();
}

}  // namespace

// A query document that is being expanded, for as long as this object lives.
class SCGlobal::Expansion {
  public:
    Expansion(std::vector<IKelosDocument*>& expanded, IKelosDocument* document)
        : expanded_(expanded) {
        for (IKelosDocument* const outer : expanded)
            if (is_same(outer, document))
                automation::fail(automation::error_invalid_procedure_call,
                                 L"The query document contains itself");
        expanded_.push_back(document);
    }
    ~Expansion() { expanded_.pop_back(); }
    Expansion(const Expansion&) = delete;
    Expansion& operator=(const Expansion&) = delete;

  private:
    std::vector<IKelosDocument*>& expanded_;
};

// Where the cells of one column go.
struct SCGlobal::Target {
    IKelosResultTable* table;
    long table_column;
    IKelosQColumnDef* definition;
    std::wstring_view sheet;
    long column;
    long first_row;
};

void SCGlobal::QContent(const Row& row, IKelosDocument* document) noexcept {
    guarded(member(L"Sub 'QContent'"), [&] {
        const Expansion expansion(expanded_, document);
        const auto query = top_query(document);
        if (!query) return;
        const auto table = get(query, &IKelosQuery::get_ResultTable);
        if (!table) return;
        const auto columns = get(table, &IKelosResultTable::get_Columns);
        if (!columns) return;
        call(query, &IKelosQuery::Run);

        std::wstring sheet;
        long start_column = 0;
        long start_row = 0;
        if (!SplitExDocP(row.pointer, sheet, start_column, start_row)) return;
        const long count = get(table, &IKelosResultTable::get_ColumnCount);
        for (long i = 1; i <= count; ++i) {
            unit_given_by_host_ = false;
            const auto definition = get(columns, &IKelosQColumnDefs::get_Item, i);
            if (get(definition, &IKelosQColumnDef::get_Shown))
                transfer_column(row, {table.get(), i, definition.get(), sheet,
                                      position(start_column, i), start_row});
        }
    });
}

void SCGlobal::transfer_column(const Row& row, const Target& target) {
    const KnownProperty* const known =
        GetProp(get(target.definition, &IKelosQColumnDef::get_PropertyConstant));
    if (!known) return;
    const Bstr property_name(known->name);
    const Variant parameter(get(target.definition, &IKelosQColumnDef::get_ParameterText));
    const Bstr unit_text = get(target.definition, &IKelosQColumnDef::get_UnitText);
    const Bstr unit(trim_blanks(unit_text.view()));

    const long rows = get(target.table, &IKelosResultTable::get_RowCount);
    for (long j = 1; j <= rows; ++j) {
        const auto cell = get(target.table, &IKelosResultTable::get_Cell, j, target.table_column);
        if (!cell) continue;  // a row may have no cell here: there is nothing to transfer
        const auto object = get(cell, &IKelosCell::get_Object);
        const std::u16string pointer = cell_pointer(automation::as_u16(target.sheet), target.column,
                                                    position(target.first_row, j));
        if (!unit.empty()) unit_given_by_host_ = true;
        transfer({automation::as_wide(pointer), object.get(), property_name, parameter, unit,
                  mode_both_ways, row.all_values_numeric, row.empty_numeric_value_stay_empty,
                  known});
    }
}

const KnownProperty* SCGlobal::GetProp(long number) noexcept {
    const KnownProperty* const found = kelos::find_property(number);
    guarded(member(L"Private Function 'GetProp'"), [&] {
        if (found || unknown_properties_.contains(number)) return;
        const std::wstring message =
            translate(key_unknown_property).str() + L": " + std::to_wstring(number);
        const Bstr title = translate(key_information);
        show_message(message, style_information, title.view());
        trace(message);
        // Not before the user was told.
        unknown_properties_.insert(number);
    });
    return found;
}

}  // namespace tessera
