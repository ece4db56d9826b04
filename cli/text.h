// Text as a terminal can be given it, how wide that is, and what text is written to.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cli {

class TextSink {
  public:
    virtual ~TextSink() = default;
    // Throws Failure when the text cannot be written.
    virtual void write(std::u16string_view text) = 0;
};

// The text in one line that a terminal shows and does not obey: control characters become their
// pictures, characters that would turn or hide what stands around them become "<U+202E>".
std::u16string visible(std::u16string_view text);

// Columns that a terminal needs for a visible text.
std::size_t display_width(std::u16string_view text) noexcept;
// The text, or its beginning and an ellipsis, in at most `width` columns.
std::u16string cut_to(std::u16string_view text, std::size_t width);

}  // namespace cli
