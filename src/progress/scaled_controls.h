// Gives the controls of a window another size.
#pragma once

#include <memory>
#include <type_traits>
#include <vector>

#include "automation/windows_headers.h"

namespace tessera {

// Controls have no size of their own that would follow their monitor's resolution; their window
// scales them, and keeps the fonts that they then have.
class ScaledControls {
  public:
    // Multiplies places and fonts of the window's own controls by `numerator / denominator`.
    void scale(HWND window, int numerator, int denominator) noexcept;
    // When the controls are gone.
    void clear() noexcept { fonts_.clear(); }

  private:
    struct FontDeleter {
        void operator()(HFONT font) const noexcept { DeleteObject(font); }
    };
    using Font = std::unique_ptr<std::remove_pointer_t<HFONT>, FontDeleter>;

    static Font scaled_font(HWND control, int numerator, int denominator) noexcept;

    std::vector<Font> fonts_;
};

}  // namespace tessera
