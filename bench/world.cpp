#include "world.h"

#include "cc/load.h"
#include "core/installation.h"
#include "display/buffers.h"
#include "settings/config_file.h"
#include "settings/settings.h"
#include "sound/sound.h"
#include "text/fonts.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <initializer_list>

namespace vcc::bench {

namespace {

namespace fs = std::filesystem;

fs::path scratch;
BitmapPtr stand_in;

/// Pictures and sounds are only read, and tens of megabytes: they are linked. The rest is copied, as settings and log
/// are written.
bool copy_installation() {
    const char* const named = std::getenv("VELDOR_INSTALLATION");
    std::error_code error;
    const fs::path source = fs::canonical(named ? named : VELDOR_BUILT_INSTALLATION, error);
    if (error || !fs::exists(source / path::buffer_list, error))
        return false;
    std::string pattern = (fs::temp_directory_path() / "veldor-bench-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        return false;
    scratch = pattern;
    for (const char* folder : {"data", "tools"})
        fs::copy(source / folder, scratch / folder, fs::copy_options::recursive, error);
    for (const char* folder : {"images", "sounds", "fonts"})
        fs::create_directory_symlink(source / folder, scratch / folder, error);
    fs::current_path(scratch, error);
    return !error;
}

} // namespace

const char* enter_world() {
    if (!copy_installation())
        return "no built installation: build the release preset, or name a folder in VELDOR_INSTALLATION";
    set_uformat(U_ASCII);
    if (install_allegro(SYSTEM_NONE, &errno, nullptr) != 0)
        return "the graphics library does not start";
    set_color_depth(depth);
    _rgb_r_shift_32 = 16; // as the display has it
    _rgb_g_shift_32 = 8;
    _rgb_b_shift_32 = 0;
    stand_in.reset(create_bitmap(layout_width, layout_height));
    screen = stand_in.get();
    sound_on = music_on = 0;
    select_config_file();
    load_language_files();
    if (!load_fonts(path::fonts))
        return "the fonts cannot be loaded";
    load_sounds();
    if (!load_screens() || !load_windows() || !load_pictures())
        return "the screens, text windows or pictures cannot be loaded";
    prepare_background_copies();
    blit(graphic_buffer(backdrop_buffer), graphic_buffer(text_copy_buffer), 0, 0, 0, 0, layout_width, layout_height);
    return nullptr;
}

void leave_world() {
    release_graphic_buffers();
    release_fonts();
    screen = nullptr;
    stand_in.reset();
    std::error_code ignored;
    fs::current_path(fs::temp_directory_path(), ignored);
    if (!scratch.empty())
        fs::remove_all(scratch, ignored);
}

BITMAP* target() {
    return graphic_buffer(screen_buffer);
}

} // namespace vcc::bench
