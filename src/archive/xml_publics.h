// The variable archive: named, typed values as XML, and back.
//
// A group of values lives below a title element: <Title Version="1" Name="…">. Each value is an
// item element below it, named after the value, with its type name and its text:
// <Label Type="String" Data="P-101"/>. Numbers and dates have the user's locale's text forms, on
// purpose: an archive is read back under the locale that wrote it.
//
// All procedures trap their failures and report them with the source "Tessera.XMLPublics"; they
// return what they have. Messages (style: critical) are shown for values that cannot be archived
// or read back and for titles that are not found.
#pragma once

#include <string_view>

#include "archive/archive_node.h"
#include "archive/archive_reader.h"

namespace tessera {

// Writes the title element and its version below the parent. An existing title is taken when a
// name is given and one of that name is there, or when the parent is the document; below an
// element a nameless title is always a new one. Nothing for nothing. `title_name` must outlive the
// parent and the result.
ArchiveNode XML_WriteTitle(ArchiveNode& parent, automation::BstrView title_name,
                           automation::BstrView version, automation::BstrView name = {}) noexcept;

// Sets the attribute of the title to the text of the value.
void XML_WriteAttribute(ArchiveNode& node, automation::BstrView name,
                        const VARIANT& value) noexcept;

// Writes the item, in place of one of the same name, and returns it. Nothing for nothing, and in a
// draft. `item_name` must outlive the title.
dom::Element XML_WriteItem(ArchiveNode& title, automation::BstrView item_name,
                           const VARIANT& value) noexcept;

// A new title that is made together with everything below it: what is written below `title` before
// `write` becomes nodes all at once, which costs half of making them one by one. Reports like
// XML_WriteTitle.
class DraftedTitle {
  public:
    // The title is nothing when the parent is, or when it takes no elements.
    DraftedTitle(ArchiveNode parent, automation::BstrView title_name,
                 automation::BstrView version) noexcept;
    DraftedTitle(const DraftedTitle&) = delete;
    DraftedTitle& operator=(const DraftedTitle&) = delete;

    ArchiveNode& title() noexcept { return title_; }
    // Makes it the last child of the parent. Answers the node, or nothing.
    ArchiveNode write() noexcept;

  private:
    ArchiveNode parent_;
    Draft draft_;
    ArchiveNode title_;
};

// The item element, or nothing.
dom::Element XML_GetItemNode(const ArchiveReader& title, std::wstring_view item_name) noexcept;

// The value of the item. A missing item, or one whose type cannot be read back, shows the
// read-failure message and gives Empty.
automation::Variant XML_ReadItem(const ArchiveReader& title, std::wstring_view item_name) noexcept;

// The title element below the node (or the detached node itself); shows the not-found message if
// wanted.
dom::Node XML_GetTitleNode(const ArchiveReader& node, std::wstring_view title_name,
                           std::wstring_view name, bool show_message) noexcept;

// The title's format version; 0 when it has none.
std::int16_t XML_GetVersion(const dom::Node& title) noexcept;

}  // namespace tessera
