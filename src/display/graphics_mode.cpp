#include "display/graphics_mode.h"

#include "core/alert.h"
#include "core/handles.h"
#include "core/log.h"
#include "display/buffers.h"
#include "display/switching.h"
#include "settings/config_file.h"
#include "settings/settings.h"
#include "settings/values.h"
#include "x11/display.h"

#include <algorithm>
#include <utility>

namespace vcc {

namespace {

/// Applies the setting `display_scale`, once: it holds for every mode to come.
void start_scaling() {
    static bool started = false;
    if (std::exchange(started, true))
        return;
    const int x = read_number("window_x"), y = read_number("window_y");
    const platform::WindowPlace first{{x, y, x + read_number("window_width"), y + read_number("window_height")},
                                      read_number("window_maximised") != 0};
    const auto fit = static_cast<platform::Fit>(read_number("display_scale"));
    if (const std::string obstacle = platform::show_scaled(fit, first); !obstacle.empty())
        write_log("The picture keeps its size: " + obstacle);
}

/// The desktop as the library reports it, 0 where unknown, and the depth that the set-up has decided on.
struct Setup {
    int width = 0, height = 0, depth = desktop_color_depth();
    int requested_depth = 0;

    Setup() {
        if (get_desktop_resolution(&width, &height) != 0)
            width = height = 0;
    }
    bool is_exact() const { return width == layout_width && height == layout_height; }
    bool is_too_small() const { return width != 0 && height != 0 && (width < layout_width || height < layout_height); }
};

/// Bits per pixel of a bitmap_depth setting; 0 outside 0 to 3.
constexpr int depth_bits(int bitmap_depth) {
    return bitmap_depth >= 0 && bitmap_depth < 4 ? depths[static_cast<std::size_t>(bitmap_depth)] : 0;
}

/// The number of the failure when a mode cannot be set: 1 to 4 for a probed one, 5 and 6 for the configured one.
constexpr int failure_number(bool probed, bool full, int requested_depth) {
    if (!probed)
        return full ? 5 : 6;
    return (full ? 1 : 3) + (requested_depth == 16 ? 0 : 1);
}

/// A depth of 0 keeps the present one.
bool set_mode(bool full, int depth) {
    if (depth != 0)
        set_color_depth(depth);
    return set_gfx_mode(full ? GFX_AUTODETECT_FULLSCREEN : GFX_AUTODETECT_WINDOWED, layout_width, layout_height, 0,
                        0) == 0;
}

SetupResult fail(std::string_view shown_and_logged) {
    show_message_box(shown_and_logged);
    write_log(shown_and_logged);
    return SetupResult::fatal;
}

SetupResult fail_to_set(bool probed, bool full, const Setup& setup) {
    const int number = failure_number(probed, full, setup.requested_depth);
    show_message_box(format_text("gfx mode error %d !", number));
    write_log(format_text("Error %d: Desktop %d/%d/%d Request %d/%d/%d", number, setup.depth, setup.width, setup.height,
                          setup.requested_depth, static_cast<std::int8_t>(fullscreen), static_cast<int>(mode_range)));
    return probed ? SetupResult::fatal : SetupResult::retry;
}

SetupResult finish(const Setup& setup) {
    depth_class = depth_flags(setup.requested_depth);
    install_display_switching();
    return SetupResult::ok;
}

SetupResult set_configured(Setup& setup) {
    bool full = read_number("screen_mode") != 0;
    const int bitmap_depth = stored_number("bitmap_depth");
    mode_range = screen_mode_range;
    if (mode_range == ModeRange::window_only) {
        full = false;
        write_number("screen_mode", 0);
    }
    fullscreen = full ? full_screen : windowed;
    setup.requested_depth = depth_bits(bitmap_depth);
    if (setup.requested_depth == 0 || !set_mode(full, setup.requested_depth))
        return fail_to_set(false, full, setup);
    return finish(setup);
}

/// The largest colour depth of a listed mode of 800 x 600 or, if the driver centres the picture, of any larger mode; 0
/// below 15 bits.
int listed_depth() {
    const ModeListPtr list(get_gfx_mode_list(platform::full_screen_list_driver));
    int best = 0;
    for (int i = 0; list && i < list->num_modes; ++i) {
        const GFX_MODE& mode = list->mode[i];
        const bool exact = mode.width == layout_width && mode.height == layout_height;
        const bool roomy = mode.width >= layout_width && mode.height >= layout_height;
        if (exact || (platform::full_screen_is_centred && roomy))
            best = std::max(best, mode.bpp);
    }
    return best >= 15 ? best : 0;
}

/// Returns the depth that it has set, or 0.
int first_depth_that_works(bool full) {
    const auto* const found = std::ranges::find_if(depths, [full](int depth) { return set_mode(full, depth); });
    return found == depths.end() ? 0 : *found;
}

void look_for_full_screen(Setup& setup) {
    if (const int depth = listed_depth(); depth != 0) {
        setup.requested_depth = depth;
        mode_range = ModeRange::full_screen_only;
    }
    if (mode_range != ModeRange::none)
        return;
    setup.requested_depth = first_depth_that_works(true);
    if (setup.requested_depth != 0)
        mode_range = ModeRange::full_screen_only;
    else
        fullscreen = windowed;
}

/// Sets the probed mode; falls back from 16 bits to 15, and for a window without a depth tries them all.
bool set_probed(bool full, Setup& setup) {
    if (!full && setup.requested_depth == 0) {
        setup.requested_depth = first_depth_that_works(false);
        return setup.requested_depth != 0;
    }
    if (set_mode(full, setup.requested_depth))
        return true;
    if (setup.requested_depth != 16 || !set_mode(full, 15))
        return false;
    setup.requested_depth = 15;
    return true;
}

SetupResult probe(Setup& setup) {
    look_for_full_screen(setup);
    if (!setup.is_exact()) // a desktop larger than the picture always offers a window
        mode_range = mode_range != ModeRange::none ? ModeRange::both : ModeRange::window_only;
    if (mode_range == ModeRange::none)
        return fail("No valid videomode detected !");

    const bool full = mode_range == ModeRange::full_screen_only || fullscreen == full_screen;
    if (!set_probed(full, setup))
        return fail_to_set(true, full, setup);
    const std::optional<int> bitmap_depth = depth_setting(setup.requested_depth);
    if (!bitmap_depth) {
        show_message_box("First run fdepth error !");
        write_log("First run fdepth error");
        return SetupResult::fatal;
    }

    screen_mode_range = mode_range;
    write_number("bitmap_depth", *bitmap_depth);
    write_number("screen_mode_range", static_cast<int>(screen_mode_range));
    write_number("screen_mode", fullscreen == full_screen ? 1 : 0);
    return finish(setup);
}

void show_buffer_zero() {
    show_mouse(nullptr);
    copy_to_screen(graphic_buffer(screen_buffer));
    show_mouse(screen);
}

void switch_to_depth(bool toggle, int depth) {
    follow_window_manager();
    const int old_depth = get_color_depth();
    const bool full = (fullscreen == full_screen) != toggle;
    if (set_mode(full, depth)) {
        fullscreen = full ? full_screen : windowed;
    } else { // the library has already closed its screen
        const bool restored = set_mode(fullscreen == full_screen, old_depth);
        write_log(format_text("Cannot set the %s mode at %d bits, %s", full ? "full-screen" : "window", depth,
                              restored ? "the previous mode stays" : "and the previous mode is lost"));
    }
    show_buffer_zero();
    install_display_switching();
}

} // namespace

SetupResult setup_graphics_mode(std::int8_t mode) {
    fullscreen = windowed;
    select_config_file();
    screen_mode_range = ModeRange{read_number("screen_mode_range")};

    Setup setup;
    if (setup.is_too_small())
        return fail("Wrong desktop resolution!\n800x600 is minimum");
    if (!setup.is_exact() && setup.depth < 15)
        return fail("Wrong Desktop color depth!\n16bit is minimum");
    if (setup.is_exact())
        fullscreen = full_screen;
    start_scaling();
    if (screen_mode_range != ModeRange::untried && mode != probe_machine)
        return set_configured(setup);
    return probe(setup);
}

void follow_window_manager() {
    if (const std::optional<bool> full = platform::shown_in_full_screen())
        fullscreen = *full ? full_screen : windowed;
}

void switch_display_mode(bool toggle) {
    switch_to_depth(toggle, get_color_depth());
}

void ensure_display(int depth, const std::string& culprit) {
    const int bits = screen != nullptr ? bitmap_color_depth(screen) : 0;
    const int width = screen != nullptr ? SCREEN_W : 0, height = screen != nullptr ? SCREEN_H : 0;
    if (width == layout_width && height == layout_height && bits >= 15 && bits == get_color_depth())
        return;
    const bool full = fullscreen == full_screen;
    if (!set_mode(full, depth) && set_mode(!full, depth))
        fullscreen = full ? windowed : full_screen;
    write_log(format_text("%s has left a display of %d x %d at %d bits: %d x %d at %d bits %s", culprit.c_str(), width,
                          height, bits, layout_width, layout_height, depth,
                          screen != nullptr ? "is set again" : "cannot be set again"));
}

bool rebuild_display(bool toggle) {
    const int depth = depth_bits(settings.bitmap_depth);
    if (depth == 0 || depth_flags(depth) != depth_class)
        return false;
    show_mouse(nullptr);
    release_graphic_buffers();
    switch_to_depth(toggle, depth);
    return true;
}

void remember_window() {
    const std::optional<platform::WindowPlace> place = platform::window_place();
    if (!place)
        return;
    write_number("window_maximised", place->maximised ? 1 : 0);
    if (place->area.empty())
        return;
    write_number("window_width", place->area.size().width);
    write_number("window_height", place->area.size().height);
    write_number("window_x", std::max(0, place->area.x1));
    write_number("window_y", std::max(0, place->area.y1));
}

} // namespace vcc
