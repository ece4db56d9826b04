// Late-bound arguments as languages without declared types pass them.
#pragma once

#include "automation/variant.h"

namespace automation {

// ITypeInfo::Invoke. Where that refuses the types of the arguments, it is tried once more with what
// a language without declared types means by them:
//
// - a variable (by-reference variant) for a text that the member changes, whatever the variable
//   holds that has a text form: it receives the text;
// - nothing, Null, Empty or a missing argument for an object: all of them are nothing.
//
// The member runs at most once.
HRESULT invoke_member(ITypeInfo* info, void* object, DISPID member, WORD kind,
                      DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                      UINT* bad_argument) noexcept;

}  // namespace automation
