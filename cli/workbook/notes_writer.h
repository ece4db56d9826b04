// Writes the notes of a sheet: their texts, and the drawing that says where each is shown.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cli/workbook/sheet_layout.h"
#include "cli/xml_writer.h"

namespace cli {

struct Note {
    CellAddress at;
    std::u16string text;
};

std::vector<Note> notes_of(const PlannedSheet& sheet);

void write_comments(XmlWriter& writer, const std::vector<Note>& notes);

// Shapes have numbers that are unique in the workbook, in blocks of 1024. `first_block` is the
// sheet's first one, from 1.
std::size_t blocks_for(const std::vector<Note>& notes) noexcept;
void write_note_shapes(XmlWriter& writer, const std::vector<Note>& notes, const SheetLayout& layout,
                       std::size_t first_block);

}  // namespace cli
