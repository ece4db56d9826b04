#include "server/registrar.h"

#include <ranges>
#include <string>

#include "automation/error.h"

namespace server {
namespace {

constexpr wchar_t version_suffix[] = L".1";

class RegistryKey {
  public:
    RegistryKey(HKEY parent, const std::wstring& path) {
        check(RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key_,
                              nullptr));
    }
    ~RegistryKey() { RegCloseKey(key_); }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;

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

std::wstring guid_text(REFGUID id) {
    wchar_t text[39];
    StringFromGUID2(id, text, 39);
    return text;
}

std::wstring class_key(const ClassEntry& entry) {
    return L"CLSID\\" + guid_text(entry.class_id);
}

std::wstring module_path() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(automation::this_module(), path.data(),
                                   static_cast<DWORD>(path.size())));
    return path;
}

void write_program_name(const std::wstring& name, const ClassEntry& entry) {
    const RegistryKey key(HKEY_CLASSES_ROOT, name);
    key.set(nullptr, entry.description);
    key.set_subkey(L"CLSID", guid_text(entry.class_id));
}

// The module's type library, which is a resource of its file, and its identity.
class ModuleTypeLibrary {
  public:
    explicit ModuleTypeLibrary(const std::wstring& path) : path_(path) {
        automation::check(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library_.put()));
        TLIBATTR* attributes = nullptr;
        automation::check(library_->GetLibAttr(&attributes), library_);
        attributes_ = *attributes;
        library_->ReleaseTLibAttr(attributes);
    }
    REFGUID id() const noexcept { return attributes_.guid; }
    void add() const {
        auto* path = const_cast<wchar_t*>(path_.c_str());
        automation::check(RegisterTypeLib(library_.get(), path, nullptr));
    }
    HRESULT remove() const noexcept {
        const HRESULT result =
            UnRegisterTypeLib(attributes_.guid, attributes_.wMajorVerNum, attributes_.wMinorVerNum,
                              attributes_.lcid, attributes_.syskind);
        return result == TYPE_E_REGISTRYACCESS ? S_OK : result;
    }

  private:
    const std::wstring& path_;
    automation::ComPtr<ITypeLib> library_;
    TLIBATTR attributes_{};
};

void write_class(const ClassEntry& entry, const std::wstring& path, REFGUID type_library) {
    const std::wstring name = entry.program_name;
    const RegistryKey key(HKEY_CLASSES_ROOT, class_key(entry));
    key.set(nullptr, entry.description);
    const RegistryKey server(HKEY_CLASSES_ROOT, class_key(entry) + L"\\InprocServer32");
    server.set(nullptr, path);
    server.set(L"ThreadingModel", L"Apartment");
    key.set_subkey(L"ProgID", name + version_suffix);
    key.set_subkey(L"VersionIndependentProgID", name);
    key.set_subkey(L"TypeLib", guid_text(type_library));
    key.set_subkey(L"Version", L"1.0");
    write_program_name(name + version_suffix, entry);
    write_program_name(name, entry);
    RegistryKey(HKEY_CLASSES_ROOT, name).set_subkey(L"CurVer", name + version_suffix);
}

HRESULT remove_tree(const std::wstring& path) noexcept {
    const LSTATUS status = RegDeleteTreeW(HKEY_CLASSES_ROOT, path.c_str());
    return status == ERROR_FILE_NOT_FOUND ? S_OK : HRESULT_FROM_WIN32(status);
}

HRESULT remove_class(const ClassEntry& entry) {
    const std::wstring name = entry.program_name;
    HRESULT first_failure = S_OK;
    for (const std::wstring& path : {name, name + version_suffix, class_key(entry)}) {
        const HRESULT result = remove_tree(path);
        if (SUCCEEDED(first_failure)) first_failure = result;
    }
    return first_failure;
}

}  // namespace

HRESULT register_classes() noexcept {
    try {
        const std::wstring path = module_path();
        const ModuleTypeLibrary library(path);
        library.add();
        for (const ClassEntry& entry : module_classes())
            write_class(entry, path, library.id());
        return S_OK;
    } catch (...) {
        const HRESULT code = automation::current_error().code;
        unregister_classes();
        return code;
    }
}

HRESULT unregister_classes() noexcept {
    try {
        HRESULT first_failure = S_OK;
        for (const ClassEntry& entry : module_classes() | std::views::reverse) {
            const HRESULT result = remove_class(entry);
            if (SUCCEEDED(first_failure)) first_failure = result;
        }
        const std::wstring path = module_path();
        const HRESULT result = ModuleTypeLibrary(path).remove();
        return SUCCEEDED(first_failure) ? result : first_failure;
    } catch (...) {
        return automation::current_error().code;
    }
}

}  // namespace server
