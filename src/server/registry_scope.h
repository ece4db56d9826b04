// Where classes are registered: for everybody or for the current user.
#pragma once

#include "server/registry_key.h"

namespace server {

enum class Scope { machine, user };

// The classes of one scope. HKEY_CLASSES_ROOT is a view of both: what is written there goes to
// where a key is already, so it is no place for registering.
class ScopeClasses {
  public:
    // Throws when they may not be written.
    explicit ScopeClasses(Scope scope)
        : root_(scope == Scope::user ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE),
          key_(root_, path, KEY_READ | KEY_WRITE) {}

    HKEY key() const noexcept { return key_.get(); }

    // Programs of 32 and of 64 bit have classes and interfaces of their own and share the rest: the
    // programmatic names and the type libraries, in which each has its place. Null when programs of
    // the other width than this one's have no such key.
    KeyHandle find_of_other_width(const std::wstring& name) const noexcept {
        constexpr REGSAM other = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
        return find_key(root_, path + (L'\\' + name), KEY_READ | other);
    }

  private:
    static constexpr wchar_t path[] = L"Software\\Classes";

    HKEY root_;
    RegistryKey key_;
};

}  // namespace server
