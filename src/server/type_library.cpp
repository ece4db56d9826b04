#include "server/type_library.h"

#include <cwchar>
#include <optional>
#include <vector>

#include "automation/module.h"
#include "server/registry_key.h"

namespace server {
namespace {

// A type library at its place: a file, or a resource of one ("module.dll\\2").
class TypeLibrary {
  public:
    explicit TypeLibrary(std::wstring place) : place_(std::move(place)) {
        automation::check(LoadTypeLibEx(place_.c_str(), REGKIND_NONE, library_.put()));
        TLIBATTR* attributes = nullptr;
        automation::check(library_->GetLibAttr(&attributes), library_);
        attributes_ = *attributes;
        library_->ReleaseTLibAttr(attributes);
    }
    REFGUID id() const noexcept { return attributes_.guid; }
    const std::wstring& place() const noexcept { return place_; }
    std::wstring version_key() const {
        wchar_t version[16];
        std::swprintf(version, 16, L"%x.%x", attributes_.wMajorVerNum, attributes_.wMinorVerNum);
        return L"TypeLib\\" + guid_text(id()) + L'\\' + version;
    }

    void add() const {
        automation::check(
            RegisterTypeLib(library_.get(), const_cast<wchar_t*>(place_.c_str()), nullptr));
    }
    HRESULT remove() const {
        if (!is_registered()) return S_OK;
        return UnRegisterTypeLib(attributes_.guid, attributes_.wMajorVerNum,
                                 attributes_.wMinorVerNum, attributes_.lcid, attributes_.syskind);
    }
    bool is_registered() const {
        wchar_t width[16];
        std::swprintf(width, 16, attributes_.syskind == SYS_WIN64 ? L"\\%x\\win64" : L"\\%x\\win32",
                      static_cast<unsigned>(attributes_.lcid));
        return find_key(version_key() + width) != nullptr;
    }

  private:
    std::wstring place_;
    automation::ComPtr<ITypeLib> library_;
    TLIBATTR attributes_{};
};

TypeLibrary own_library() {
    return TypeLibrary(automation::module_path());
}

std::optional<TypeLibrary> shared_library() {
    const int number = automation::shared_type_library;
    if (!FindResourceW(automation::this_module(), MAKEINTRESOURCEW(number), L"TYPELIB")) return {};
    return TypeLibrary(automation::module_path() + L'\\' + std::to_wstring(number));
}

// The places of the shared library in the modules that are registered with it.
std::vector<std::wstring> users_of(const TypeLibrary& shared) {
    std::vector<std::wstring> places;
    const KeyHandle key = find_key(shared.version_key());
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

void join(const TypeLibrary& shared, const TypeLibrary& own) {
    // Somebody else's registration, such as a host's that brings the contract, stays theirs.
    if (shared.is_registered() && users_of(shared).empty()) return;
    shared.add();
    RegistryKey(HKEY_CLASSES_ROOT, shared.version_key())
        .set(guid_text(own.id()).c_str(), shared.place());
}

bool register_at(const std::wstring& place) {
    try {
        TypeLibrary(place).add();
        return true;
    } catch (...) {
        return false;  // the file is gone
    }
}

HRESULT leave(const TypeLibrary& shared, const TypeLibrary& own) {
    if (RegDeleteKeyValueW(HKEY_CLASSES_ROOT, shared.version_key().c_str(),
                           guid_text(own.id()).c_str()) != ERROR_SUCCESS)
        return S_OK;
    for (const std::wstring& place : users_of(shared))
        if (register_at(place)) return S_OK;
    // The platform reads what it takes out where it is registered, which may be gone.
    shared.add();
    return shared.remove();
}

}  // namespace

GUID register_type_libraries() {
    const TypeLibrary own = own_library();
    own.add();
    if (const auto shared = shared_library()) join(*shared, own);
    return own.id();
}

HRESULT unregister_type_libraries() {
    const TypeLibrary own = own_library();
    const HRESULT result = own.remove();
    const auto shared = shared_library();
    const HRESULT left = shared ? leave(*shared, own) : S_OK;
    return FAILED(result) ? result : left;
}

}  // namespace server
