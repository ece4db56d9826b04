// Writes what the XML parser holds as a document of its own that every XML parser opens.
#pragma once

#include "automation/dom.h"
#include "cli/xml_writer.h"

namespace cli {

// The element with everything in it. Declarations, processing instructions and comments of the
// parser's document are left out.
void write_element(XmlWriter& writer, const dom::Node& element);

// A document of this root element, with a complete declaration. Answers how many characters were
// replaced because XML does not allow them.
std::size_t write_document(TextSink& sink, const dom::Node& root, std::u16string_view encoding);

}  // namespace cli
