#include "query/query_complete.h"

#include <string>

#include "automation/conversion.h"
#include "content/tessera_content.h"
#include "query/row_xml.h"

namespace tessera {

using automation::Bstr;
using automation::ComPtr;
using automation::get;
using automation::Variant;

namespace {

std::int16_t short_lcid(long lcid) {
    return automation::to_short(Variant(lcid));
}

void set_pointer(Tessera& content, int row, int column) {
    content.document().set_pointer(std::to_wstring(row) + L";" + std::to_wstring(column));
}

void write_heading(const ComPtr<IKelosQColumnDef>& definition, std::int16_t lcid, int column,
                   const ArchiveNode& contents_root) {
    const auto content = automation::make<Tessera>();
    Variant heading(get(definition, &IKelosQColumnDef::get_Heading));
    content->value().set_lcid(lcid);
    content->value().set_kelos_value(uccVBString, std::move(heading));
    set_pointer(*content, 0, column);
    content->write_below(contents_root);
}

// Names and parameters for reading come first: those for writing back are theirs until set.
void fill_property(const ComPtr<IKelosQColumnDef>& definition, Property& property) {
    property.set_get_name(get(definition, &IKelosQColumnDef::get_GetName).view());
    property.set_get_parameter(get(definition, &IKelosQColumnDef::get_GetParameter));
    property.set_query_property(
        static_cast<KelosQueryProperty>(get(definition, &IKelosQColumnDef::get_PropertyConstant)));
    const Bstr set_name = get(definition, &IKelosQColumnDef::get_SetName);
    if (set_name.empty()) return;
    property.set_set_name(set_name.view());
    property.set_set_parameter(get(definition, &IKelosQColumnDef::get_SetParameter));
}

// The cell's value, or its text in place of an object that the archive could not hold.
Variant archivable(const Variant& value, const Bstr& text) {
    if (!value.is_object()) return value;
    const bool is_host_object = value.vt == VT_DISPATCH && value.object().try_as<IKelosObject>();
    return is_host_object ? value : Variant(text);
}

ComPtr<ValueItem> value_item(const Variant& value, const Bstr& text, std::int16_t lcid) {
    auto item = automation::make<ValueItem>();
    item->set_lcid(lcid);
    item->SetValue(uccVBString, value);
    item->SetDisplayValue(uccVBString, Variant(text));
    return item;
}

// One run over the query.
class QueryContents {
  public:
    QueryContents(HQuery& cursor, const ArchiveNode& root)
        : cursor_(cursor),
          root_(root),
          lcid_(short_lcid(cursor.lcid(nullptr))),
          columns_(cursor.column_count()) {}

    void write_headings() {
        for (int i = 1; i <= columns_; ++i)
            write_heading(cursor_.column(static_cast<std::int16_t>(i)), lcid_, i, root_);
    }

    void write_row(int row) {
        if (!cursor_.current_query()) return;
        for (int j = 1; j <= columns_; ++j) {
            const auto column = static_cast<std::int16_t>(j);
            const auto definition = cursor_.column(column);
            if (const auto cell = cursor_.cell(column)) write_cell(cell, definition, row, j);
        }
    }

  private:
    void write_cell(const ComPtr<IKelosCell>& cell, const ComPtr<IKelosQColumnDef>& definition,
                    int row, int column) {
        const auto content = automation::make<Tessera>();
        const CellReference reference(cell);
        if (reference.object()) content->kelos_object().set_object(reference.object().get());
        fill_property(definition, content->property());

        const Bstr text = get(cell, &IKelosCell::get_Text);
        const Variant value = archivable(reference.value(), text);
        content->value().set_lcid(lcid_);
        content->value().set_kelos_value(uccVBString, value);
        const std::int16_t column_lcid = short_lcid(cursor_.lcid(definition.get()));
        content->value_items().append(value_item(value, text, column_lcid));
        set_pointer(*content, row, column);
        content->write_below(root_);
    }

    HQuery& cursor_;
    const ArchiveNode& root_;
    std::int16_t lcid_;
    std::int16_t columns_;
};

}  // namespace

void write_query(HQuery& cursor, const ArchiveNode& contents_root) {
    QueryContents contents(cursor, contents_root);
    contents.write_headings();
    for (int row = 1;; ++row) {
        if (cursor.is_at_end() || cursor.state() == uccStateAbort) return;
        contents.write_row(row);
        // After a failed move the next one passes over what failed, so that no row comes twice.
        if (!cursor.move_next()) cursor.move_next();
    }
}

}  // namespace tessera
