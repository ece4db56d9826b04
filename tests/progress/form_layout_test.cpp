#include "progress/form_layout.h"

#include <doctest/doctest.h>

using namespace tessera::form_layout;

TEST_CASE("the design lies on whole pixels at 96 pixels per inch") {
    constexpr Resolution screen{96, 96};
    CHECK(to_pixels(client_area, screen) == Size{432, 55});
    CHECK(to_pixels(text_line, screen) == Place{8, 12, 308, 14});
    CHECK(to_pixels(progress_bar, screen) == Place{8, 31, 313, 19});
    CHECK(to_pixels(abort_button, screen) == Place{326, 31, 100, 19});
}

TEST_CASE("the two directions have resolutions of their own, halves are rounded up") {
    CHECK(to_pixels(client_area, {120, 144}) == Size{540, 83});
    CHECK(to_pixels(client_area, {1440, 1440}) == Size{6480, 825});  // a pixel is a twip
    CHECK(to_pixels(progress_bar, {72, 192}) == Place{6, 62, 235, 38});
    CHECK(to_pixels(0, 96) == 0);
    CHECK(to_pixels(7, 96) == 0);
    CHECK(to_pixels(8, 96) == 1);
}

TEST_CASE("at every resolution the controls lie side by side within the form") {
    for (int inch = 72; inch <= 480; inch += 12) {
        CAPTURE(inch);
        const Resolution screen{inch, inch};
        const Size form = to_pixels(client_area, screen);
        const Place line = to_pixels(text_line, screen);
        const Place bar = to_pixels(progress_bar, screen);
        const Place button = to_pixels(abort_button, screen);
        CHECK(line.top + line.height < bar.top);
        CHECK(bar.left + bar.width < button.left);
        CHECK(bar.top == button.top);
        CHECK(button.left + button.width < form.width);
        CHECK(button.top + button.height < form.height);
    }
}
