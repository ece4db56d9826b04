// Writes the options block that ends every content document.
#pragma once

#include "options/spec_opt_to_coll_converter.h"

namespace tessera {

// Creatable by name, but every member is internal. Owns the document that it makes when none is
// given.
class XMLOptions : public automation::Object<XMLOptions, ITesseraXMLOptions> {
  public:
    static constexpr CLSID class_id = __uuidof(::XMLOptions);

    // Writes the "Options" element with one title per option below the owner (the own document
    // when nothing) and returns it; nothing without a collection, though the element is written.
    ArchiveNode write_below(ArchiveNode owner, const OptionCollection* options) noexcept;
    // The own document, made on first use.
    dom::Document CreateDOMDocument() noexcept;
    ArchiveNode CreateOptionsRoot(ArchiveNode& owner) noexcept;

  private:
    dom::Document document_;
};

}  // namespace tessera
