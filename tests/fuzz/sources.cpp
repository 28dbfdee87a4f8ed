// Screen sources: records without faults, written as a source again, must be the same records.
#include "vcckit/source/unpack.h"
#include "world.h"

void vcc::fuzz::one_input(std::string_view input) {
    const kit::ScreenSource first = kit::read_screen_source(input);
    for (const kit::Fault& fault : first.faults)
        require(fault.line >= 1 && fault.column >= 1 && !fault.problem.empty() &&
                kit::find_fault_row(kit::code_text(fault.code)));
    if (!first.faults.empty() || !kit::difference_of_structure(first.screen).empty())
        return;
    const kit::ScreenSource again = kit::read_screen_source(kit::write_screen_source(first.screen));
    require(again.faults.empty());
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const kit::ScreenRecords &before = first.screen.records[i], &after = again.screen.records[i];
        require(kit::slot_file_bytes(before.slots) == kit::slot_file_bytes(after.slots));
        require(kit::slot_file_bytes(before.toggles) == kit::slot_file_bytes(after.toggles));
    }
}
