// Sample module: the factory. It compares the colour depth that it was given with the one in the shared settings.
#include "common/module_screen.h"
#include "veldor_module.h"

namespace {

std::string depth_name(int32_t bitmap_depth) {
    constexpr const char* names[] = {"32 bits", "24 bits", "16 bits", "15 bits"};
    return bitmap_depth >= 0 && bitmap_depth < 4 ? names[bitmap_depth] : "unknown";
}

} // namespace

uint8_t factory(int32_t mode_range, uint8_t fullscreen, int32_t screen_mode_range, int32_t bitmap_depth,
                int32_t version) {
    return module::run(
        {.title = "FACTORY",
         .subtitle = "Where brontars are built",
         .picture = "images/factory.pcx",
         .lines = {{"Colours given", depth_name(bitmap_depth)},
                   {"Colours chosen", depth_name(module::number_setting("VELDOR_GRAPHICS", "bitmap_depth", 0))},
                   {"Modes offered", module::range_name(mode_range)},
                   {"Modes on file", module::range_name(screen_mode_range)},
                   {"Came in as", module::mode_name(fullscreen)},
                   {"Control centre", module::version_name(version)}},
         .mode_range = mode_range},
        fullscreen);
}
