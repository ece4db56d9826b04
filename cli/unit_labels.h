// What users read for the units of a content document, which names them by the host's own texts.
#pragma once

#include <map>
#include <string>

#include "automation/com_ptr.h"
#include "cli/records/content_records.h"
#include "kelos.h"

namespace cli {

// Asks the host once for each unit: the attribute that a record is about knows the units of its
// group.
class UnitLabels {
  public:
    explicit UnitLabels(const automation::ComPtr<IKelosWorkset>& workset) : workset_(workset) {}

    // Empty for a record without a unit; the unit's name when the host does not know it.
    std::u16string label(const ContentRecord& record);

  private:
    std::u16string ask(const ContentRecord& record) const;

    automation::ComPtr<IKelosWorkset> workset_;
    std::map<std::u16string, std::u16string> known_;
};

// "LMIN" for "FLOW.LMIN".
std::u16string unit_name(const ContentRecord& record);

}  // namespace cli
