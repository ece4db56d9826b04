#include "cli/workbook/sheet_writer.h"

#include <algorithm>
#include <charconv>

#include "cli/package/package_writer.h"
#include "cli/workbook/cell_text.h"

namespace cli {
namespace {

void write_view(XmlWriter& writer, const SheetLayout& layout) {
    writer.start(u"sheetViews");
    writer.start(u"sheetView");
    writer.attribute(u"workbookViewId", 0);
    if (layout.header_rows > 0 || layout.header_columns > 0) {
        const bool has_rows = layout.header_rows > 0;
        const bool has_columns = layout.header_columns > 0;
        writer.start(u"pane");
        if (has_columns) writer.attribute(u"xSplit", layout.header_columns);
        if (has_rows) writer.attribute(u"ySplit", layout.header_rows);
        writer.attribute(u"topLeftCell",
                         cell_name({layout.header_columns + 1, layout.header_rows + 1}));
        writer.attribute(u"activePane", !has_columns ? u"bottomLeft"
                                        : has_rows   ? u"bottomRight"
                                                     : u"topRight");
        writer.attribute(u"state", u"frozen");
        writer.end();
    }
    writer.end();
    writer.end();
}

void write_columns(XmlWriter& writer, const SheetLayout& layout) {
    writer.start(u"sheetFormatPr");
    writer.attribute(u"defaultRowHeight", 15);
    writer.end();
    if (layout.widths.empty()) return;
    writer.start(u"cols");
    for (const auto& [column, width] : layout.widths) {
        writer.start(u"col");
        writer.attribute(u"min", column);
        writer.attribute(u"max", column);
        writer.attribute(u"width", width);
        writer.attribute(u"customWidth", 1);
        writer.end();
    }
    writer.end();
}

void write_rows(XmlWriter& writer, const PlannedSheet& sheet, StyleSheet& styles) {
    writer.start(u"sheetData");
    std::int32_t row = 0;
    for (const PlannedCell& cell : sheet.cells) {
        if (cell.at.row != row) {
            if (row != 0) writer.end();
            row = cell.at.row;
            writer.start(u"row");
            writer.attribute(u"r", row);
        }
        write_cell(writer, cell, styles.index_of(style_of(cell)));
    }
    if (row != 0) writer.end();
    writer.end();
}

void write_drop_downs(XmlWriter& writer, const PlannedSheet& sheet, DropDowns& drop_downs) {
    const auto offered = offered_lists(sheet);
    if (offered.empty()) return;
    writer.start(u"dataValidations");
    writer.attribute(u"count", static_cast<std::int64_t>(offered.size()));
    for (const auto& [texts, cells] : offered) {
        writer.start(u"dataValidation");
        writer.attribute(u"type", u"list");
        writer.attribute(u"allowBlank", 1);
        writer.attribute(u"showErrorMessage", 1);
        writer.attribute(u"errorTitle", u"Not in the list");
        writer.attribute(u"error", u"Choose one of the list's texts, or leave the cell empty.");
        writer.attribute(u"sqref", cells);
        writer.text_element(u"formula1", escaped_cell_text(drop_downs.formula_of(texts)));
        writer.end();
    }
    writer.end();
}

void write_print_setup(XmlWriter& writer, const SheetLayout& layout) {
    writer.start(u"pageMargins");
    for (const std::u16string_view side : {u"left", u"right"})
        writer.attribute(side, u"0.4");
    for (const std::u16string_view side : {u"top", u"bottom"})
        writer.attribute(side, u"0.6");
    for (const std::u16string_view side : {u"header", u"footer"})
        writer.attribute(side, u"0.3");
    writer.end();
    writer.start(u"pageSetup");
    writer.attribute(u"paperSize", 9);
    writer.attribute(u"orientation", u"landscape");
    writer.attribute(u"fitToWidth", layout.pages_wide);
    writer.attribute(u"fitToHeight", 0);
    writer.end();
    writer.start(u"headerFooter");
    writer.text_element(u"oddFooter", u"&L&F&C&A&R&P / &N");
    writer.end();
}

std::u16string number_text(double number) {
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, number).ptr;
    return std::u16string(text, end);
}

void write_value(XmlWriter& writer, std::u16string_view type, std::u16string_view value) {
    if (!type.empty()) writer.attribute(u"t", type);
    writer.text_element(u"v", value);
}

// Blanks at the ends and line ends are a part of the text.
void write_inline_text(XmlWriter& writer, std::u16string_view text) {
    writer.attribute(u"t", u"inlineStr");
    writer.start(u"is");
    writer.start(u"t", true);
    writer.attribute(u"xml:space", u"preserve");
    writer.text(escaped_cell_text(text));
    writer.end();
    writer.end();
}

}  // namespace

void write_protection(XmlWriter& writer) {
    writer.start(u"sheetProtection");
    writer.attribute(u"sheet", 1);
    for (const std::u16string_view allowed : {u"formatCells", u"formatColumns", u"formatRows"})
        writer.attribute(allowed, 0);
    writer.end();
}

void write_cell(XmlWriter& writer, const PlannedCell& cell, std::size_t style) {
    writer.start(u"c");
    writer.attribute(u"r", cell_name(cell.at));
    if (style != 0) writer.attribute(u"s", static_cast<std::int64_t>(style));
    switch (cell.content.kind) {
        case CellContent::Kind::blank:
            break;
        case CellContent::Kind::number:
        case CellContent::Kind::date:
            write_value(writer, {}, number_text(cell.content.number));
            break;
        case CellContent::Kind::boolean:
            write_value(writer, u"b", cell.content.number == 0 ? u"0" : u"1");
            break;
        case CellContent::Kind::text:
            write_inline_text(writer, cell.content.text);
            break;
    }
    writer.end();
}

void write_text_cell(XmlWriter& writer, const CellAddress& at, std::u16string_view text) {
    writer.start(u"c");
    writer.attribute(u"r", cell_name(at));
    write_inline_text(writer, text);
    writer.end();
}

void write_lists_sheet(XmlWriter& writer, const std::vector<DropDowns::NamedList>& lists) {
    std::size_t rows = 0;
    for (const DropDowns::NamedList& list : lists)
        rows = std::max(rows, list.texts.size());
    writer.start(u"worksheet");
    writer.attribute(u"xmlns", spreadsheet_namespace);
    writer.start(u"sheetData");
    for (std::size_t row = 0; row < rows; ++row) {
        writer.start(u"row");
        writer.attribute(u"r", static_cast<std::int64_t>(row + 1));
        for (std::size_t i = 0; i < lists.size(); ++i)
            if (row < lists[i].texts.size())
                write_text_cell(
                    writer, {static_cast<std::int32_t>(i + 1), static_cast<std::int32_t>(row + 1)},
                    lists[i].texts[row]);
        writer.end();
    }
    writer.end();
    writer.end();
}

void write_sheet(XmlWriter& writer, const PlannedSheet& sheet, const SheetLayout& layout,
                 SharedParts& shared, std::u16string_view notes) {
    writer.start(u"worksheet");
    writer.attribute(u"xmlns", spreadsheet_namespace);
    writer.attribute(u"xmlns:r", office_relationships);
    writer.start(u"sheetPr");
    writer.start(u"pageSetUpPr");
    writer.attribute(u"fitToPage", 1);
    writer.end();
    writer.end();
    write_view(writer, layout);
    write_columns(writer, layout);
    write_rows(writer, sheet, shared.styles);
    write_protection(writer);
    write_drop_downs(writer, sheet, shared.drop_downs);
    write_print_setup(writer, layout);
    if (!notes.empty()) {
        writer.start(u"legacyDrawing");
        writer.attribute(u"r:id", notes);
        writer.end();
    }
    writer.end();
}

}  // namespace cli
