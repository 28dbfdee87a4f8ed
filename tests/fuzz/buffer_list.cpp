// Buffer lists, beside two small pictures.
#include "world.h"

#include "display/buffers.h"
#include "screen/buffer_list.h"

using namespace vcc;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::World& world = fuzz::World::start();
    static const bool pictures = [] {
        const BitmapPtr small(create_bitmap(8, 8));
        clear_bitmap(small.get());
        std::filesystem::create_directory("images");
        return save_pcx("images/menu.pcx", small.get(), nullptr) == 0;
    }();
    if (!pictures)
        std::abort();
    world.write("a.buf", fuzz::as_text(data, size));
    load_graphic_buffers("a.buf");
    release_graphic_buffers();
    return 0;
}
