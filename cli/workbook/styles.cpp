#include "cli/workbook/styles.h"

#include <algorithm>
#include <cmath>

#include "cli/fragment.h"
#include "cli/package/markup.h"
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

// Not every program shows a boolean as one: some show the number that it is for them.
constexpr std::u16string_view boolean_format = u"\"TRUE\";\"TRUE\";\"FALSE\"";

std::u16string date_format(double serial) {
    if (serial < 1) return u"h:mm:ss";
    return serial == std::floor(serial) ? u"mm-dd-yy" : u"m/d/yy h:mm";
}

std::u16string format_of(const PlannedCell& cell) {
    const CellContent& content = cell.content;
    const ArchivedValue& value = cell.record->cell_value();
    const bool is_number = content.kind == CellContent::Kind::number;
    if (content.kind == CellContent::Kind::date) return date_format(content.number);
    if (content.kind == CellContent::Kind::boolean) return std::u16string(boolean_format);
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

// What our styles look like. A style sheet gets all of it at once, so that each has its place
// behind what was there: the plain font and the bold one, the colours of headings and of output, a
// frame.
void write_fonts(XmlWriter& writer) {
    for (const bool is_bold : {false, true}) {
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
}

void write_fills(XmlWriter& writer) {
    for (const std::u16string_view color : {u"FFDCE6F1", u"FFEDEDED"}) {
        writer.start(u"fill");
        writer.start(u"patternFill");
        writer.attribute(u"patternType", u"solid");
        write_element(writer, u"fgColor", u"rgb", color);
        writer.end();
        writer.end();
    }
}

void write_frame(XmlWriter& writer) {
    writer.start(u"border");
    for (const std::u16string_view side : {u"left", u"right", u"top", u"bottom"}) {
        writer.start(side);
        writer.attribute(u"style", u"thin");
        write_element(writer, u"color", u"rgb", u"FFBFBFBF");
        writer.end();
    }
    writer.start(u"diagonal");
    writer.end();
    writer.end();
}

// Places in the lists of a style sheet.
struct Look {
    std::size_t font;
    std::size_t fill;
    std::size_t border;
};

// Where it stands by itself, too, but with room to what stands beside it.
std::u16string_view side_of(CellContent::Kind kind) {
    switch (kind) {
        case CellContent::Kind::number:
        case CellContent::Kind::date:
            return u"right";
        case CellContent::Kind::text:
            return u"left";
        case CellContent::Kind::boolean:
        case CellContent::Kind::blank:
            break;
    }
    return {};
}

void write_cell_style(XmlWriter& writer, const CellStyle& style, const Look& look,
                      std::int64_t format) {
    writer.start(u"xf");
    writer.attribute(u"numFmtId", format);
    writer.attribute(u"fontId", static_cast<std::int64_t>(look.font));
    writer.attribute(u"fillId", static_cast<std::int64_t>(look.fill));
    writer.attribute(u"borderId", static_cast<std::int64_t>(look.border));
    writer.attribute(u"xfId", 0);
    if (style.is_quoted) writer.attribute(u"quotePrefix", 1);
    for (const std::u16string_view part : {u"applyNumberFormat", u"applyFont", u"applyFill",
                                           u"applyBorder", u"applyAlignment", u"applyProtection"})
        writer.attribute(part, 1);
    writer.start(u"alignment");
    if (const std::u16string_view side = side_of(style.kind); !side.empty()) {
        writer.attribute(u"horizontal", side);
        writer.attribute(u"indent", 1);
    }
    writer.attribute(u"vertical", u"top");
    if (style.is_wrapped) writer.attribute(u"wrapText", 1);
    writer.end();
    writer.start(u"protection");
    writer.attribute(u"locked", style.role == CellRole::input ? 0 : 1);
    writer.end();
    writer.end();
}

std::size_t count_children(std::string_view text, std::string_view list) {
    const auto element = markup::find(text, list);
    if (!element || element->is_empty) return 0;
    std::size_t count = 0;
    markup::Scanner scanner(text, element->end);
    for (auto child = scanner.next(); child && !child->is_end; child = scanner.next()) {
        scanner = markup::Scanner(text, markup::end_of(text, *child));
        ++count;
    }
    return count;
}

// Adds to a list of the style sheet, which has it unless it is that of the number formats.
void add_to_list(std::string& text, std::string_view list, const std::string& children,
                 std::size_t count) {
    const auto root = markup::find(text, "styleSheet");
    if (!root || count == 0) return;
    auto element = markup::find(text, list);
    if (!element) {
        const std::string empty =
            "<" + std::string(root->prefix).append(list).append(" count=\"0\"/>");
        text.insert(root->end, empty);
        element = markup::find(text, list);
    }
    text = markup::with_children(text, *element, markup::prefixed(children, root->prefix), count);
}

}  // namespace

const std::string_view StyleSheet::plain_styles =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
    "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
    "<fonts count=\"1\"><font><sz val=\"11\"/><name val=\"Calibri\"/><family val=\"2\"/></font>"
    "</fonts><fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill><fill>"
    "<patternFill patternType=\"gray125\"/></fill></fills>"
    "<borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders>"
    "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/>"
    "</cellStyleXfs><cellXfs count=\"1\">"
    "<xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/></cellXfs>"
    "<cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/></cellStyles>"
    "</styleSheet>";

CellStyle style_of(const PlannedCell& cell) {
    const std::u16string& text = cell.content.text;
    const bool is_text = cell.content.kind == CellContent::Kind::text;
    return {cell.role, format_of(cell), cell.content.kind,
            is_text && (text.find(u'\n') != text.npos || display_width(text) > widest_column),
            is_text && would_be_reinterpreted(text)};
}

bool is_number_format(std::u16string_view code) noexcept {
    return code != u"General" && code != u"@";
}

StyleSheet::StyleSheet(std::string_view text) : text_(text), next_format_(first_own_format) {
    fonts_ = count_children(text_, "fonts");
    fills_ = count_children(text_, "fills");
    borders_ = count_children(text_, "borders");
    markup::Scanner scanner(text_);
    while (const auto tag = scanner.next())
        if (tag->is_start_of("numFmt"))
            next_format_ = std::max<std::int64_t>(next_format_,
                                                  markup::number(*tag, "numFmtId").value_or(0) + 1);
    const auto list = markup::find(text_, "cellXfs");
    if (!list || list->is_empty) return;
    scanner = markup::Scanner(text_, list->end);
    for (auto child = scanner.next(); child && !child->is_end; child = scanner.next()) {
        const std::size_t end = markup::end_of(text_, *child);
        cell_styles_.push_back(text_.substr(child->begin, end - child->begin));
        scanner = markup::Scanner(text_, end);
    }
}

std::size_t StyleSheet::index_of(const CellStyle& style) {
    const auto [known, is_new] = known_.try_emplace(style);
    if (is_new) add(own_style(style), known->second);
    return known->second;
}

std::size_t StyleSheet::showing(std::size_t style, const std::u16string& format) {
    if (style >= cell_styles_.size()) return style;
    const auto tag = markup::find(cell_styles_[style], "xf");
    if (!tag || markup::number(*tag, "numFmtId").value_or(0) != 0) return style;
    const auto [known, is_new] = shown_.try_emplace({style, format});
    if (!is_new) return known->second;
    std::string changed =
        markup::with_attribute(*tag, "numFmtId", std::to_string(format_id(format)));
    const auto changed_tag = markup::find(changed, "xf");
    changed = markup::with_attribute(*changed_tag, "applyNumberFormat", "1");
    add(changed + cell_styles_[style].substr(tag->end), known->second);
    return known->second;
}

// Prefixes of elements that exist stay; ours get theirs when the text is put together.
std::string StyleSheet::text() const {
    std::string text = text_;
    std::string formats = fragment([&](XmlWriter& writer) {
        for (const auto& [code, id] : formats_) {
            writer.start(u"numFmt");
            writer.attribute(u"numFmtId", id);
            writer.attribute(u"formatCode", code);
            writer.end();
        }
    });
    add_to_list(text, "numFmts", formats, formats_.size());
    if (!known_.empty()) {
        add_to_list(text, "fonts", fragment(write_fonts), 2);
        add_to_list(text, "fills", fragment(write_fills), 2);
        add_to_list(text, "borders", fragment(write_frame), 1);
    }
    std::string styles;
    for (const std::string& style : added_)
        styles += style;
    const auto list = markup::find(text, "cellXfs");
    return list && !added_.empty() ? markup::with_children(text, *list, styles, added_.size())
                                   : text;
}

std::int64_t StyleSheet::format_id(const std::u16string& code) {
    if (const std::int64_t known = known_format(code); known >= 0) return known;
    const auto [known, is_new] = formats_.try_emplace(code, next_format_);
    if (is_new) ++next_format_;
    return known->second;
}

void StyleSheet::add(std::string element, std::size_t& index) {
    index = cell_styles_.size() + added_.size();
    added_.push_back(std::move(element));
}

std::string StyleSheet::own_style(const CellStyle& style) {
    const std::size_t plain = fonts_;
    const std::size_t frame = borders_;
    Look look{};
    switch (style.role) {
        case CellRole::heading:
            look = {plain + 1, fills_, 0};
            break;
        case CellRole::output:
            look = {plain, fills_ + 1, frame};
            break;
        case CellRole::input:
            look = {plain, 0, frame};
            break;
    }
    const auto root = markup::find(text_, "styleSheet");
    const std::int64_t format = format_id(style.format);
    const std::string element =
        fragment([&](XmlWriter& writer) { write_cell_style(writer, style, look, format); });
    return markup::prefixed(element, root ? root->prefix : std::string_view());
}

}  // namespace cli
