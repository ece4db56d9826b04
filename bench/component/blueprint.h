// The baseline of writing and reading XML: the parser's own interfaces, called directly.
#pragma once

#include <string>
#include <vector>

#include "automation/dom.h"

namespace bench {

// An element with everything below it, taken from a document so that it can be made again.
class Blueprint {
  public:
    explicit Blueprint(const dom::Node& element);

    // Makes the element level by level: every node is attached as soon as it is created.
    void create(IXMLDOMDocument* document, IXMLDOMNode* parent) const;

    // The paths of the elements that have data, from the element itself.
    std::vector<automation::Bstr> item_paths() const;

  private:
    struct Attribute {
        automation::Bstr name;
        automation::Bstr value;
    };
    void add_paths(const std::wstring& path, std::vector<automation::Bstr>& paths) const;

    automation::Bstr name_;
    std::vector<Attribute> attributes_;
    std::vector<Blueprint> children_;
};

// A new document with a root element of this name.
struct RootedDocument {
    explicit RootedDocument(const wchar_t* root_name);
    dom::Document document;
    dom::Node root;
};

// Reads the data below the element, one path expression an item.
void read_items(IXMLDOMNode* element, const std::vector<automation::Bstr>& paths);

}  // namespace bench
