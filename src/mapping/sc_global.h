// The global mapping object: what a mapping script sees as its global members.
#pragma once

#include <unordered_set>

#include "archive/archive_node.h"
#include "automation/object.h"
#include "host/known_properties.h"
#include "host/mapping_table.h"
#include "mapping/column_definition.h"
#include "options/xml_options.h"
#include "tessera.h"

namespace tessera {

class Tessera;

// Holds the context of one mapping run. Workset, document and mapping table are shared references;
// the contents root and the objects kept between rows are its own.
class SCGlobal : public automation::Object<SCGlobal, ITesseraSCGlobal> {
  public:
    static constexpr CLSID class_id = __uuidof(::SCGlobal);

    STDMETHODIMP ContentFix(BSTR DocPointer, VARIANT vNewValue, VARIANT_BOOL AllValuesNumeric,
                            VARIANT_BOOL EmptyNumericValueStayEmpty) override;
    STDMETHODIMP get_WorkSet(IKelosWorkset** Result) override;
    STDMETHODIMP get_Document(IKelosDocument** Result) override;
    STDMETHODIMP get_Project(IKelosProject** Result) override;
    STDMETHODIMP get_ReportObject(IKelosObject** Result) override;
    STDMETHODIMP get_MappingTableExcel(IKelosMappingTable** Result) override;
    STDMETHODIMP ExcelABC(long Index, BSTR* Result) override;
    STDMETHODIMP Content(BSTR DocPointer, IKelosObject* KelosObject, BSTR PropName,
                         VARIANT PropParameter, BSTR PhysUnitLabel, BSTR IOMode,
                         VARIANT_BOOL AllValuesNumeric,
                         VARIANT_BOOL EmptyNumericValueStayEmpty) override;

    // Internal members, for the script runner.
    void set_workset(automation::ComPtr<IKelosWorkset> workset) { workset_ = std::move(workset); }
    // Keeps the document and looks for its mapping table.
    void set_document(automation::ComPtr<IKelosDocument> document) noexcept;
    // The root of the content document, created on first use.
    dom::Node contents_root() noexcept;
    void set_contents_root(dom::Node root) { contents_root_ = std::move(root); }
    // Writes the options of the mapping table's object into the content document.
    void AddOptionsToXml() noexcept;

  private:
    // One row as the script gives it. Views are valid for the call.
    struct Row {
        std::wstring_view pointer;
        automation::ComPtr<IKelosObject> object;
        std::wstring_view property_name;
        automation::Variant parameter;
        std::wstring_view unit_label;
        std::wstring_view io_mode;
        VARIANT_BOOL all_values_numeric;
        VARIANT_BOOL empty_numeric_value_stay_empty;
        const kelos::KnownProperty* known = nullptr;  // where it is found already
    };

    void transfer_or_expand(const Row& row) noexcept;
    void transfer(const Row& row);
    void QContent(const Row& row, const automation::ComPtr<IKelosDocument>& document) noexcept;
    void query_column(const Row& row, const automation::ComPtr<IKelosResultTable>& table,
                      const automation::ComPtr<IKelosQColumnDef>& definition, long column,
                      const std::wstring& sheet, long target_column, long start_row);
    // `parameter` is the text of the row's parameter.
    void read_expression(const Row& row, std::wstring_view parameter, Tessera& content);
    void read_column(const Row& row, std::wstring_view parameter, Tessera& content,
                     std::int16_t lcid);
    void choose_unit(const Row& row);
    void build(Tessera& content);
    // Nothing for an unknown number; the user is told of each once.
    const kelos::KnownProperty* GetProp(long number) noexcept;

    dom::Node contents_root_;
    automation::ComPtr<IKelosWorkset> workset_;
    automation::ComPtr<IKelosDocument> document_;
    FoundMappingTable mapping_table_;
    bool unit_given_by_host_ = false;  // the row's unit is a unit text already, not a label
    std::unordered_set<long> unknown_properties_;
    ColumnDefinition column_;
};

}  // namespace tessera
