// Loading: pictures and screens.
#include "cc/load.h"
#include "core/files.h"
#include "core/installation.h"
#include "display/buffers.h"
#include "figure.h"
#include "screen/buffer_list.h"
#include "screen/slot.h"
#include "world.h"

#include <cstdio>

namespace vcc::bench {

namespace {

void load_buffer_list(benchmark::State& state) {
    const BufferList list = read_buffer_list(read_file(path::buffer_list).value_or(""));
    PALETTE palette;
    compare(
        state, 1.1,
        [] { // the table's pictures are replaced one by one
            if (load_graphic_buffers(path::buffer_list) == 0)
                std::abort();
        },
        [&] {
            for (const ListedPicture& picture : list.pictures)
                benchmark::DoNotOptimize(BitmapPtr(load_pcx(picture.path.c_str(), palette)));
        });
    prepare_background_copies(); // the text windows point into the table
    state.counters["pictures"] = static_cast<double>(list.pictures.size());
}
VELDOR_FIGURE(load_buffer_list);

/// Slots and toggles, as many of each as a set can hold.
void load_full_slot_set(benchmark::State& state) {
    constexpr const char* paths[] = {"full.slt", "full.tgl"};
    std::string bytes(sizeof(std::int32_t) + slot_limit * sizeof(Slot), '\0');
    bytes[0] = static_cast<char>(slot_limit);
    for (const char* path : paths) {
        const FilePtr file(std::fopen(path, "wb"));
        if (!file || std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size()) {
            state.SkipWithError("the files cannot be written");
            return;
        }
    }
    compare(
        state, 2.0,
        [&] {
            SlotSet set;
            if (load_slot_set(paths[0], set) != 2 * slot_limit)
                std::abort();
        },
        [&] {
            for (const char* path : paths) {
                std::vector<char> memory(bytes.size());
                const FilePtr file(std::fopen(path, "rb"));
                if (!file || std::fread(memory.data(), 1, memory.size(), file.get()) != memory.size())
                    std::abort();
                benchmark::DoNotOptimize(memory.data());
            }
        });
}
VELDOR_FIGURE(load_full_slot_set);

} // namespace

} // namespace vcc::bench
