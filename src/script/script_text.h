// The texts of mapping scripts: those that the component writes and those that it recognises.
#pragma once

#include <string>
#include <string_view>

namespace tessera {

// The script for a document with a mapping table that has no script of its own.
const std::u16string& default_mapping_script();

// A stored script counts as empty when there is nothing in it, or nothing but its frame.
bool is_empty_script(std::u16string_view script) noexcept;

// What the user is told about a script error. Lines are parted by LF.
struct ScriptErrorText {
    std::u16string_view description;
    std::u16string_view item;
    std::u16string_view source;
    std::u16string_view line_number;
    std::u16string_view line_text;
};
std::u16string script_error_message(const ScriptErrorText& error);

}  // namespace tessera
