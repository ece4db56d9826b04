// A type library at its place, and what the registry says of it.
#pragma once

#include <string>
#include <vector>

#include "automation/com_ptr.h"

namespace server {

class LibraryFile {
  public:
    // The place is a file, or a resource of one ("module.dll\\2"). Throws when there is none.
    explicit LibraryFile(std::wstring place);

    REFGUID id() const noexcept { return attributes_.guid; }
    const std::wstring& place() const noexcept { return place_; }

    // Below the classes. The second holds the library's place for programs of its width.
    std::wstring key() const;
    std::wstring place_key() const { return place_key(attributes_.syskind); }
    std::vector<std::wstring> interface_keys() const;

    bool is_registered(HKEY classes) const;
    void add(HKEY classes) const;
    // Programs of the other width keep what they see of it.
    HRESULT remove(HKEY classes) const;

  private:
    // What the registry tells about an interface.
    struct Interface {
        std::wstring key;
        std::wstring name;
        const wchar_t* marshaler;
    };

    std::wstring version() const;
    std::wstring place_key(SYSKIND width) const;
    std::vector<Interface> interfaces() const;
    void add_interface(HKEY classes, const Interface& described) const;

    std::wstring place_;
    automation::ComPtr<ITypeLib> library_;
    TLIBATTR attributes_{};
};

}  // namespace server
