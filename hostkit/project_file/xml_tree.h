// An XML file as a plain tree that knows its lines, read with the platform's streaming parser.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hostkit::project_file {

struct XmlAttribute {
    std::wstring name;
    std::wstring value;
};

struct XmlElement {
    std::wstring name;
    unsigned line = 0;
    std::vector<XmlAttribute> attributes;
    std::vector<XmlElement> children;
    std::wstring text;  // all character data directly inside; lines end with LF
};

// Throws with a sentence that names the file and, where one is known, the line.
XmlElement read_xml_file(const std::wstring& path);

[[noreturn]] void fail_in_file(const std::wstring& path, unsigned line, std::wstring_view problem);

}  // namespace hostkit::project_file
