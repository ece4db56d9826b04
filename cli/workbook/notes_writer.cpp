#include "cli/workbook/notes_writer.h"

#include <algorithm>

#include "cli/text.h"
#include "cli/workbook/cell_note.h"
#include "cli/workbook/cell_text.h"

namespace cli {
namespace {

constexpr std::size_t block_size = 1024;

std::u16string number(std::int64_t value) {
    const std::string digits = std::to_string(value);
    return std::u16string(digits.begin(), digits.end());
}

// In characters of the notes' font, which are about as wide as those of the cells.
struct NoteSize {
    std::int64_t width = 0;
    std::int64_t lines = 0;
};

NoteSize size_of(std::u16string_view text) {
    constexpr std::int64_t least_width = 30;
    constexpr std::int64_t most_width = 60;
    NoteSize size{least_width, 0};
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(u'\n'), text.size());
        const auto length = static_cast<std::int64_t>(display_width(text.substr(0, end)));
        size.width = std::clamp(length, size.width, most_width);
        size.lines += 1 + length / most_width;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return size;
}

// Columns and rows between which the note is shown, to the right of its cell: left column, left
// offset, top row, top offset, right column, right offset, bottom row, bottom offset.
std::u16string anchor_of(const Note& note, const SheetLayout& layout) {
    constexpr std::int64_t offset = 15;  // in pixels
    constexpr std::int64_t character_width = 7;
    const NoteSize size = size_of(note.text);
    std::int32_t right = note.at.column;
    std::int64_t rest = size.width;
    for (; rest > layout.width_of(right + 1); ++right)
        rest -= layout.width_of(right + 1);
    const std::int32_t top = std::max(note.at.row - 2, 0);
    return number(note.at.column) + u"," + number(offset) + u"," + number(top) + u",2," +
           number(right) + u"," + number(offset + rest * character_width) + u"," +
           number(top + size.lines + 1) + u",2";
}

void write_element(
    XmlWriter& writer, std::u16string_view name,
    std::initializer_list<std::pair<std::u16string_view, std::u16string_view>> attributes) {
    writer.start(name);
    for (const auto& [attribute, value] : attributes)
        writer.attribute(attribute, value);
    writer.end();
}

void write_place(XmlWriter& writer, const Note& note, const SheetLayout& layout) {
    writer.start(u"x:ClientData");
    writer.attribute(u"ObjectType", u"Note");
    write_element(writer, u"x:MoveWithCells", {});
    write_element(writer, u"x:SizeWithCells", {});
    writer.text_element(u"x:Anchor", anchor_of(note, layout));
    writer.text_element(u"x:AutoFill", u"False");
    writer.text_element(u"x:Row", number(note.at.row - 1));
    writer.text_element(u"x:Column", number(note.at.column - 1));
    writer.end();
}

void write_shape(XmlWriter& writer, const Note& note, const SheetLayout& layout, std::size_t id) {
    writer.start(u"v:shape");
    writer.attribute(u"id", u"_x0000_s" + number(static_cast<std::int64_t>(id)));
    writer.attribute(u"type", u"#_x0000_t202");
    writer.attribute(u"style", u"position:absolute;visibility:hidden");
    writer.attribute(u"fillcolor", u"#ffffe1");
    writer.attribute(u"o:insetmode", u"auto");
    write_element(writer, u"v:fill", {{u"color2", u"#ffffe1"}});
    write_element(writer, u"v:shadow", {{u"color", u"black"}, {u"obscured", u"t"}});
    write_element(writer, u"v:path", {{u"o:connecttype", u"none"}});
    writer.start(u"v:textbox");
    write_element(writer, u"div", {{u"style", u"text-align:left"}});
    writer.end();
    write_place(writer, note, layout);
    writer.end();
}

// What the shapes refer to: which blocks of numbers they have, and that they are boxes of text.
void write_shape_types(XmlWriter& writer, std::size_t first_block, std::size_t blocks) {
    std::u16string numbers;
    for (std::size_t i = 0; i < blocks; ++i)
        numbers.append(i == 0 ? u"" : u",")
            .append(number(static_cast<std::int64_t>(first_block + i)));
    writer.start(u"o:shapelayout");
    writer.attribute(u"v:ext", u"edit");
    write_element(writer, u"o:idmap", {{u"v:ext", u"edit"}, {u"data", numbers}});
    writer.end();
    writer.start(u"v:shapetype");
    writer.attribute(u"id", u"_x0000_t202");
    writer.attribute(u"coordsize", u"21600,21600");
    writer.attribute(u"o:spt", u"202");
    writer.attribute(u"path", u"m,l,21600r21600,l21600,xe");
    write_element(writer, u"v:stroke", {{u"joinstyle", u"miter"}});
    write_element(writer, u"v:path", {{u"gradientshapeok", u"t"}, {u"o:connecttype", u"rect"}});
    writer.end();
}

}  // namespace

std::vector<Note> notes_of(const PlannedSheet& sheet) {
    std::vector<Note> notes;
    for (const PlannedCell& cell : sheet.cells)
        if (std::u16string text = note_text(cell); !text.empty())
            notes.push_back({cell.at, std::move(text)});
    return notes;
}

void write_comments(XmlWriter& writer, const std::vector<Note>& notes) {
    writer.start(u"comments");
    writer.attribute(u"xmlns", spreadsheet_namespace);
    writer.start(u"authors");
    writer.text_element(u"author", u"KelosTessera");
    writer.end();
    writer.start(u"commentList");
    for (const Note& note : notes) {
        writer.start(u"comment");
        writer.attribute(u"ref", cell_name(note.at));
        writer.attribute(u"authorId", 0);
        writer.start(u"text");
        writer.start(u"t", true);
        writer.attribute(u"xml:space", u"preserve");
        writer.text(escaped_cell_text(note.text));
        writer.end();
        writer.end();
        writer.end();
    }
    writer.end();
    writer.end();
}

std::size_t blocks_for(const std::vector<Note>& notes) noexcept {
    return notes.size() / block_size + 1;
}

void write_note_shapes(XmlWriter& writer, const std::vector<Note>& notes, const SheetLayout& layout,
                       std::size_t first_block) {
    writer.start(u"xml");
    writer.attribute(u"xmlns:v", u"urn:schemas-microsoft-com:vml");
    writer.attribute(u"xmlns:o", u"urn:schemas-microsoft-com:office:office");
    writer.attribute(u"xmlns:x", u"urn:schemas-microsoft-com:office:excel");
    write_shape_types(writer, first_block, blocks_for(notes));
    // The first number of a block stands for the drawing itself.
    std::size_t id = first_block * block_size;
    for (const Note& note : notes)
        write_shape(writer, note, layout, ++id);
    writer.end();
}

}  // namespace cli
