// The XML that describes a query's columns, and the XML of one row.
#pragma once

#include "automation/dom.h"
#include "query/hquery.h"

namespace tessera {

// The host object that a cell refers to: itself, or through a value that stands for a text of the
// object (a "TranslateObject").
class CellReference {
  public:
    explicit CellReference(const automation::ComPtr<IKelosCell>& cell);

    const automation::Variant& value() const noexcept { return value_; }
    const automation::ComPtr<IKelosObject>& object() const noexcept { return object_; }
    // The translate object, or nothing.
    const automation::ComPtr<IDispatch>& translation() const noexcept { return translation_; }

  private:
    automation::Variant value_;
    automation::ComPtr<IDispatch> translation_;
    automation::ComPtr<IKelosObject> object_;
};

// Writes the title "Columns" into an empty document: what the relevant columns say of themselves,
// and the relation of their numbers to their names.
void write_columns(HQuery& cursor, const dom::Document& document);

// The document "Row" of the current row, or nothing when none of its relevant columns has a cell.
// The document has no declaration, so that its text can follow one.
dom::Document row_document(HQuery& cursor);

}  // namespace tessera
