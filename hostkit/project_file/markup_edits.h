// Changes attributes of an XML file in place: whatever is not changed keeps its bytes, comments,
// order and blanks included.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "hostkit/project_file/file_text.h"

namespace hostkit::project_file {

using AttributeTexts = std::vector<std::pair<std::wstring, std::wstring>>;

struct NewElement {
    std::wstring name;
    AttributeTexts attributes;
};

// What is to become of one element.
struct ElementEdits {
    AttributeTexts attributes;         // replaced, or added where there are none of the name
    std::vector<NewElement> children;  // added behind those that there are
};

// By the number of the element's start tag.
using MarkupEdits = std::map<std::size_t, ElementEdits>;

// The bytes must be those of a well-formed file. Throws when a text has characters that no XML file
// can hold.
std::string edited(const std::string& bytes, const MarkupEdits& edits);

}  // namespace hostkit::project_file
