// Making the nodes of a draft: most drafts look like one before them.
#pragma once

#include "archive/archive_node.h"
#include "archive/draft.h"

namespace tessera {

// Cloning an element with everything below it and putting in the texts that differ costs half of
// making it node by node. Patterns are kept per thread, until its last object dies; what comes out
// is the same with or without one.
class ElementPatterns {
  public:
    static ElementPatterns& of_thread();

    // Makes the draft's root element the last child of the parent. Throws what the parser says.
    dom::Element write(Draft& draft, ArchiveNode& parent);

    // A cleared draft with the memory of one that was given back.
    Draft take_draft() noexcept;
    void give_back(Draft draft) noexcept;

  private:
    struct Pattern {
        Draft draft;
        dom::Element element;  // nothing until the shape has come a second time
    };

    dom::Element cloned_below(Draft& draft, const ArchiveNode& parent) noexcept;
    Pattern* find(const Draft& draft);
    dom::Element cloned(Draft& draft, Pattern& pattern);

    std::vector<Pattern> patterns_;  // the one that was used last comes first
    Draft spare_;
    bool parser_refuses_clones_ = false;
};

}  // namespace tessera
