#include "vcckit/check/installation.h"

#include "vcckit/record/slot_bytes.h"
#include "vcckit/source/packed_screen.h"

#include "core/files.h"
#include "core/installation.h"
#include "media/truetype.h"
#include "platform/files.h"
#include "text/fonts.h"

#include <algorithm>
#include <cerrno>

namespace vcc::kit {

Library::Library(int depth) {
    set_uformat(U_ASCII);
    install_allegro(SYSTEM_NONE, &errno, nullptr);
    // Uses the display's order of colours in a pixel, because shadows are pixel values.
    _rgb_r_shift_15 = 10, _rgb_g_shift_15 = 5, _rgb_b_shift_15 = 0;
    _rgb_r_shift_16 = 11, _rgb_g_shift_16 = 5, _rgb_b_shift_16 = 0;
    _rgb_r_shift_24 = 16, _rgb_g_shift_24 = 8, _rgb_b_shift_24 = 0;
    _rgb_r_shift_32 = 16, _rgb_g_shift_32 = 8, _rgb_b_shift_32 = 0;
    set_color_depth(depth);
    set_color_conversion(COLORCONV_TOTAL);
    set_config_data("\n", 1); // or the library looks for a file of its own
}

Library::~Library() {
    release_fonts();
    allegro_exit();
}

const Result<std::string>& Installation::text_file(const std::string& path) const {
    const auto known = text_files.find(path);
    return known != text_files.end() ? known->second : text_files.emplace(path, read_file(path)).first->second;
}

namespace {

void read_toggles(ScreenFiles& files, Faults& faults) {
    const Reporter report{faults, files.toggle_file};
    const bool wanted = std::ranges::any_of(files.set.slots, [](const Slot& slot) { return slot.toggle > 0; });
    const auto bytes = read_file(files.toggle_file);
    if (!bytes) { // a set without toggle records is allowed
        files.toggles_lost = wanted;
        if (wanted || platform::file_exists(files.toggle_file))
            report(FaultCode::file_missing, "", bytes.reason(),
                   "pack the screen's source: slots of the screen have highlighted looks");
        return;
    }
    CheckedRecords checked = check_slot_file(*bytes);
    if (!checked.fault.empty())
        report(FaultCode::slot_file_damaged, "", checked.fault, "pack the screen's source again");
    files.set.toggles = std::move(checked.records);
    files.toggles_lost = wanted && files.set.toggles.empty();
}

void read_screen(ScreenFiles& files, const ScreenFile& row, Faults& faults) {
    const Reporter report{faults, files.slot_file};
    const auto bytes = read_file(files.slot_file);
    if (!bytes) {
        report(FaultCode::file_missing, "", bytes.reason(), "pack the screen's source", true);
        return;
    }
    CheckedRecords checked = check_slot_file(*bytes);
    files.set.slots = std::move(checked.records);
    if (!checked.fault.empty()) {
        report(FaultCode::slot_file_damaged, "", checked.fault, "pack the screen's source again",
               files.set.slots.empty());
        if (files.set.slots.empty())
            return;
    }
    if (files.set.slot_count() < row.used)
        report(FaultCode::slots_missing, "",
               "has " + std::to_string(files.set.slot_count()) + " slots, the program uses slots up to " +
                   std::to_string(row.used - 1),
               "add the missing slots", files.set.slot_count() < row.needed);
    read_toggles(files, faults);
}

} // namespace

void read_screens(Installation& installation, Faults& faults) {
    for (std::size_t i = 0; i < languages.size(); ++i) {
        for (const ScreenFile& row : screen_files) {
            ScreenFiles& files = installation.by_language[i].screens[static_cast<std::size_t>(row.kind)];
            files.kind = row.kind;
            files.slot_file = slot_file_name(languages[i], row.name);
            files.toggle_file = language_file_name(languages[i], std::string(row.name) + ".tgl");
            read_screen(files, row, faults);
        }
    }
}

} // namespace vcc::kit
