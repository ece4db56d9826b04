// The properties of host objects that the mapping engine knows by name.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>

namespace tessera {

// How a property that was read is written back.
enum class WriteBack {
    none,       // it cannot be
    same_name,  // under the name that the caller gave
    operation   // by the operation that the table names
};

struct KnownProperty {
    std::u16string_view name;
    int constant;
    WriteBack write_back;
    std::u16string_view operation;
};

// In the order of the table.
std::span<const KnownProperty> known_properties() noexcept;

// The table in both directions: a constant's decimal text gives the name, a name gives the text of
// its constant. Keys are compared exactly. A key that was looked up in vain is remembered as empty,
// so that its user is told once only.
class PropertyNameTable {
  public:
    // Nothing at the first look-up of an unknown key, the empty text from then on.
    std::optional<std::u16string> find(std::u16string_view key);

  private:
    std::unordered_set<std::u16string> unknown_keys_;
};

}  // namespace tessera
