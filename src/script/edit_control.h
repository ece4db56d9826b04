// The control in which the user edits a script: a plain text box or the host's rich script editor.
#pragma once

#include <string>

#include "automation/dispatch.h"

namespace tessera {

bool is_text_box(IDispatch* control) noexcept;

// The script in the control. A text box that fails throws; a rich editor that does is empty.
std::wstring script_in(IDispatch* control);

// Selects the failing line and gives the control the focus. The first line is 1.
void mark_failing_line(IDispatch* control, const automation::Variant& line_number);

}  // namespace tessera
