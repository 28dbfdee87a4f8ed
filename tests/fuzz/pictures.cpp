// PCX pictures, through the check that stands before the library's reader, at two depths.
#include "vcckit/media/pictures.h"
#include "display/picture.h"
#include "world.h"

void vcc::fuzz::one_input(std::string_view input) {
    world().write("a.pcx", input);
    kit::pcx_is_complete(input);
    for (const int depth : {32, 16}) {
        set_color_depth(depth);
        PALETTE palette;
        static_cast<void>(load_picture("a.pcx", &palette));
    }
}
