#include "display/graphics_mode.h"

#include "core/alert.h"
#include "core/handles.h"
#include "core/log.h"
#include "display/buffers.h"
#include "display/display_scale.h"
#include "display/switching.h"
#include "settings/config_file.h"
#include "settings/settings.h"
#include "settings/values.h"
#include "x11/display.h"
#include "x11/scaled_display.h"

#include <algorithm>
#include <vector>

namespace vcc {

namespace {

struct Setup {
    Desktop desktop;
    int requested_depth = 0;
};

/// A depth of 0 keeps the present one.
bool set_mode(bool full, int depth) {
    if (depth != 0)
        set_color_depth(depth);
    return set_gfx_mode(full ? GFX_AUTODETECT_FULLSCREEN : GFX_AUTODETECT_WINDOWED, layout_width, layout_height, 0,
                        0) == 0;
}

SetupResult fail(ModeFailure failure, const Setup& setup) {
    const ModeFailureRow& row = failure_row(failure);
    show_message_box(row.shown);
    write_log(row.logged.empty() ? error_line(row.number, setup.desktop, setup.requested_depth, fullscreen, mode_range)
                                 : std::string(row.logged));
    return row.result;
}

Desktop read_desktop() {
    Desktop desktop;
    if (get_desktop_resolution(&desktop.width, &desktop.height) != 0)
        desktop.width = desktop.height = 0;
    desktop.depth = desktop_color_depth();
    return desktop;
}

SetupResult finish(const Setup& setup) {
    depth_class = depth_flags(setup.requested_depth);
    install_display_switching();
    return SetupResult::ok;
}

SetupResult set_configured(Setup& setup) {
    bool full = static_cast<std::int8_t>(stored_number("screen_mode")) != 0;
    const int bitmap_depth = stored_number("bitmap_depth");
    mode_range = screen_mode_range;
    if (mode_range == ModeRange::window_only) {
        full = false;
        write_number("screen_mode", 0);
    }
    fullscreen = full ? full_screen : windowed;
    setup.requested_depth = depth_bits(bitmap_depth);
    if (setup.requested_depth == 0 || !set_mode(full, setup.requested_depth))
        return fail(full ? ModeFailure::configured_full_screen : ModeFailure::configured_window, setup);
    return finish(setup);
}

int listed_depth() {
    const ModeListPtr list(get_gfx_mode_list(platform::full_screen_list_driver));
    if (!list)
        return 0;
    std::vector<ListedMode> modes;
    modes.reserve(static_cast<std::size_t>(std::max(list->num_modes, 0)));
    for (int i = 0; i < list->num_modes; ++i)
        modes.push_back({list->mode[i].width, list->mode[i].height, list->mode[i].bpp});
    return best_listed_depth(modes, platform::full_screen_is_centred);
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
    mode_range = offered_modes(mode_range, setup.desktop.is_exact());
    if (mode_range == ModeRange::none)
        return fail(ModeFailure::no_mode, setup);

    const bool full = mode_range == ModeRange::full_screen_only || fullscreen == full_screen;
    if (!set_probed(full, setup))
        return fail(probed_failure(full, setup.requested_depth), setup);
    const std::optional<int> bitmap_depth = depth_setting(setup.requested_depth);
    if (!bitmap_depth)
        return fail(ModeFailure::depth_not_found, setup);

    screen_mode_range = mode_range;
    write_number("bitmap_depth", *bitmap_depth);
    write_number("screen_mode_range", static_cast<int>(screen_mode_range));
    write_number("screen_mode", fullscreen == full_screen ? 1 : 0);
    return finish(setup);
}

void switch_to_depth(bool toggle, int depth, int old_depth) {
    follow_window_manager();
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
    setup.desktop = read_desktop();
    if (const auto failure = desktop_failure(setup.desktop))
        return fail(*failure, setup);
    if (setup.desktop.is_exact())
        fullscreen = full_screen;
    start_display_scaling();
    if (screen_mode_range != ModeRange::untried && mode != probe_machine)
        return set_configured(setup);
    return probe(setup);
}

void follow_window_manager() {
    if (const std::optional<bool> full = platform::shown_in_full_screen())
        fullscreen = *full ? full_screen : windowed;
}

void switch_display_mode(bool toggle) {
    const int depth = get_color_depth();
    switch_to_depth(toggle, depth, depth);
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
    if (!depth_offered(depth_class, settings.bitmap_depth))
        return false;
    show_mouse(nullptr);
    release_graphic_buffers();
    switch_to_depth(toggle, depth_bits(settings.bitmap_depth), get_color_depth());
    return true;
}

} // namespace vcc
