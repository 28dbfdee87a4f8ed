// Buffer lists, beside a small picture.
#include "screen/buffer_list.h"
#include "display/buffers.h"
#include "world.h"

void vcc::fuzz::one_input(std::string_view input) {
    static const bool pictures = [] {
        const BitmapPtr small(create_bitmap(8, 8));
        clear_bitmap(small.get());
        std::filesystem::create_directory("images");
        return save_pcx("images/menu.pcx", small.get(), nullptr) == 0;
    }();
    require(pictures);
    world().write("a.buf", input);
    load_graphic_buffers("a.buf");
    release_graphic_buffers();
}
