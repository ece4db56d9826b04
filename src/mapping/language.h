// The language that a row's texts are in.
#pragma once

#include <cstdint>
#include <string_view>

#include "kelos.h"

namespace tessera {

// Locale of the language that a property of the object is read in: the one that the parameter
// names by its number in the project for the language-dependent properties, else the project's
// current one. 0 when the object has no workset or project, or on a reported failure.
std::int16_t GetLCID(IKelosObject* object, std::wstring_view property_name,
                     std::wstring_view parameter) noexcept;

}  // namespace tessera
