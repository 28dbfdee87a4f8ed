// Screen sources: whatever is written, reading ends, and records that come out of it survive the way to a source and
// back.
#include "world.h"

#include "screen_source.h"
#include "unpack.h"

using namespace vcc;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kit::ScreenSource first = kit::read_screen_source(fuzz::as_text(data, size));
    if (!first.faults.empty() || !kit::difference_of_structure(first.screen).empty())
        return 0;
    first.screen.name = "screen"; // a source without a name is called after its file
    const kit::ScreenSource second = kit::read_screen_source(kit::write_screen_source(first.screen));
    if (!second.faults.empty())
        std::abort();
    for (std::size_t i = 0; i < kit::languages.size(); ++i)
        for (const auto part : {&kit::ScreenRecords::slots, &kit::ScreenRecords::toggles})
            if (kit::slot_file_bytes(first.screen.records[i].*part) !=
                kit::slot_file_bytes(second.screen.records[i].*part))
                std::abort();
    return 0;
}
