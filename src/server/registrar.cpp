#include "server/registrar.h"

#include <cwchar>
#include <string>
#include <utility>
#include <vector>

#include "automation/error.h"
#include "server/registry_image.h"
#include "server/registry_key.h"
#include "server/type_library.h"

namespace server {
namespace {

constexpr wchar_t version_suffix[] = L".1";

std::wstring class_key(const ClassEntry& entry) {
    return L"CLSID\\" + guid_text(entry.class_id);
}

std::wstring server_key(const ClassEntry& entry) {
    return class_key(entry) + L"\\InprocServer32";
}

void write_program_name(HKEY classes, const std::wstring& name, const ClassEntry& entry) {
    const RegistryKey key(classes, name);
    key.set(nullptr, entry.description);
    key.set_subkey(L"CLSID", guid_text(entry.class_id));
}

void write_class(HKEY classes, const ClassEntry& entry, REFGUID type_library) {
    const std::wstring name = entry.program_name;
    const RegistryKey key(classes, class_key(entry));
    key.set(nullptr, entry.description);
    const RegistryKey server(classes, server_key(entry));
    server.set(nullptr, automation::module_path());
    server.set(L"ThreadingModel", L"Apartment");
    key.set_subkey(L"ProgID", name + version_suffix);
    key.set_subkey(L"VersionIndependentProgID", name);
    key.set_subkey(L"TypeLib", guid_text(type_library));
    key.set_subkey(L"Version", L"1.0");

    write_program_name(classes, name + version_suffix, entry);
    write_program_name(classes, name, entry);
    RegistryKey(classes, name).set_subkey(L"CurVer", name + version_suffix);
}

HRESULT remove_class(const ScopeClasses& classes, const ClassEntry& entry) {
    const HRESULT result = remove_tree(classes.key(), class_key(entry));
    // The names are shared: the last one takes them out.
    if (classes.find_of_other_width(server_key(entry))) return result;
    const std::wstring name = entry.program_name;
    return first_failure({result, remove_tree(classes.key(), name),
                          remove_tree(classes.key(), name + version_suffix)});
}

// Of all keys that registering writes.
std::vector<KeyImage> images_of_keys(HKEY classes) {
    std::vector<KeyImage> images;
    for (const ClassEntry& entry : module_classes()) {
        images.emplace_back(classes, class_key(entry));
        images.emplace_back(classes, entry.program_name);
        images.emplace_back(classes, std::wstring(entry.program_name) + version_suffix);
    }
    for (std::wstring& path : type_library_keys())
        images.emplace_back(classes, std::move(path));
    return images;
}

void write_all(HKEY classes) {
    const GUID library = register_type_libraries(classes);
    for (const ClassEntry& entry : module_classes())
        write_class(classes, entry, library);
}

// A user who has nothing else registered has had none of these keys.
void remove_empty_parents(HKEY classes) noexcept {
    for (const wchar_t* name : {L"CLSID", L"Interface", L"TypeLib"})
        RegDeleteKeyW(classes, name);  // refused while there is anything below
}

}  // namespace

HRESULT register_classes(Scope scope) noexcept {
    try {
        const ScopeClasses classes(scope);
        const std::vector<KeyImage> before = images_of_keys(classes.key());
        try {
            write_all(classes.key());
            return S_OK;
        } catch (...) {
            const HRESULT code = automation::current_error().code;
            for (const KeyImage& image : before)
                image.restore();
            remove_empty_parents(classes.key());
            return code;
        }
    } catch (...) {
        return automation::current_error().code;
    }
}

HRESULT unregister_classes(Scope scope) noexcept {
    try {
        const ScopeClasses classes(scope);
        HRESULT result = S_OK;
        const std::span<const ClassEntry> entries = module_classes();
        for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
            result = first_failure({result, remove_class(classes, *entry)});
        result = first_failure({result, unregister_type_libraries(classes.key())});
        remove_empty_parents(classes.key());
        return result;
    } catch (...) {
        return automation::current_error().code;
    }
}

HRESULT install(bool registers, const wchar_t* command_line) noexcept {
    const bool for_everybody = !command_line || !*command_line;
    if (!for_everybody && _wcsicmp(command_line, L"user") != 0) return E_INVALIDARG;
    const Scope scope = for_everybody ? Scope::machine : Scope::user;
    return registers ? register_classes(scope) : unregister_classes(scope);
}

}  // namespace server
