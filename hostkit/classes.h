// The kit's creatable classes, by what creates them.
#pragma once

#include "automation/com_ptr.h"

namespace hostkit {

automation::ComPtr<IUnknown> create_host_kit();
// The thread's one service object.
automation::ComPtr<IUnknown> create_service();
automation::ComPtr<IUnknown> create_script_engine();
automation::ComPtr<IUnknown> create_column_definition();
automation::ComPtr<IUnknown> create_property_constant();
automation::ComPtr<IUnknown> create_byte_compressor();
automation::ComPtr<IUnknown> create_byte_text_encoder();
automation::ComPtr<IUnknown> create_standard_controls();
automation::ComPtr<IUnknown> create_wpf_bridge();
automation::ComPtr<IUnknown> create_text_box();
automation::ComPtr<IUnknown> create_script_control();

}  // namespace hostkit
