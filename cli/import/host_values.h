// The values of content records in the project as it is now.
#pragma once

#include <optional>

#include "cli/project.h"
#include "cli/records/content_records.h"

namespace cli {

class HostValues {
  public:
    explicit HostValues(const Project& project);

    // The record with the values that an export would give it now. Nothing when its object is no
    // longer there, or no longer has the property. Throws what the host throws.
    std::optional<ContentRecord> current(const ContentRecord& record) const;
    // Sets the value, in the record's unit and language. Throws what the host throws.
    void write(const ContentRecord& record, const automation::Variant& value) const;

  private:
    automation::ComPtr<IKelosObject> object_of(const ContentRecord& record) const;

    automation::ComPtr<IHostKit> kit_;
    automation::ComPtr<IKelosWorkset> workset_;
    automation::ComPtr<IKelosQColumnDef> column_;
};

}  // namespace cli
