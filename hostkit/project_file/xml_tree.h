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
    std::size_t number = 0;  // of the start tag among all of the file, from 0
    std::vector<XmlAttribute> attributes;
    std::vector<XmlElement> children;
    std::wstring text;  // all character data directly inside; lines end with LF
};

// These throw with a sentence that names the file and, where one is known, the line.
std::string read_file(const std::wstring& path);
XmlElement read_xml(const std::wstring& path, const std::string& bytes);

[[noreturn]] void fail_in_file(const std::wstring& path, unsigned line, std::wstring_view problem);

}  // namespace hostkit::project_file
