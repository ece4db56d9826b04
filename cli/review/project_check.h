// The rules that need the project that the content document was exported from.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "automation/call.h"
#include "cli/records/content_records.h"
#include "cli/review/rules.h"
#include "kelos.h"

namespace cli {

class ProjectCheck {
  public:
    ProjectCheck(const std::vector<ContentRecord>& contents,
                 const automation::ComPtr<IKelosWorkset>& workset);

    void check(std::size_t record, std::vector<Finding>& findings);

  private:
    using ObjectPointer = automation::ComPtr<IKelosObject>;

    ObjectPointer object_of(const ObjectRecord& object);
    ObjectPointer load(const ObjectRecord& object) const;
    void check_path(const ObjectPointer& object, std::size_t record,
                    std::vector<Finding>& findings) const;
    void check_unit(const ObjectPointer& object, std::size_t record,
                    std::vector<Finding>& findings) const;

    const std::vector<ContentRecord>& contents_;
    automation::ComPtr<IKelosWorkset> workset_;
    automation::ComPtr<IKelosProject> project_;
    // Mapping tables ask many properties of one object.
    std::map<std::pair<std::u16string, std::u16string>, ObjectPointer> loaded_;
};

}  // namespace cli
