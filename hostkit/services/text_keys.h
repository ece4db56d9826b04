// Text keys: "~", five hexadecimal digits, a blank and the German text.
#pragma once

#include <string_view>

#include "services.h"

namespace hostkit {

// The key's text in the language: German is in the key itself, English in the kit's table; a key
// that the table does not have stays German. A text that is no key is returned as it is. The
// result refers to the given text or to the table.
std::wstring_view translate_key(std::wstring_view text, HostKitLanguage language);

}  // namespace hostkit
