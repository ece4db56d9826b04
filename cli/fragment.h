// A piece of markup as UTF-8, to be put into a text that exists.
#pragma once

#include <string>

#include "cli/xml_writer.h"
#include "text/utf8.h"

namespace cli {

class StringSink : public TextSink {
  public:
    explicit StringSink(std::string& bytes) : bytes_(bytes) {}
    void write(std::u16string_view text) override { bytes_ += tessera::to_utf8(text); }

  private:
    std::string& bytes_;
};

// What `write` writes with the XmlWriter that it is given.
template <class Write>
std::string fragment(Write&& write) {
    std::string bytes;
    StringSink sink(bytes);
    XmlWriter writer(sink, XmlLayout::compact);
    write(writer);
    writer.flush();
    return bytes;
}

}  // namespace cli
