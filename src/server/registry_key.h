// A key of the registry that is written to.
#pragma once

#include <string>

#include "automation/error.h"

namespace server {

inline std::wstring guid_text(REFGUID id) {
    wchar_t text[39];
    StringFromGUID2(id, text, 39);
    return text;
}

// Makes the key when it is not there. Failures throw.
class RegistryKey {
  public:
    RegistryKey(HKEY parent, const std::wstring& path) {
        check(RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key_,
                              nullptr));
    }
    ~RegistryKey() { RegCloseKey(key_); }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;

    // A null name is the key's default value.
    void set(const wchar_t* name, const std::wstring& value) const {
        const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
        check(RegSetValueExW(key_, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                             size));
    }
    void set_subkey(const std::wstring& path, const std::wstring& value) const {
        RegistryKey(key_, path).set(nullptr, value);
    }

  private:
    static void check(LSTATUS status) { automation::check(HRESULT_FROM_WIN32(status)); }
    HKEY key_ = nullptr;
};

}  // namespace server
