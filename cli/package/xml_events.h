// Reads XML by events, with the platform's streaming parser: the parts of a workbook can be large,
// and most of what stands in them is of no interest.
#pragma once

#include <optional>
#include <string>
#include <string_view>

struct IXmlReader;

namespace cli {

// The attributes of the element that just began; by their names without prefixes.
class XmlAttributes {
  public:
    explicit XmlAttributes(IXmlReader& reader) noexcept : reader_(reader) {}

    std::optional<std::wstring> find(std::wstring_view name) const;
    // Empty when there is none.
    std::wstring text(std::wstring_view name) const { return find(name).value_or(std::wstring()); }

  private:
    IXmlReader& reader_;
};

// Names come without prefixes: programs differ in which ones they use. A text may come in pieces.
class XmlHandler {
  public:
    virtual ~XmlHandler() = default;
    virtual void start(std::wstring_view name, const XmlAttributes& attributes) = 0;
    virtual void end(std::wstring_view name) = 0;
    virtual void text(std::wstring_view piece) = 0;
};

// `what` is what a Failure calls the text when it is not well-formed or has a document type.
void read_xml(std::string_view bytes, XmlHandler& handler, const std::wstring& what);

}  // namespace cli
