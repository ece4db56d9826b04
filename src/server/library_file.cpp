#include "server/library_file.h"

#include <utility>

#include "automation/bstr.h"
#include "server/registry_key.h"

namespace server {
namespace {

using automation::Bstr;
using automation::ComPtr;

// The platform's: by the type library, and for interfaces that have IDispatch's members only.
constexpr wchar_t library_marshaler[] = L"{00020424-0000-0000-C000-000000000046}";
constexpr wchar_t dispatch_marshaler[] = L"{00020420-0000-0000-C000-000000000046}";

template <class Described>
std::wstring name_of(const ComPtr<Described>& described, Bstr* description = nullptr) {
    Bstr name;
    automation::check(
        described->GetDocumentation(MEMBERID_NIL, name.put(),
                                    description ? description->put() : nullptr, nullptr, nullptr),
        described);
    return name.str();
}

std::wstring hexadecimal(unsigned number) {
    constexpr wchar_t digits[] = L"0123456789abcdef";
    std::wstring text;
    do {
        text.insert(text.begin(), digits[number % 16]);
        number /= 16;
    } while (number > 0);
    return text;
}

}  // namespace

LibraryFile::LibraryFile(std::wstring place) : place_(std::move(place)) {
    automation::check(LoadTypeLibEx(place_.c_str(), REGKIND_NONE, library_.put()));
    TLIBATTR* attributes = nullptr;
    automation::check(library_->GetLibAttr(&attributes), library_);
    attributes_ = *attributes;
    library_->ReleaseTLibAttr(attributes);
}

std::wstring LibraryFile::key() const {
    return L"TypeLib\\" + guid_text(id());
}

std::wstring LibraryFile::version() const {
    return hexadecimal(attributes_.wMajorVerNum) + L'.' + hexadecimal(attributes_.wMinorVerNum);
}

std::wstring LibraryFile::place_key(SYSKIND width) const {
    return key() + L'\\' + version() + L'\\' + hexadecimal(attributes_.lcid) +
           (width == SYS_WIN64 ? L"\\win64" : L"\\win32");
}

std::vector<LibraryFile::Interface> LibraryFile::interfaces() const {
    std::vector<Interface> found;
    for (UINT i = 0; i < library_->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        TYPEATTR* attributes = nullptr;
        automation::check(library_->GetTypeInfo(i, info.put()), library_);
        automation::check(info->GetTypeAttr(&attributes), info);
        const TYPEATTR type = *attributes;
        info->ReleaseTypeAttr(attributes);
        if (type.typekind != TKIND_INTERFACE && type.typekind != TKIND_DISPATCH) continue;
        const bool has_own_members =
            type.wTypeFlags & TYPEFLAG_FDUAL || type.typekind == TKIND_INTERFACE;
        found.push_back({L"Interface\\" + guid_text(type.guid), name_of(info),
                         has_own_members ? library_marshaler : dispatch_marshaler});
    }
    return found;
}

std::vector<std::wstring> LibraryFile::interface_keys() const {
    std::vector<std::wstring> keys;
    for (Interface& described : interfaces())
        keys.push_back(std::move(described.key));
    return keys;
}

bool LibraryFile::is_registered(HKEY classes) const {
    return find_key(classes, place_key()) != nullptr;
}

void LibraryFile::add(HKEY classes) const {
    Bstr description;
    const std::wstring name = name_of(library_, &description);
    const RegistryKey versioned(classes, key() + L'\\' + version());
    versioned.set(nullptr, description.empty() ? name : description.str());
    versioned.set_subkey(L"FLAGS", std::to_wstring(attributes_.wLibFlags));
    versioned.set_subkey(L"HELPDIR", L"");
    RegistryKey(classes, place_key()).set(nullptr, place_);
    for (const Interface& described : interfaces())
        add_interface(classes, described);
}

void LibraryFile::add_interface(HKEY classes, const Interface& described) const {
    const RegistryKey key(classes, described.key);
    key.set(nullptr, described.name);
    key.set_subkey(L"ProxyStubClsid32", described.marshaler);
    const RegistryKey library(classes, described.key + L"\\TypeLib");
    library.set(nullptr, guid_text(id()));
    library.set(L"Version", version());
}

HRESULT LibraryFile::remove(HKEY classes) const {
    if (!is_registered(classes)) return S_OK;
    HRESULT result = S_OK;
    for (const std::wstring& path : interface_keys())
        result = first_failure({result, remove_tree(classes, path)});
    const SYSKIND other = attributes_.syskind == SYS_WIN64 ? SYS_WIN32 : SYS_WIN64;
    if (find_key(classes, place_key(other)))
        return first_failure({result, remove_tree(classes, place_key())});
    result = first_failure({result, remove_tree(classes, key() + L'\\' + version())});
    RegDeleteKeyW(classes, key().c_str());  // unless there are other versions
    return result;
}

}  // namespace server
