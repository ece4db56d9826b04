// Reads the text that the platform's XML parser writes of an element: well-formed, but for
// characters that XML does not allow and that the parser takes all the same. A strict parser
// (package/xml_events.h) would refuse those.
#pragma once

#include <string>
#include <string_view>

namespace cli {

// A tag, or text; what is read next is inside the element of a tag that opens one.
class ElementTextHandler {
  public:
    virtual void start(std::u16string_view name) = 0;
    // Of the element that started last.
    virtual void attribute(std::u16string_view name, std::u16string_view value) = 0;
    virtual void text(std::u16string_view value) = 0;
    virtual void end() = 0;

  protected:
    ~ElementTextHandler() = default;
};

// Values come without references and with line feeds for line ends. Comments and processing
// instructions are passed over. Text that breaks off ends there.
void read_element_text(std::u16string_view xml, ElementTextHandler& handler);

}  // namespace cli
