#include "installation.h"

#include "core/files.h"
#include "core/layout.h"
#include "platform/truetype.h"
#include "screen/slot_file.h"
#include "text/fonts.h"

#include <cerrno>

namespace vcc::kit {

Library::Library(int depth) {
    set_uformat(U_ASCII);
    install_allegro(SYSTEM_NONE, &errno, nullptr);
    // The order of the colours in a pixel is that of the display, where shadows take plain pixel values.
    _rgb_r_shift_15 = 10, _rgb_g_shift_15 = 5, _rgb_b_shift_15 = 0;
    _rgb_r_shift_16 = 11, _rgb_g_shift_16 = 5, _rgb_b_shift_16 = 0;
    _rgb_r_shift_24 = 16, _rgb_g_shift_24 = 8, _rgb_b_shift_24 = 0;
    _rgb_r_shift_32 = 16, _rgb_g_shift_32 = 8, _rgb_b_shift_32 = 0;
    set_color_depth(depth);
    set_color_conversion(COLORCONV_TOTAL);
    set_config_data("\n", 1); // or the library looks for a file of its own
    layout_width = 800;
    layout_height = 600;
}

Library::~Library() {
    release_fonts();
    allegro_exit();
}

const std::optional<std::string>& Installation::text_file(const std::string& path) const {
    const auto known = text_files.find(path);
    return known != text_files.end() ? known->second : text_files.emplace(path, read_file(path)).first->second;
}

namespace {

std::string stem_of(const LanguageRow& language) {
    return "tools/language/" + std::string(language.folder) + "/" + std::string(language.prefix);
}

void read_toggles(ScreenFiles& files, Faults& faults) {
    const auto bytes = read_file(files.toggle_file);
    if (!bytes)
        return; // a set without toggle records is allowed; who needs one misses it
    SlotFileContents contents = read_slot_file(*bytes);
    if (!contents.fault.empty())
        faults.push_back({files.toggle_file, 0, -1, "", contents.fault, "pack the screen's source again"});
    files.set.toggles = std::move(contents.records);
}

void read_screen(ScreenFiles& files, const ScreenRow& row, Faults& faults) {
    const auto bytes = read_file(files.slot_file);
    if (!bytes) {
        faults.push_back({files.slot_file, 0, -1, "", "cannot be read", "pack the screen's source", true});
        return;
    }
    SlotFileContents contents = read_slot_file(*bytes);
    if (!contents.fault.empty()) {
        faults.push_back({files.slot_file, 0, -1, "", contents.fault, "pack the screen's source again", true});
        return;
    }
    files.set.slots = std::move(contents.records);
    if (files.set.slot_count() < row.needed)
        faults.push_back({files.slot_file, 0, -1, "",
                          "has " + std::to_string(files.set.slot_count()) + " slots, the program uses slots up to " +
                              std::to_string(row.needed - 1),
                          "add the missing slots", files.set.slot_count() < row.fatal_below});
    read_toggles(files, faults);
}

} // namespace

void read_screens(Installation& installation, Faults& faults) {
    for (std::size_t i = 0; i < languages.size(); ++i) {
        for (const ScreenRow& row : screen_rows) {
            ScreenFiles& files = installation.by_language[i].screens[static_cast<std::size_t>(row.kind)];
            files.kind = row.kind;
            files.slot_file = stem_of(languages[i]) + std::string(row.name) + ".slt";
            files.toggle_file = stem_of(languages[i]) + std::string(row.name) + ".tgl";
            read_screen(files, row, faults);
        }
    }
}

} // namespace vcc::kit
