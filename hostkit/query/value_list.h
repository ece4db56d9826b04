// The values that an evaluator delivers, as automation objects.
#pragma once

#include "automation/com_ptr.h"
#include "hostkit/query/property_values.h"
#include "kelos.h"

namespace hostkit {

automation::ComPtr<IKelosValueList> make_value_list(PropertyValues values);

}  // namespace hostkit
