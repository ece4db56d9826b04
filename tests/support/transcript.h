// Scripts beside their results: what a script of a client reads of an object, one line per case.
#pragma once

#include <map>
#include <string>

#include "support/scripted_object.h"

namespace test {

// Objects by the names that a script has for them; their members need no prefix.
using ScriptObjects = std::map<std::wstring, IDispatch*>;

// Runs the lines of the transcript one after the other and checks what each says:
//     ? expression -> its value; Nothing, Empty, [the type of an object]
//     statement
//     either       -> ! description of the error that it ends with
// A line that ends in " _" goes on in the next. Besides the given objects scripts have
// Make("Program.Name").
void check_transcript(const std::wstring& transcript, const ScriptObjects& objects);

}  // namespace test
