#include "options/xml_options.h"

#include "archive/xml_publics.h"
#include "host/error_boundary.h"

namespace tessera {

using namespace automation::literals;

namespace {

constexpr wchar_t source[] = L"XMLOptions";

}  // namespace

ArchiveNode XMLOptions::write_below(ArchiveNode owner, const OptionCollection* options) noexcept {
    ArchiveNode result;
    guarded({source, L"Friend Function 'XMLNode'"}, [&] {
        if (!owner) owner = CreateDOMDocument();
        ArchiveNode root = CreateOptionsRoot(owner);
        if (!options) return;
        for (const auto& option : *options)
            option->write_below(root);
        trace_node(source, L"->XMLNode: returns ", root.node());
        result = root;
    });
    return result;
}

dom::Document XMLOptions::CreateDOMDocument() noexcept {
    guarded({source, L"Friend Function 'CreateDOMDocument'"}, [&] {
        if (document_) return;
        document_ = dom::create_document();
        dom::append_declaration(document_);
    });
    return document_;
}

ArchiveNode XMLOptions::CreateOptionsRoot(ArchiveNode& owner) noexcept {
    ArchiveNode root;
    guarded({source, L"Friend Function 'CreateOptionsRoot'"}, [&] {
        if (!owner) owner = CreateDOMDocument();
        root = XML_WriteTitle(owner, L"Options"_bstr, L"1"_bstr);
        trace_node(source, L"->CreateOptionsRoot: returns ", root.node());
    });
    return root;
}

}  // namespace tessera
