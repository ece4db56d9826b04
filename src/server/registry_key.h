// Keys of the registry.
#pragma once

#include <memory>
#include <string>
#include <type_traits>

#include "automation/error.h"

namespace server {

inline std::wstring guid_text(REFGUID id) {
    wchar_t text[39];
    StringFromGUID2(id, text, 39);
    return text;
}

struct KeyCloser {
    void operator()(HKEY key) const noexcept { RegCloseKey(key); }
};
using KeyHandle = std::unique_ptr<std::remove_pointer_t<HKEY>, KeyCloser>;

// A key of classes, to be read; null when there is none.
inline KeyHandle find_key(const std::wstring& path) noexcept {
    HKEY key = nullptr;
    const LSTATUS status = RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ, &key);
    return KeyHandle(status == ERROR_SUCCESS ? key : nullptr);
}

// A key that is written to. Makes it when it is not there. Failures throw.
class RegistryKey {
  public:
    RegistryKey(HKEY parent, const std::wstring& path) {
        HKEY key = nullptr;
        check(RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                              nullptr));
        key_.reset(key);
    }

    // A null name is the key's default value.
    void set(const wchar_t* name, const std::wstring& value) const {
        const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
        check(RegSetValueExW(key_.get(), name, 0, REG_SZ,
                             reinterpret_cast<const BYTE*>(value.c_str()), size));
    }
    void set_subkey(const std::wstring& path, const std::wstring& value) const {
        RegistryKey(key_.get(), path).set(nullptr, value);
    }

  private:
    static void check(LSTATUS status) { automation::check(HRESULT_FROM_WIN32(status)); }
    KeyHandle key_;
};

}  // namespace server
