#include "cc/sets.h"

#include "core/installation.h"
#include "core/log.h"
#include "screen/slot.h"
#include "text/language.h"

namespace vcc {

namespace {

constexpr int fewest_slots = 2;

/// By ScreenKind.
constexpr auto sets = std::to_array<SlotSet*>({&menu_set, &options_set, &info_set, &message_set});
static_assert(sets.size() == screen_files.size());

bool load_set(const ScreenFile& file, SlotSet& set) {
    const std::string path = slot_prefix + std::string(file.name) + ".slt";
    if (load_slot_set(path, set) == 0 || set.slot_count() < fewest_slots)
        return false;
    if (set.slot_count() < file.needed) {
        write_log(format_text("Slot file %s has %d slots, %d are needed", path.c_str(), set.slot_count(), file.needed));
        return false;
    }
    return true;
}

} // namespace

int load_cc_slot_sets() {
    bool failed = false;
    for (std::size_t i = 0; i < sets.size(); ++i)
        failed = !load_set(screen_files[i], *sets[i]) || failed;
    if (failed)
        return leave_code;
    // The options screen addresses toggle records by fixed numbers, too: those that its file lacks are hidden.
    Slot hidden{};
    hide(hidden);
    hidden.toggle = -1;
    if (options_set.toggle_count() < options_slot::count)
        options_set.toggles.resize(options_slot::count, hidden);
    return 0;
}

void free_cc_slot_sets() {
    for (SlotSet* set : sets)
        *set = {};
}

} // namespace vcc
