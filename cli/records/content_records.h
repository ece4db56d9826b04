// The content document as plain data: which value of which object belongs into which cell.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cli/records/cell_pointer.h"
#include "host/known_properties.h"

namespace cli {

// A value as it is archived: the name of its type and its text. Numbers and dates have the form of
// the user's locale, texts have LF for their line ends. Without a type the item is missing.
struct ArchivedValue {
    std::u16string type;
    std::u16string text;

    // "Empty" and "Null" hold nothing, nor does an item that is missing; an empty text is a value.
    bool holds_value() const noexcept;
    bool is_text() const noexcept { return type == u"String"; }
    bool is_number() const noexcept;

    bool operator==(const ArchivedValue&) const = default;
};

// All empty for a fixed value, which comes from no object.
struct ObjectRecord {
    std::u16string uid;
    long system_type = 0;
    std::u16string path;

    bool operator==(const ObjectRecord&) const = default;
};

struct PropertyRecord {
    std::u16string name;  // it is read under; a known property, the number of one, an expression
    std::u16string write_name;
    ArchivedValue parameter;
    ArchivedValue write_parameter;
    std::u16string unit;  // the unit's text, "PRESSURE.BAR"
    long query_property = 0;

    bool operator==(const PropertyRecord&) const = default;
};

struct ListItem {
    long lcid = 0;
    ArchivedValue value;
    ArchivedValue display;

    bool operator==(const ListItem&) const = default;
};

enum class PropertyKind {
    none,        // a fixed value
    known,       // one of the table of known properties, in any case
    numbered,    // a number of the host's own properties
    expression,  // anything else: evaluated by the script engine
};

struct ContentRecord {
    std::size_t number = 0;  // of the "Content" element among its like, from 1
    ObjectRecord object;
    PropertyRecord property;
    CellPointer pointer;
    long lcid = 0;
    ArchivedValue value;           // of expressions and fixed values; others have items
    ArchivedValue document_value;  // what stands, or shall stand, in the cell
    std::u16string direction;      // "I" into the project, "O" out of it, "IO"; empty: not said
    bool all_values_numeric = false;
    bool empty_numeric_value_stays_empty = false;
    // The value itself; of a value list, all its entries, the current one first.
    std::vector<ListItem> items;
    long presentation = 0;  // how the host shows the list; 0: it is none

    PropertyKind property_kind() const;
    bool is_value_list() const noexcept { return presentation != 0 && !items.empty(); }
    bool goes_out() const noexcept { return direction.find_first_of(u"Oo") != direction.npos; }
    bool comes_in() const noexcept { return direction.find_first_of(u"Ii") != direction.npos; }

    // The value in the project, and how a user reads it there.
    const ArchivedValue& host_value() const noexcept;
    const ArchivedValue& display_value() const noexcept;
    // What belongs into the cell: the document value if there is one, else the project's.
    const ArchivedValue& cell_value() const noexcept;
};

struct ContentRecords {
    std::vector<ContentRecord> contents;
    bool allows_sheet_creation = false;
};

// The known property of this name, in any case, or of this number; nothing for an expression.
const kelos::KnownProperty* known_property(std::u16string_view name);

// "GetXValue(2)": the property's name with its parameter, if it has one.
std::u16string property_text(const PropertyRecord& property);

}  // namespace cli
