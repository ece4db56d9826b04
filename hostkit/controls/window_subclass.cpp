#include "hostkit/controls/window_subclass.h"

namespace hostkit::subclass {
namespace {

struct Functions {
    decltype(&SetWindowSubclass) set;
    decltype(&RemoveWindowSubclass) remove;
    decltype(&DefSubclassProc) call_next;
};

// A process may have two versions of the controls: the module that is meant is the one that the
// kit's imports are from, whichever that is.
HMODULE common_controls() noexcept {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<const wchar_t*>(&InitCommonControlsEx), &module);
    return module;
}

template <class Function>
void find(Function& function, WORD number) noexcept {
    function = reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(common_controls(), MAKEINTRESOURCEA(number))));
}

const Functions& functions() noexcept {
    static const Functions found = [] {
        Functions all{};
        find(all.set, 410);
        find(all.remove, 412);
        find(all.call_next, 413);
        return all;
    }();
    return found;
}

}  // namespace

bool set(HWND window, SUBCLASSPROC procedure, UINT_PTR id, DWORD_PTR data) noexcept {
    return functions().set && functions().set(window, procedure, id, data);
}

void remove(HWND window, SUBCLASSPROC procedure, UINT_PTR id) noexcept {
    if (functions().remove) functions().remove(window, procedure, id);
}

LRESULT call_next(HWND window, UINT message, WPARAM first, LPARAM second) noexcept {
    return functions().call_next(window, message, first, second);
}

}  // namespace hostkit::subclass
