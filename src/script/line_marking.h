// Which characters of a text box to select in order to mark a line.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tessera {

struct Selection {
    std::int16_t start;
    std::int16_t length;
};

// The line after the given number of line feeds, its own line feed included; nothing when the text
// has fewer. Positions have 16 bits: std::overflow_error when the line lies further back.
std::optional<Selection> line_selection(std::u16string_view text, std::int16_t line_feeds);

}  // namespace tessera
