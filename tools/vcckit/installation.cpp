#include "installation.h"

#include "core/files.h"
#include "core/layout.h"
#include "platform/files.h"
#include "platform/truetype.h"
#include "screen/slot_file.h"
#include "text/fonts.h"

#include <algorithm>
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

std::string reason_unreadable(const std::string& path) {
    return platform::file_exists(path) ? "cannot be read" : "does not exist";
}

namespace {

std::string stem_of(const LanguageRow& language) {
    return "tools/language/" + std::string(language.folder) + "/" + std::string(language.prefix);
}

/// What the reader says, and what it passes over: a file without a count, bytes behind the last record.
std::string fault_of_length(std::string_view bytes, const SlotFileContents& contents) {
    constexpr std::size_t count_size = 4;
    if (bytes.size() < count_size)
        return bytes.empty() ? "is empty" : "is too short for a record count";
    const std::size_t used = count_size + contents.records.size() * sizeof(Slot);
    if (!contents.fault.empty() || bytes.size() == used)
        return contents.fault;
    return "has " + std::to_string(bytes.size() - used) + " bytes behind its last record";
}

void read_toggles(ScreenFiles& files, Faults& faults) {
    const bool wanted = std::ranges::any_of(files.set.slots, [](const Slot& slot) { return slot.toggle > 0; });
    const auto bytes = read_file(files.toggle_file);
    if (!bytes) { // a set without toggle records is allowed
        files.toggles_lost = wanted;
        if (wanted || platform::file_exists(files.toggle_file))
            faults.push_back({FaultCode::file_missing, files.toggle_file, 0, -1, "",
                              reason_unreadable(files.toggle_file),
                              "pack the screen's source: slots of the screen have highlighted looks"});
        return;
    }
    SlotFileContents contents = read_slot_file(*bytes);
    const std::string fault = fault_of_length(*bytes, contents);
    if (!fault.empty())
        faults.push_back(
            {FaultCode::slot_file_damaged, files.toggle_file, 0, -1, "", fault, "pack the screen's source again"});
    files.toggles_lost = wanted && contents.records.empty();
    files.set.toggles = std::move(contents.records);
}

void read_screen(ScreenFiles& files, const ScreenRow& row, Faults& faults) {
    const auto bytes = read_file(files.slot_file);
    if (!bytes) {
        faults.push_back({FaultCode::file_missing, files.slot_file, 0, -1, "", reason_unreadable(files.slot_file),
                          "pack the screen's source", true});
        return;
    }
    SlotFileContents contents = read_slot_file(*bytes);
    if (const std::string fault = fault_of_length(*bytes, contents); !fault.empty()) {
        faults.push_back({FaultCode::slot_file_damaged, files.slot_file, 0, -1, "", fault,
                          "pack the screen's source again", contents.records.empty()});
        if (contents.records.empty())
            return;
    }
    files.set.slots = std::move(contents.records);
    if (files.set.slot_count() < row.needed)
        faults.push_back({FaultCode::slots_missing, files.slot_file, 0, -1, "",
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
