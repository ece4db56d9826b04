// Puts a function of the test in the place of one that a module imports.
#pragma once

#include <cstring>

#include "automation/windows_headers.h"

namespace test {

// As long as it lives. The module must import the function by name.
class ImportPatch {
  public:
    template <class Function>
    ImportPatch(HMODULE module, const char* name, Function* replacement)
        : place_(find(reinterpret_cast<BYTE*>(module), name)) {
        if (place_) original_ = write(reinterpret_cast<void*>(replacement));
    }
    ~ImportPatch() {
        if (place_) write(original_);
    }
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;

    bool is_in_place() const noexcept { return place_ != nullptr; }

  private:
    static void** find(BYTE* module, const char* name) {
        const auto* dos = reinterpret_cast<IMAGE_DOS_HEADER*>(module);
        const auto* nt = reinterpret_cast<IMAGE_NT_HEADERS*>(module + dos->e_lfanew);
        const DWORD imports =
            nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
        auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(module + imports);
        for (; library->Name; ++library) {
            auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(module + library->OriginalFirstThunk);
            auto* places = reinterpret_cast<void**>(module + library->FirstThunk);
            for (; names->u1.AddressOfData; ++names, ++places) {
                if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
                const auto* entry =
                    reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(module + names->u1.AddressOfData);
                if (std::strcmp(entry->Name, name) == 0) return places;
            }
        }
        return nullptr;
    }

    void* write(void* function) const {
        DWORD protection = 0;
        VirtualProtect(place_, sizeof *place_, PAGE_READWRITE, &protection);
        void* const before = *place_;
        *place_ = function;
        VirtualProtect(place_, sizeof *place_, protection, &protection);
        return before;
    }

    void** place_;
    void* original_ = nullptr;
};

}  // namespace test
