#include "server/registrar.h"

#include <string>

#include "automation/error.h"
#include "server/registry_key.h"
#include "server/type_library.h"

namespace server {
namespace {

constexpr wchar_t version_suffix[] = L".1";

std::wstring class_key(const ClassEntry& entry) {
    return L"CLSID\\" + guid_text(entry.class_id);
}

void write_program_name(const std::wstring& name, const ClassEntry& entry) {
    const RegistryKey key(HKEY_CLASSES_ROOT, name);
    key.set(nullptr, entry.description);
    key.set_subkey(L"CLSID", guid_text(entry.class_id));
}

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
        const GUID library = register_type_libraries();
        const std::wstring path = automation::module_path();
        for (const ClassEntry& entry : module_classes())
            write_class(entry, path, library);
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
        const std::span<const ClassEntry> classes = module_classes();
        for (auto entry = classes.rbegin(); entry != classes.rend(); ++entry) {
            const HRESULT result = remove_class(*entry);
            if (SUCCEEDED(first_failure)) first_failure = result;
        }
        const HRESULT result = unregister_type_libraries();
        return SUCCEEDED(first_failure) ? result : first_failure;
    } catch (...) {
        return automation::current_error().code;
    }
}

}  // namespace server
