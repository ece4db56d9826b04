// The mapping script that is kept with a host document, in its attribute "Vex".
#pragma once

#include "automation/call.h"
#include "host/error_boundary.h"
#include "kelos.h"

namespace tessera {

// A member of the class VexScript, whose parts this room's files are.
constexpr MemberName vex_script_member(const wchar_t* label) {
    return {L"Tessera.VexScript", label};
}

// The attribute that holds the document's script; nothing when there is none. A document that
// delegates has it on its delegate, which the current user must be allowed to write.
automation::ComPtr<IKelosAttribute> script_attribute(IKelosDocument* document);
// The same, created when it is missing; nothing when the user lacks the right.
automation::ComPtr<IKelosAttribute> script_attribute_created(IKelosDocument* document);

// The text in the attribute, which is marked as free text on the way.
automation::Bstr read_script(const automation::ComPtr<IKelosAttribute>& attribute);
void write_script(const automation::ComPtr<IKelosAttribute>& attribute, std::wstring_view script);

// Whether the document itself holds no script, or only the frame of one.
bool IsVexScriptEmptyOrNothing(IKelosDocument* document) noexcept;

}  // namespace tessera
