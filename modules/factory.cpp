// Sample module: the factory. It compares the colour depth that it was given with the one in the shared settings.
#include "common/module_screen.h"
#include "veldor_module.h"

namespace {

/// What the display has now, and what was ordered when that is something else.
std::string paint(int32_t bitmap_depth) {
    const int32_t ordered = module::number_setting("VELDOR_GRAPHICS", "bitmap_depth", 0);
    std::string text = module::depth_name(bitmap_depth);
    if (ordered != bitmap_depth)
        text += module::in_language({", ordered: ", ", bestellt: "}) + module::depth_name(ordered);
    return text;
}

} // namespace

uint8_t factory(int32_t mode_range, uint8_t fullscreen, int32_t screen_mode_range, int32_t bitmap_depth,
                int32_t version) {
    const int32_t gates = screen_mode_range > 0 ? screen_mode_range : mode_range;
    return module::run(
        {.title = {"FACTORY", "FABRIK"},
         .subtitle = {"Where brontars are built", "Hier entstehen Brontare"},
         .orders = {{{"Bay 3: fit the front legs, test under load.", "Halle 3: Vorderbeine dran, Probelast."},
                     {"Refit the twin gun by the second shift.", "Zwillingskanone bis zur Spätschicht."},
                     {"Nose plate: weld first, then paint.", "Bugplatte: erst schweißen, dann streichen."}}},
         .picture = "images/factory.pcx",
         .lines = {{{"Paint", "Farben"}, paint(bitmap_depth)}, {{"Gates", "Tore"}, module::range_name(gates)}},
         .version = version,
         .mode_range = mode_range},
        fullscreen);
}
