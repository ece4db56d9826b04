// A node of a project file being read: every attribute and child must be one that is known.
#pragma once

#include <functional>
#include <initializer_list>
#include <optional>

#include "hostkit/project_file/xml_tree.h"

namespace hostkit::project_file {

class Node {
  public:
    Node(const XmlElement& element, const std::wstring& path)
        : element_(element), path_(path), read_(element.attributes.size()) {}

    const XmlElement& element() const noexcept { return element_; }
    const std::wstring& path() const noexcept { return path_; }
    const std::wstring& text() const noexcept { return element_.text; }

    std::optional<std::wstring> find(std::wstring_view attribute) const;
    // Absent attributes are the default, where there is one, or an error.
    std::wstring text(std::wstring_view attribute, std::wstring_view by_default) const;
    std::wstring text(std::wstring_view attribute) const;
    long number(std::wstring_view attribute, long by_default) const;
    long number(std::wstring_view attribute) const;
    bool flag(std::wstring_view attribute, bool by_default) const;
    // A number, or two with "/" between them.
    double factor(std::wstring_view attribute, double by_default) const;

    using Handler = std::function<void(const Node&)>;
    struct Child {
        std::wstring_view name;
        Handler handle;
    };
    // Hands every child to the handler of its name, in file order, and checks that all of the
    // child's attributes were read; a child without a handler is an error.
    void children(std::initializer_list<Child> known) const;

    // Throws when an attribute of the node has not been read.
    void check_all_read() const;
    [[noreturn]] void fail(std::wstring_view problem) const;

  private:
    long read_as_number(std::wstring_view attribute, const std::wstring& value) const;

    const XmlElement& element_;
    const std::wstring& path_;
    mutable std::vector<bool> read_;
};

}  // namespace hostkit::project_file
