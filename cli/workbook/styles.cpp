#include "cli/workbook/styles.h"

#include <cmath>

#include "cli/text.h"
#include "cli/workbook/cell_text.h"
#include "cli/workbook/number_format.h"

namespace cli {
namespace {

// What every program knows by number, and shows dates of in its user's own form.
struct KnownFormat {
    std::u16string_view code;
    std::int64_t id;
};
constexpr KnownFormat known_formats[] = {
    {u"General", 0},      {u"0", 1},  {u"0.00", 2}, {u"mm-dd-yy", 14}, {u"h:mm:ss", 21},
    {u"m/d/yy h:mm", 22}, {u"@", 49},
};
constexpr std::int64_t first_own_format = 164;

// Programs before 2010 show long texts of this format as "####".
constexpr std::size_t longest_of_text_format = 255;

std::u16string date_format(double serial) {
    if (serial < 1) return u"h:mm:ss";
    return serial == std::floor(serial) ? u"mm-dd-yy" : u"m/d/yy h:mm";
}

std::u16string format_of(const PlannedCell& cell) {
    const CellContent& content = cell.content;
    const ArchivedValue& value = cell.record->cell_value();
    const bool is_number = content.kind == CellContent::Kind::number;
    if (content.kind == CellContent::Kind::date) return date_format(content.number);
    if (is_number || (value.is_number() && !cell.record->is_value_list())) {
        const bool is_shown_so =
            is_number && !cell.record->document_value.holds_value() && !cell.record->items.empty();
        return number_format(content.number,
                             is_shown_so ? cell.record->display_value().text : std::u16string(),
                             cell.unit);
    }
    const bool is_text = (value.is_text() || cell.record->is_value_list()) &&
                         content.text.size() <= longest_of_text_format;
    return is_text ? u"@" : u"General";
}

std::int64_t known_format(std::u16string_view code) {
    for (const KnownFormat& known : known_formats)
        if (known.code == code) return known.id;
    return -1;
}

void write_element(XmlWriter& writer, std::u16string_view name, std::u16string_view attribute,
                   std::u16string_view value) {
    writer.start(name);
    writer.attribute(attribute, value);
    writer.end();
}

void write_font(XmlWriter& writer, bool is_bold) {
    writer.start(u"font");
    if (is_bold) {
        writer.start(u"b");
        writer.end();
    }
    write_element(writer, u"sz", u"val", u"11");
    write_element(writer, u"name", u"val", u"Calibri");
    write_element(writer, u"family", u"val", u"2");
    writer.end();
}

void write_fill(XmlWriter& writer, std::u16string_view pattern, std::u16string_view color) {
    writer.start(u"fill");
    writer.start(u"patternFill");
    writer.attribute(u"patternType", pattern);
    if (!color.empty()) write_element(writer, u"fgColor", u"rgb", color);
    writer.end();
    writer.end();
}

void write_border(XmlWriter& writer, bool is_drawn) {
    writer.start(u"border");
    for (const std::u16string_view side : {u"left", u"right", u"top", u"bottom", u"diagonal"}) {
        writer.start(side);
        if (is_drawn && side != u"diagonal") {
            writer.attribute(u"style", u"thin");
            write_element(writer, u"color", u"rgb", u"FFBFBFBF");
        }
        writer.end();
    }
    writer.end();
}

// The order is that of CellRole, behind what the form wants to come first.
void write_looks(XmlWriter& writer) {
    writer.start(u"fonts");
    writer.attribute(u"count", 2);
    write_font(writer, false);
    write_font(writer, true);
    writer.end();
    writer.start(u"fills");
    writer.attribute(u"count", 4);
    write_fill(writer, u"none", {});
    write_fill(writer, u"gray125", {});
    write_fill(writer, u"solid", u"FFDCE6F1");
    write_fill(writer, u"solid", u"FFEDEDED");
    writer.end();
    writer.start(u"borders");
    writer.attribute(u"count", 2);
    write_border(writer, false);
    write_border(writer, true);
    writer.end();
}

struct Look {
    std::int64_t font;
    std::int64_t fill;
    std::int64_t border;
};

Look look_of(CellRole role) {
    switch (role) {
        case CellRole::heading:
            return {1, 2, 1};
        case CellRole::output:
            return {0, 3, 1};
        case CellRole::input:
            return {0, 0, 1};
    }
    return {};
}

void write_cell_style(XmlWriter& writer, const CellStyle& style, std::int64_t format) {
    const Look look = look_of(style.role);
    writer.start(u"xf");
    writer.attribute(u"numFmtId", format);
    writer.attribute(u"fontId", look.font);
    writer.attribute(u"fillId", look.fill);
    writer.attribute(u"borderId", look.border);
    writer.attribute(u"xfId", 0);
    if (style.is_quoted) writer.attribute(u"quotePrefix", 1);
    for (const std::u16string_view part : {u"applyNumberFormat", u"applyFont", u"applyFill",
                                           u"applyBorder", u"applyAlignment", u"applyProtection"})
        writer.attribute(part, 1);
    writer.start(u"alignment");
    writer.attribute(u"vertical", u"top");
    if (style.is_wrapped) writer.attribute(u"wrapText", 1);
    writer.end();
    writer.start(u"protection");
    writer.attribute(u"locked", style.role == CellRole::input ? 0 : 1);
    writer.end();
    writer.end();
}

}  // namespace

CellStyle style_of(const PlannedCell& cell) {
    const std::u16string& text = cell.content.text;
    const bool is_text = cell.content.kind == CellContent::Kind::text;
    return {cell.role, format_of(cell),
            is_text && (text.find(u'\n') != text.npos || display_width(text) > widest_column),
            is_text && would_be_reinterpreted(text)};
}

std::size_t StyleTable::index_of(const CellStyle& style) {
    const auto [known, is_new] = known_.try_emplace(style, styles_.size() + 1);
    if (is_new) {
        styles_.push_back(style);
        if (known_format(style.format) < 0)
            formats_.try_emplace(style.format,
                                 first_own_format + static_cast<std::int64_t>(formats_.size()));
    }
    return known->second;
}

void StyleTable::write(XmlWriter& writer) const {
    writer.start(u"styleSheet");
    writer.attribute(u"xmlns", spreadsheet_namespace);
    write_formats(writer);
    write_looks(writer);
    writer.start(u"cellStyleXfs");
    writer.attribute(u"count", 1);
    writer.start(u"xf");
    for (const std::u16string_view part : {u"numFmtId", u"fontId", u"fillId", u"borderId"})
        writer.attribute(part, 0);
    writer.end();
    writer.end();
    write_cell_styles(writer);
    writer.start(u"cellStyles");
    writer.attribute(u"count", 1);
    writer.start(u"cellStyle");
    writer.attribute(u"name", u"Normal");
    writer.attribute(u"xfId", 0);
    writer.attribute(u"builtinId", 0);
    writer.end();
    writer.end();
    writer.end();
}

void StyleTable::write_formats(XmlWriter& writer) const {
    if (formats_.empty()) return;
    writer.start(u"numFmts");
    writer.attribute(u"count", static_cast<std::int64_t>(formats_.size()));
    for (const auto& [code, id] : formats_) {
        writer.start(u"numFmt");
        writer.attribute(u"numFmtId", id);
        writer.attribute(u"formatCode", code);
        writer.end();
    }
    writer.end();
}

void StyleTable::write_cell_styles(XmlWriter& writer) const {
    writer.start(u"cellXfs");
    writer.attribute(u"count", static_cast<std::int64_t>(styles_.size() + 1));
    writer.start(u"xf");
    for (const std::u16string_view part : {u"numFmtId", u"fontId", u"fillId", u"borderId", u"xfId"})
        writer.attribute(part, 0);
    writer.end();
    for (const CellStyle& style : styles_) {
        const std::int64_t known = known_format(style.format);
        write_cell_style(writer, style, known < 0 ? formats_.at(style.format) : known);
    }
    writer.end();
}

}  // namespace cli
