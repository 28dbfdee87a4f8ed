// PCX pictures, through the check that stands before the library's reader, at two depths.
#include "world.h"

#include "display/picture.h"
#include "pictures.h"

using namespace vcc;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::World::start().write("a.pcx", fuzz::as_text(data, size));
    kit::pcx_is_complete(fuzz::as_text(data, size));
    for (const int depth : {32, 16}) {
        set_color_depth(depth);
        PALETTE palette;
        load_picture("a.pcx", &palette);
    }
    return 0;
}
