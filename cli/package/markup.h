// Finds and changes tags in XML that somebody else wrote, so that everything else stays as it is to
// the byte.
//
// For texts in UTF-8 that a parser has read without a complaint; any other text is looked at
// without harm.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cli::markup {

struct Tag {
    std::size_t begin = 0;  // of its "<"
    std::size_t end = 0;    // behind its ">"
    std::string_view text;
    std::string_view name;    // without its prefix
    std::string_view prefix;  // with its colon
    bool is_end = false;
    bool is_empty = false;  // "<a/>"

    bool is_start_of(std::string_view wanted) const noexcept { return !is_end && name == wanted; }
};

// The tags of a text from a position on; comments, instructions and CDATA are passed over.
class Scanner {
  public:
    explicit Scanner(std::string_view text, std::size_t position = 0) noexcept
        : text_(text), position_(position) {}

    std::optional<Tag> next();

  private:
    std::string_view text_;
    std::size_t position_;
};

// The first element of this name from a position on.
std::optional<Tag> find(std::string_view text, std::string_view name, std::size_t from = 0);
// Behind the element that the start tag begins.
std::size_t end_of(std::string_view text, const Tag& start);
// Where a new last child of the element goes. An empty element has no such place.
std::size_t inner_end_of(std::string_view text, const Tag& start);

// As it is written, with its references; an attribute is told by its name without a prefix.
std::optional<std::string_view> attribute(const Tag& tag, std::string_view name);
// A number that an attribute holds; nothing for what is none.
std::optional<long> number(const Tag& tag, std::string_view attribute);

// The tag with the attribute, or without it.
std::string with_attribute(const Tag& tag, std::string_view name, std::string_view value);
std::string without_attribute(const Tag& tag, std::string_view name);

// Puts children at the end of the element, and its number of children, if it has one, right.
std::string with_children(std::string_view text, const Tag& element, std::string_view children,
                          std::size_t count);

// Markup without prefixes made part of a document that has this one.
std::string prefixed(std::string_view fragment, std::string_view prefix);

}  // namespace cli::markup
