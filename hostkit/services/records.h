// The service's records as automation collections of small objects.
#pragma once

#include "automation/object.h"
#include "hostkit/services/service_state.h"

namespace hostkit {

// Each sees the state of the thread that calls it; an item is a copy of the record.
automation::ComPtr<IHostKitMessages> recorded_messages();
automation::ComPtr<IHostKitErrors> recorded_errors();
automation::ComPtr<IHostKitTraces> recorded_traces();
automation::ComPtr<IHostKitScriptErrors> recorded_script_errors();

}  // namespace hostkit
