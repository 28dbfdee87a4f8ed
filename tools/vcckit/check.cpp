#include "check.h"

#include "pictures.h"

#include "core/layout.h"
#include "platform/avi.h"
#include "platform/files.h"
#include "platform/module_library.h"
#include "settings/keyboard_layout.h"

namespace vcc::kit {

namespace {

constexpr Check all_checks[] = {
    {"settings", read_settings},       {"fonts", read_fonts},
    {"messages", read_messages},       {"text windows", read_windows},
    {"graphic buffers", read_buffers}, {"sounds and music", read_sounds},
    {"screens", read_screens},         {"pictures, films and other files", check_program_files},
    {"records", check_records},        {"fixed slots", check_fixed_slots},
    {"value entries", check_values},   {"overlaps", check_overlaps},
    {"help pages", check_help},        {"texts of the program", check_program_texts},
    {"languages", check_languages},
};

struct PictureRow {
    const char* path;
    int min_width, min_height, max_width, max_height;
};
constexpr PictureRow pictures[] = {
    {"images/morv1.pcx", 800, 600, 800, 600}, {"images/morv2.pcx", 800, 600, 800, 600},
    {"images/morv3.pcx", 800, 600, 800, 600}, {"images/morv4.pcx", 800, 600, 800, 600},
    {"images/pointer.pcx", 1, 1, 64, 64},
};
constexpr const char* films[] = {"images/Zentrik.avi", "images/VELDOR_Intro.avi"};
constexpr const char* modules[] = {"hq", "factory", "battle"};
constexpr const char* manual = "docs/veldor_manual.pdf";
constexpr const char* log_folder = "data/logfiles";

std::string fault_of_size(const PictureRow& row, const BITMAP& bitmap) {
    if (bitmap.w >= row.min_width && bitmap.w <= row.max_width && bitmap.h >= row.min_height &&
        bitmap.h <= row.max_height)
        return {};
    return "is " + std::to_string(bitmap.w) + " x " + std::to_string(bitmap.h) + " pixels";
}

void check_picture_file(const PictureRow& row, Faults& faults) {
    const PictureCheck picture = check_picture(row.path);
    const std::string fault = picture.fault.empty() ? fault_of_size(row, *picture.bitmap) : picture.fault;
    if (!fault.empty())
        faults.push_back({row.path, 0, -1, "", fault,
                          row.min_width == row.max_width ? "it must be a PCX picture of 800 x 600 pixels"
                                                         : "it must be a PCX picture of at most 64 x 64 pixels"});
}

void check_film(const char* path, Faults& faults) {
    if (!platform::file_exists(path)) {
        faults.push_back({path, 0, -1, "", "does not exist", "put the film there: the player is told at every start"});
        return;
    }
    platform::AviError error = platform::AviError::none;
    const auto film = platform::open_avi(path, error);
    const platform::AviFrame* frame = film ? film->frame_at(0) : nullptr;
    if (!frame)
        faults.push_back({path, 0, -1, "", "cannot be shown", "it must be an AVI film with a video stream"});
    else if (frame->width > 800 || frame->height > 600)
        faults.push_back({path, 0, -1, "",
                          "is " + std::to_string(frame->width) + " x " + std::to_string(frame->height) + " pixels",
                          "make it 800 x 600: only its middle is shown"});
}

void check_presence(const std::string& path, const char* advice, Faults& faults) {
    if (!platform::file_exists(path))
        faults.push_back({path, 0, -1, "", "does not exist", advice});
}

} // namespace

std::span<const Check> checks() {
    return all_checks;
}

Faults check_installation(const std::function<void(std::string_view subject)>& progress) {
    Installation installation;
    Faults faults;
    for (const Check& check : all_checks) {
        if (progress)
            progress(check.subject);
        check.run(installation, faults);
    }
    return faults;
}

void check_program_files(Installation&, Faults& faults) {
    for (const PictureRow& row : pictures)
        check_picture_file(row, faults);
    for (const char* film : films)
        check_film(film, faults);
    for (const char* module : modules)
        check_presence(platform::module_file_name(module), "put the game module there, or it cannot be entered",
                       faults);
    constexpr int offered_keyboards = 6;
    for (int keyboard = 0; keyboard < offered_keyboards; ++keyboard)
        check_presence(std::string(keyboard_mapping_file(keyboard)),
                       "put the keyboard mapping there, or its layout cannot be chosen", faults);
    check_presence(manual, "put the manual there, or it cannot be opened", faults);
    if (!file_exists(log_folder, FA_DIREC | FA_ARCH | FA_RDONLY | FA_HIDDEN, nullptr))
        faults.push_back({log_folder, 0, -1, "", "is missing", "make the folder: the program cannot log without it"});
}

} // namespace vcc::kit
