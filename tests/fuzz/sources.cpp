// Screen sources: read, and what is sound written as a source again, which must give the same records.
#include "world.h"

#include "unpack.h"

#include <cstring>

using namespace vcc;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const kit::ScreenSource first = kit::read_screen_source(fuzz::as_text(data, size));
    for (const kit::SourceFault& fault : first.faults)
        if (fault.line < 1 || fault.text.empty())
            std::abort();
    if (!first.faults.empty() || !kit::difference_of_structure(first.screen).empty())
        return 0;
    const kit::ScreenSource again = kit::read_screen_source(kit::write_screen_source(first.screen));
    if (!again.faults.empty())
        std::abort();
    for (std::size_t i = 0; i < kit::languages.size(); ++i) {
        const kit::ScreenRecords &before = first.screen.records[i], &after = again.screen.records[i];
        if (kit::slot_file_bytes(before.slots) != kit::slot_file_bytes(after.slots) ||
            kit::slot_file_bytes(before.toggles) != kit::slot_file_bytes(after.toggles))
            std::abort();
    }
    return 0;
}
