#include "progress/scaled_controls.h"

#include <utility>

namespace tessera {
namespace {

std::vector<HWND> controls_of(HWND window) {
    std::vector<HWND> controls;
    for (HWND control = GetWindow(window, GW_CHILD); control;
         control = GetWindow(control, GW_HWNDNEXT))
        controls.push_back(control);
    return controls;
}

void scale_place(HWND control, int numerator, int denominator) noexcept {
    RECT place;
    if (!GetWindowRect(control, &place)) return;
    MapWindowPoints(nullptr, GetParent(control), reinterpret_cast<POINT*>(&place), 2);
    const auto scaled = [&](LONG pixels) { return MulDiv(pixels, numerator, denominator); };
    SetWindowPos(control, nullptr, scaled(place.left), scaled(place.top),
                 scaled(place.right - place.left), scaled(place.bottom - place.top),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

ScaledControls::Font ScaledControls::scaled_font(HWND control, int numerator,
                                                 int denominator) noexcept {
    const auto font = reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0));
    LOGFONTW description{};
    if (!font || !GetObjectW(font, sizeof description, &description)) return {};
    description.lfHeight = MulDiv(description.lfHeight, numerator, denominator);
    description.lfWidth = MulDiv(description.lfWidth, numerator, denominator);
    return Font(CreateFontIndirectW(&description));
}

void ScaledControls::scale(HWND window, int numerator, int denominator) noexcept {
    try {
        std::vector<Font> fonts;
        for (const HWND control : controls_of(window)) {
            scale_place(control, numerator, denominator);
            fonts.push_back(scaled_font(control, numerator, denominator));
            if (const auto& font = fonts.back())
                SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
        }
        // The earlier ones go when no control uses them any more.
        fonts_ = std::move(fonts);
    } catch (...) {
        // Without memory the form stays as it is, as far as it is not scaled.
    }
}

}  // namespace tessera
