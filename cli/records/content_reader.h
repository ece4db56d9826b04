// Reads content documents: files and texts into the parser's document, and that into plain records.
#pragma once

#include <functional>
#include <string>

#include "automation/dom.h"
#include "cli/records/content_records.h"

namespace cli {

// Told of each record that is read, and how many there are; may end the reading with an exception.
using RecordRead = std::function<void(long number, long count)>;

// Every "Content" element below a contents root, in document order. What is missing stays empty.
ContentRecords read_contents(const dom::Node& contents_root, const RecordRead& told = {});

// The document of a text that has been decoded already, whatever encoding it declares. `name` says
// which one it is in the Failure for a text that is no content document.
dom::Document parse_content_document(std::u16string_view text, const std::wstring& name);
dom::Document load_content_document(const std::wstring& path);

// True for the root element of a content document of a version that is known here.
bool is_contents_root(const dom::Node& element);

}  // namespace cli
