#include "hostkit/services/ole_window.h"

namespace hostkit {

HWND window_of(IUnknown* object) noexcept {
    const auto owner = automation::ComPtr<IUnknown>(object).try_as<IOleWindow>();
    HWND window = nullptr;
    if (!owner || FAILED(owner->GetWindow(&window))) return nullptr;
    return window;
}

}  // namespace hostkit
