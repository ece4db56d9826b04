// The progress form's design, in twips, and how twips become pixels.
#pragma once

namespace tessera::form_layout {

inline constexpr int twips_per_inch = 1440;

struct Size {
    int width;
    int height;
    friend constexpr bool operator==(const Size&, const Size&) = default;
};

struct Place {
    int left;
    int top;
    int width;
    int height;
    friend constexpr bool operator==(const Place&, const Place&) = default;
};

inline constexpr Size client_area{6480, 825};
inline constexpr Place text_line{120, 180, 4620, 210};
inline constexpr Place progress_bar{120, 465, 4695, 285};
inline constexpr Place abort_button{4890, 465, 1500, 285};
inline constexpr double font_points = 10;

// Pixels per inch of a screen; the two directions can differ.
struct Resolution {
    int horizontal;
    int vertical;
};

// Halves are rounded up.
constexpr int to_pixels(int twips, int pixels_per_inch) noexcept {
    return (twips * pixels_per_inch + twips_per_inch / 2) / twips_per_inch;
}

constexpr Size to_pixels(const Size& size, const Resolution& screen) noexcept {
    return {to_pixels(size.width, screen.horizontal), to_pixels(size.height, screen.vertical)};
}

constexpr Place to_pixels(const Place& place, const Resolution& screen) noexcept {
    return {to_pixels(place.left, screen.horizontal), to_pixels(place.top, screen.vertical),
            to_pixels(place.width, screen.horizontal), to_pixels(place.height, screen.vertical)};
}

}  // namespace tessera::form_layout
