#include "script/line_marking.h"

#include <limits>
#include <stdexcept>

namespace tessera {
namespace {

std::int16_t position16(std::size_t position) {
    if (position > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max()))
        throw std::overflow_error("text position");
    return static_cast<std::int16_t>(position);
}

// Positions count from 1, as 0 stands for "not found".
std::int16_t find_line_feed(std::u16string_view text, std::int16_t from) {
    const std::size_t found = text.find(u'\n', static_cast<std::size_t>(from) - 1);
    return found == std::u16string_view::npos ? std::int16_t{0} : position16(found + 1);
}

}  // namespace

std::optional<Selection> line_selection(std::u16string_view text, std::int16_t line_feeds) {
    std::int16_t before = 0;
    for (std::int16_t i = 0; i < line_feeds; ++i) {
        before = find_line_feed(text, position16(static_cast<std::size_t>(before) + 1));
        if (before == 0) return std::nullopt;
    }
    std::int16_t end = find_line_feed(text, position16(static_cast<std::size_t>(before) + 1));
    if (end == 0) end = position16(text.size());
    return Selection{before, static_cast<std::int16_t>(end - before)};
}

}  // namespace tessera
