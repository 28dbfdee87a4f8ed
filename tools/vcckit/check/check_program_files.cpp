// Pictures, films, modules, keyboard mappings and other files with fixed names.
#include "vcckit/check/check.h"

#include "vcckit/check/config_walk.h"
#include "vcckit/media/pictures.h"

#include "core/files.h"
#include "core/installation.h"
#include "media/avi.h"
#include "platform/files.h"
#include "platform/shared_library.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>

namespace vcc::kit {

namespace {

using enum FaultCode;

/// `fits` says whether the program takes a picture of that width and height.
void check_picture_file(const std::string& path, bool (*fits)(int width, int height), const std::string& wanted,
                        Faults& faults) {
    const PictureCheck picture = check_picture(path);
    const Reporter report{faults, path};
    const std::string advice = "it must be a PCX picture of " + wanted + " pixels: vcckit convert makes PCX";
    if (!picture.fault.empty())
        report(picture.code, "", picture.fault, advice, false, picture.nearest);
    else if (const BITMAP& at = *picture.bitmap; !fits(at.w, at.h))
        report(picture_size, "", "is " + std::to_string(at.w) + " x " + std::to_string(at.h) + " pixels", advice);
}

/// Whether a file is shorter than its RIFF header says; some programs write 0 there.
bool is_shorter_than_announced(const std::filesystem::path& path) {
    std::array<std::uint32_t, 2> header{};
    std::ifstream file(path, std::ios::binary);
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return file.read(reinterpret_cast<char*>(header.data()), sizeof header) && !error &&
           std::uintmax_t{header[1]} + sizeof header > size;
}

void check_film(const char* path, Faults& faults) {
    const Reporter report{faults, path};
    if (!platform::file_exists(path)) {
        report(file_missing, "", "does not exist", "add the film: without it the log has an entry at every start");
        return;
    }
    if (is_shorter_than_announced(platform::system_path(platform::resolve_path(path))))
        report(file_cut, "", "is truncated", "create the file again");
    const auto film = platform::open_avi(platform::resolve_path(path)).film;
    const platform::AviFrame* frame = film ? film->frame_at(0) : nullptr;
    if (!frame)
        report(film_unreadable, "", "cannot be shown", "it must be an AVI film with a video stream");
    else if (frame->width > layout_width || frame->height > layout_height)
        report(film_size, "", "is " + std::to_string(frame->width) + " x " + std::to_string(frame->height) + " pixels",
               "make it 800 x 600 pixels: only its middle is shown");
}

void check_presence(const std::string& path, const char* advice, Faults& faults) {
    if (!platform::file_exists(path))
        Reporter{faults, path}(file_missing, "", "does not exist", advice);
}

/// Inspects the module's bytes without loading it, which would run its code.
void check_module(const std::string& name, Faults& faults) {
    constexpr std::size_t size_limit = 256u << 20;
    const Reporter report{faults, platform::module_file_name(name)};
    const std::string& path = report.file;
    check_presence(path, "add the game module, or the player cannot start it", faults);
    const auto bytes = read_file(path, size_limit);
    if (!bytes)
        return;
    if (!bytes->starts_with(platform::module_file_magic()))
        report(module_unfit, "", "is not a library of this system", "build the module again");
    else if (bytes->find(std::string(1, '\0') + name + '\0') == std::string::npos)
        report(module_unfit, name, "has no such entry", "sdk/veldor_module.h declares the entries");
}

/// An empty mapping means the library's own. Reports only the first fault: a wrong file has one in every line.
void check_keyboard(const std::string& path, Faults& faults) {
    check_presence(path, "add the keyboard mapping, or its layout does not work", faults);
    const auto text = read_file(path);
    if (!text)
        return;
    Faults found;
    walk_config(path, *text, found, [&](const ConfigEntry& entry) {
        if (!entry.key.empty() && !entry.section.empty() && !whole_number(entry.value))
            Reporter{found, path, entry.line}(keyboard_mapping, entry.key, "\"" + entry.value + "\" is not a number",
                                              "keys have the codes of characters");
    });
    if (!found.empty())
        faults.push_back(found.front());
}

} // namespace

void check_program_files(Installation&, Faults& faults) {
    for (const char* const background : path::backgrounds)
        check_picture_file(
            with_slashes(background), [](int w, int h) { return w == layout_width && h == layout_height; }, "800 x 600",
            faults);
    check_picture_file(
        path::pointer, [](int w, int h) { return w <= 64 && h <= 64; }, "at most 64 x 64", faults);
    for (const Film& film : films)
        check_film(film.path, faults);
    for (const char* module : module_names)
        check_module(module, faults);
    for (const std::string_view keyboard : path::keyboards)
        check_keyboard(std::string(keyboard), faults);
    check_presence(with_slashes(path::manual), "add the manual, or the player cannot open it", faults);
    if (!file_exists(path::log_folder, FA_DIREC | FA_ARCH | FA_RDONLY | FA_HIDDEN, nullptr))
        Reporter{faults, path::log_folder}(log_folder_missing, "", "is missing",
                                           "create the folder: the program cannot write its log without it");
}

} // namespace vcc::kit
