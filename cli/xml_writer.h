// Writes an XML 1.0 document as text, whatever its names and values were made of.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cli/text.h"

namespace cli {

// Lines are for people, and left out where only programs read.
enum class XmlLayout { lines, compact };

// Every element begins on a line of its own, except inside elements that are said to hold text.
// Characters that XML 1.0 does not allow are written as U+FFFD and counted. A carriage return, and
// in attributes every line end and tab, is written as a reference: parsers change the others.
class XmlWriter {
  public:
    explicit XmlWriter(TextSink& sink, XmlLayout layout = XmlLayout::lines)
        : sink_(sink), layout_(layout) {}

    void declaration(std::u16string_view encoding);
    void start(std::u16string_view name, bool holds_text = false);
    // After `start`, before anything else.
    void attribute(std::u16string_view name, std::u16string_view value);
    void attribute(std::u16string_view name, std::int64_t value);
    void text(std::u16string_view value);
    // An element that holds nothing else.
    void text_element(std::u16string_view name, std::u16string_view value);
    void end();
    // Ends the last line and hands everything to the sink.
    void finish();
    // Hands over what is written so far.
    void flush();

    std::size_t replaced() const noexcept { return replaced_; }

  private:
    struct Open {
        std::size_t name_length;
        bool holds_text;
        bool has_content = false;
    };

    void begin_content();
    void break_line(std::size_t depth);
    void escape(std::u16string_view value, bool in_attribute);

    TextSink& sink_;
    XmlLayout layout_;
    std::u16string buffer_;
    std::vector<Open> open_;
    // Of the open elements, one after the other: a string for each would take longer than to write
    // it.
    std::u16string names_;
    bool in_tag_ = false;
    std::size_t replaced_ = 0;
};

}  // namespace cli
