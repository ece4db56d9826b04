// Keys of the registry.
#pragma once

#include <initializer_list>
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

inline void check_status(LSTATUS status) {
    automation::check(HRESULT_FROM_WIN32(status));
}

struct KeyCloser {
    void operator()(HKEY key) const noexcept { RegCloseKey(key); }
};
using KeyHandle = std::unique_ptr<std::remove_pointer_t<HKEY>, KeyCloser>;

// Null when there is none.
inline KeyHandle find_key(HKEY parent, const std::wstring& path,
                          REGSAM access = KEY_READ) noexcept {
    HKEY key = nullptr;
    const LSTATUS status = RegOpenKeyExW(parent, path.c_str(), 0, access, &key);
    return KeyHandle(status == ERROR_SUCCESS ? key : nullptr);
}

// With all that is below it. One that is not there is no failure.
inline HRESULT remove_tree(HKEY parent, const std::wstring& path) noexcept {
    const LSTATUS status = RegDeleteTreeW(parent, path.c_str());
    return status == ERROR_FILE_NOT_FOUND ? S_OK : HRESULT_FROM_WIN32(status);
}

inline HRESULT first_failure(std::initializer_list<HRESULT> results) noexcept {
    for (const HRESULT result : results)
        if (FAILED(result)) return result;
    return S_OK;
}

// A key that is written to. Makes it when it is not there. Failures throw.
class RegistryKey {
  public:
    RegistryKey(HKEY parent, const std::wstring& path, REGSAM access = KEY_WRITE) {
        HKEY key = nullptr;
        check_status(
            RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, access, nullptr, &key, nullptr));
        key_.reset(key);
    }

    // A null name is the key's default value.
    void set(const wchar_t* name, const std::wstring& value) const {
        const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
        check_status(RegSetValueExW(key_.get(), name, 0, REG_SZ,
                                    reinterpret_cast<const BYTE*>(value.c_str()), size));
    }
    void set_subkey(const std::wstring& path, const std::wstring& value) const {
        RegistryKey(key_.get(), path).set(nullptr, value);
    }
    HKEY get() const noexcept { return key_.get(); }

  private:
    KeyHandle key_;
};

}  // namespace server
