// A project file opened with the host kit, and the host service that records what is reported.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "automation/call.h"
#include "cli/arguments.h"
#include "hostkit.h"
#include "tessera.h"

namespace cli {

struct ChosenDocument {
    automation::ComPtr<IKelosDocument> document;
    std::wstring name;
};

class Project {
  public:
    // In the language and as the user that the arguments name. Without windows the host has no
    // application that could show one.
    Project(const std::wstring& path, const Arguments& arguments);

    const automation::ComPtr<IHostKitService>& service() const noexcept { return service_; }
    const automation::ComPtr<IHostKit>& kit() const noexcept { return kit_; }
    const automation::ComPtr<IKelosWorkset>& workset() const noexcept { return workset_; }

    // The document of this name or path; without one, the first that has a mapping table.
    ChosenDocument document(const std::optional<std::wstring>& name) const;
    automation::ComPtr<IKelosQuery> query(const std::wstring& name) const;

    std::vector<std::wstring> document_names() const;
    std::vector<std::wstring> query_names() const;
    std::vector<std::wstring> language_names() const;
    // The current ones.
    std::wstring language() const;
    std::wstring user() const;

  private:
    ChosenDocument first_mapping_document() const;
    void choose_language(const std::wstring& name);
    void log_in(const std::wstring& login);

    std::wstring name_;  // of the file, as sentences begin with it
    automation::ComPtr<IHostKitService> service_;
    automation::ComPtr<IHostKit> kit_;
    automation::ComPtr<IKelosWorkset> workset_;
};

// The mapping table among the objects that the document shows, or nothing.
automation::ComPtr<IKelosMappingTable> mapping_table(const ChosenDocument& document);
// The script that the document stores; empty when there is none.
automation::Bstr stored_script(const ChosenDocument& document);

// The service of this thread, recording without a word and speaking English.
automation::ComPtr<IHostKitService> recording_service(bool with_windows);

}  // namespace cli
