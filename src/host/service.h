// The host service object: one per thread, created on first use and shared by all classes.
#pragma once

#include "automation/call.h"
#include "kelos.h"

namespace tessera {

// The thread's host service object. Throws when the host cannot create it. It is let go when the
// last of the component's objects on the thread dies.
automation::ComPtr<IKelosService> host_service();

// The text of a text key in the user's language.
automation::Bstr translate(const wchar_t* text_key);

// Styles of message boxes, with the meaning that the platform gives them.
inline constexpr long style_ok = MB_OK;
inline constexpr long style_critical = MB_ICONHAND;
inline constexpr long style_information = MB_ICONASTERISK;
void show_message(std::wstring_view text, long style, std::wstring_view title);

void trace(const automation::Bstr& line);
inline void trace(std::wstring_view line) {
    trace(automation::Bstr(line));
}

}  // namespace tessera
