// The global mapping object: what a mapping script sees as its global members.
#pragma once

#include <unordered_set>
#include <vector>

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

    // One row as the script gives it. Everything in it is lent for the call.
    struct Row {
        std::wstring_view pointer;
        IKelosObject* object;
        automation::BstrView property_name;
        const VARIANT& parameter;
        automation::BstrView unit_label;
        std::wstring_view io_mode;
        bool all_values_numeric;
        bool empty_numeric_value_stay_empty;
        const kelos::KnownProperty* known = nullptr;  // where it is found already
    };
    // Records one property of the row's object with its values; of a query document, its cells.
    void transfer(const Row& row) noexcept;
    // Records a fixed value.
    void transfer_fixed(std::wstring_view pointer, const VARIANT& value, bool all_values_numeric,
                        bool empty_numeric_value_stay_empty) noexcept;

    void set_workset(automation::ComPtr<IKelosWorkset> workset) { workset_ = std::move(workset); }
    // Keeps the document and looks for its mapping table.
    void set_document(automation::ComPtr<IKelosDocument> document) noexcept;
    automation::ComPtr<IKelosProject> project() noexcept;
    // The object of the document's entry "@ReportObject", else the document's owner.
    automation::ComPtr<IKelosObject> report_object() noexcept;
    // The root of the content document, created on first use.
    const ArchiveNode& contents_root() noexcept;
    // Writes the options of the mapping table's object into the content document.
    void AddOptionsToXml() noexcept;

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

  private:
    // How a row is recorded (row_transfer.cpp).
    void record(const Row& row);
    void record_expression(const Row& row, std::wstring_view parameter, Tessera& content);
    void record_column(const Row& row, automation::BstrView parameter, Tessera& content,
                       std::int16_t lcid);
    void choose_unit(const Row& row);

    // How a query document is expanded (query_walk.cpp).
    void QContent(const Row& row, IKelosDocument* document) noexcept;
    class Expansion;
    struct Target;
    void transfer_column(const Row& row, const Target& target);
    // Nothing for an unknown number; the user is told of each once.
    const kelos::KnownProperty* GetProp(long number) noexcept;

    ArchiveNode contents_root_;
    automation::ComPtr<IKelosWorkset> workset_;
    automation::ComPtr<IKelosDocument> document_;
    FoundMappingTable mapping_table_;
    bool unit_given_by_host_ = false;  // the row's unit is a unit text already, not a label
    std::unordered_set<long> unknown_properties_;
    std::vector<IKelosDocument*> expanded_;  // the query documents that are being expanded
    ColumnDefinition column_;
};

}  // namespace tessera
