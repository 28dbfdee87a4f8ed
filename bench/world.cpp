#include "world.h"

#include "cc/screens.h"
#include "core/installation.h"
#include "core/layout.h"
#include "display/buffers.h"
#include "screen/buffer_list.h"
#include "screen/draw.h"
#include "screen/draw_slot.h"
#include "screen/text_window.h"
#include "settings/settings.h"
#include "sound/sound.h"
#include "text/fonts.h"
#include "text/language.h"

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
    layout_width = picture_width;
    layout_height = picture_height;
    stand_in.reset(create_bitmap(layout_width, layout_height));
    screen = stand_in.get();
    sound_on = music_on = 0;
    select_config_file();
    load_language();
    load_messages(message_file(1));
    if (!load_fonts(path::fonts))
        return "the fonts cannot be loaded";
    configure_fonts();
    select_font(0);
    dot_spacing = 2;
    show_slot_pictures = 1;
    if (load_cc_slot_sets() == leave_code)
        return "the screens cannot be loaded";
    setup_cc_screens();
    if (load_text_windows(text_window_prefix + path::text_windows) == 0)
        return "the text windows cannot be loaded";
    if (load_graphic_buffers(path::buffer_list) == 0 || !graphic_buffer(screen_buffer))
        return "the graphic buffers cannot be loaded";
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
