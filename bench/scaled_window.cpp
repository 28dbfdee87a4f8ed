// Updates of the whole picture, in a window of its own size or scaled over the whole screen: prints how many
// milliseconds pass until the display server has drawn one, as the median. The argument is as the setting
// display_scale.
#include "core/handles.h"
#include "x11/display.h"

#include <allegro.h>
#include <xalleg.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

constexpr int width = 800, height = 600, updates = 60;

vcc::BitmapPtr picture(int seed) {
    vcc::BitmapPtr bitmap(create_bitmap(width, height));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            putpixel(bitmap.get(), x, y, makecol((x * seed) & 255, (y * seed) & 255, (x + y + seed) & 255));
    return bitmap;
}

void wait_for_server() {
    acquire_screen();
    XSync(_xwin.display, False);
    release_screen();
}

} // namespace

int main(int argc, char* argv[]) {
    using namespace vcc::platform;
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const int scale = argc > 1 ? std::atoi(argv[1]) : 0;
    if (allegro_init() != 0 || (scale != 0 && !show_scaled(static_cast<Fit>(scale), {}).empty()))
        return 1;
    set_color_depth(32);
    if (set_gfx_mode(scale == 0 ? GFX_AUTODETECT_WINDOWED : GFX_AUTODETECT_FULLSCREEN, width, height, 0, 0) != 0)
        return 1;
    const vcc::BitmapPtr pictures[] = {picture(1), picture(3)};
    const auto update = [&](int number) {
        blit(pictures[number % 2].get(), screen, 0, 0, 0, 0, width, height);
        flush_display();
        wait_for_server();
    };
    rest(200); // the window is there, and its events are read
    for (int i = 0; i < 10; ++i)
        update(i);
    std::vector<double> taken_ms;
    for (int i = 0; i < updates; ++i) {
        const auto start = std::chrono::steady_clock::now();
        update(i);
        taken_ms.push_back(Milliseconds(std::chrono::steady_clock::now() - start).count());
    }
    std::ranges::nth_element(taken_ms, taken_ms.begin() + updates / 2);
    std::printf("%.3f\n", taken_ms[updates / 2]);
    return 0;
}
END_OF_MAIN()
