// The host query column definition through which properties are read.
#pragma once

#include "automation/bstr_view.h"
#include "automation/call.h"
#include "kelos.h"

namespace tessera {

// Wraps the one definition that a mapping object keeps: created on first use, then set up anew for
// every row.
class ColumnDefinition {
  public:
    // Creates and resets the host's object when there is none yet.
    void create();

    void set_property(long constant) const;
    void set_parameter(automation::BstrView text) const;
    void set_unit(automation::BstrView unit_text) const;
    void set_lcid(std::int16_t lcid) const;

    automation::Bstr unit() const;
    std::int16_t lcid() const;
    KelosQueryProperty kind() const;
    // The values of the object; nothing when there are none.
    automation::ComPtr<IKelosValueList> values_of(IKelosObject* object) const;

  private:
    automation::ComPtr<IKelosQColumnDef> definition_;
};

// A property that is given by its constant.
struct ResolvedConstant {
    automation::Bstr name;
    long property_number;
};
ResolvedConstant resolve_property_constant(long constant);

}  // namespace tessera
