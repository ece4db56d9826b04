#include "server/type_library.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "automation/module.h"
#include "server/library_file.h"
#include "server/registry_key.h"

namespace server {
namespace {

LibraryFile own_library() {
    return LibraryFile(automation::module_path());
}

std::optional<LibraryFile> shared_library() {
    const int number = automation::shared_type_library;
    if (!FindResourceW(automation::this_module(), MAKEINTRESOURCEW(number), L"TYPELIB")) return {};
    return LibraryFile(automation::module_path() + L'\\' + std::to_wstring(number));
}

// The places of the shared library in the modules that are registered with it.
std::vector<std::wstring> users_of(const LibraryFile& shared, HKEY classes) {
    std::vector<std::wstring> places;
    const KeyHandle key = find_key(classes, shared.place_key());
    if (!key) return places;
    std::vector<wchar_t> place(32768);
    LSTATUS status = ERROR_SUCCESS;
    for (DWORD i = 0; status == ERROR_SUCCESS || status == ERROR_MORE_DATA; ++i) {
        wchar_t name[64];
        DWORD length = 64;
        auto size = static_cast<DWORD>(place.size() * sizeof(wchar_t));
        DWORD type = REG_NONE;
        status = RegEnumValueW(key.get(), i, name, &length, nullptr, &type,
                               reinterpret_cast<BYTE*>(place.data()), &size);
        if (status == ERROR_SUCCESS && type == REG_SZ && name[0] == L'{')
            places.emplace_back(place.data());
    }
    return places;
}

void join(const LibraryFile& shared, const LibraryFile& own, HKEY classes) {
    // Somebody else's registration, such as a host's that brings the contract, stays theirs.
    if (shared.is_registered(classes) && users_of(shared, classes).empty()) return;
    shared.add(classes);
    RegistryKey(classes, shared.place_key()).set(guid_text(own.id()).c_str(), shared.place());
}

bool register_at(const std::wstring& place, HKEY classes) {
    try {
        LibraryFile(place).add(classes);
        return true;
    } catch (...) {
        return false;  // the file is gone
    }
}

HRESULT leave(const LibraryFile& shared, const LibraryFile& own, HKEY classes) {
    if (RegDeleteKeyValueW(classes, shared.place_key().c_str(), guid_text(own.id()).c_str()) !=
        ERROR_SUCCESS)
        return S_OK;
    for (const std::wstring& place : users_of(shared, classes))
        if (register_at(place, classes)) return S_OK;
    return shared.remove(classes);
}

}  // namespace

GUID register_type_libraries(HKEY classes) {
    const LibraryFile own = own_library();
    own.add(classes);
    if (const auto shared = shared_library()) join(*shared, own, classes);
    return own.id();
}

HRESULT unregister_type_libraries(HKEY classes) {
    const LibraryFile own = own_library();
    const HRESULT result = own.remove(classes);
    const auto shared = shared_library();
    return first_failure({result, shared ? leave(*shared, own, classes) : S_OK});
}

std::vector<std::wstring> type_library_keys() {
    const LibraryFile own = own_library();
    std::vector<std::wstring> keys = own.interface_keys();
    keys.push_back(own.key());
    if (const auto shared = shared_library()) {
        std::ranges::copy(shared->interface_keys(), std::back_inserter(keys));
        keys.push_back(shared->key());
    }
    return keys;
}

}  // namespace server
