// The table of options. A new option needs a row here, its setting in settings/settings.h, its texts in
// text/screen_texts.cpp, and a button in the screen's source.
#pragma once

#include "cc/option_rows.h"
#include "cc/theme_player.h"
#include "display/graphics_mode.h"
#include "settings/keyboard_layout.h"
#include "settings/settings.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "text/screen_texts.h"

namespace vcc {

template <int Settings::*member>
int& setting_of(Module) {
    return settings.*member;
}
template <int ModuleVolumes::*member>
int& volume_of(Module module) {
    return settings.volumes[index_of(module)].*member;
}

/// By the modes that this machine offers; `as_it_was` if they are unknown.
inline Entry screen_mode_entry(int value) {
    if (screen_mode_range == ModeRange::both)
        return Entry::choosable;
    if (screen_mode_range != ModeRange::window_only && screen_mode_range != ModeRange::full_screen_only)
        return Entry::as_it_was;
    return value == (screen_mode_range == ModeRange::full_screen_only ? 1 : 0) ? Entry::shown : Entry::hidden;
}

/// A depth that the display does not offer is grey.
inline Entry depth_entry(int value) {
    return depth_class[static_cast<std::size_t>(value)] ? Entry::choosable : Entry::grey;
}

inline void settle_depth(int direction) {
    settings.bitmap_depth = settled_depth(settings.bitmap_depth, direction, depth_class);
}

inline bool may_step_depth(bool forward) {
    return (settings.bitmap_depth != 0 || !depth_class[0]) &&
           (!forward || screen_mode_range > ModeRange::full_screen_only);
}

/// Its values are described in cc/option_rows.h.
constexpr OptionRow option(Row row, std::string_view name, int button, Group group, int step_code, int choose_code,
                           int explanation, ValueLabels labels, int offered, int& (*setting)(Module),
                           OptionRules rules = {}) {
    return {row, name, button, group, step_code, choose_code, explanation, labels, offered, setting, rules};
}

inline constexpr OptionRow option_table[] = {
    option(Row::effects, "effects_volume", 22, Group::sound, 7, 20, explanation_number(0), {0, 11}, 11,
           volume_of<&ModuleVolumes::effects>,
           {.needs = Needs::sound, .apply = use_effects_volume, .presses_twice = true}),
    option(Row::music, "music_volume", 24, Group::sound, 8, 21, explanation_number(1), {0, 11}, 11,
           volume_of<&ModuleVolumes::music>,
           {.needs = Needs::music,
            .apply =
                [](Module module) {
                    set_music_volume(music_volume = settings.volumes[index_of(module)].music * volume_step);
                }}),
    option(Row::theme, "theme", 26, Group::sound, 9, 22, explanation_number(2), {}, 0,
           [](Module module) -> int& { return settings.theme[index_of(module)]; },
           {.needs = Needs::music, .apply = [](Module module) { play_theme_of(module); }, .loops = true}),
    option(Row::screen_mode, "screen_mode", 29, Group::display, 10, 23, explanation_number(3), {20, 2}, 2,
           setting_of<&Settings::screen_mode>,
           {.stepping = Stepping::flip,
            .may_step = [](bool) { return screen_mode_range == ModeRange::both; },
            .may_choose = [] { return screen_mode_range == ModeRange::both; },
            .entry = screen_mode_entry}),
    option(Row::resolution, "resolution", 31, Group::display, 12, 24, explanation_number(4), {30, 5}, 5,
           setting_of<&Settings::resolution>, {.shown_when_pointed_at = false}),
    option(Row::depth, "bitmap_depth", 33, Group::display, 11, 25, explanation_number(5), {40, 4}, 3,
           setting_of<&Settings::bitmap_depth>,
           {.settle = settle_depth,
            .may_step = may_step_depth,
            .entry = depth_entry,
            .presses_in_vain = true,
            .explained_when_chosen = true}),
    option(Row::animations, "brontar_anim", 36, Group::battle, 13, 26, explanation_number(6), {50, 2}, 2,
           setting_of<&Settings::brontar_anim>, {.stepping = Stepping::flip}),
    option(Row::sprite_speed, "sprite_speed", 38, Group::battle, 14, 27, explanation_number(7), {60, 4}, 4,
           setting_of<&Settings::sprite_speed>),
    option(Row::message_delay, "message_delay", 40, Group::battle, 15, 28, explanation_number(8), {70, 4}, 4,
           setting_of<&Settings::message_delay>),
    option(Row::message_detail, "message_detail", 42, Group::battle, 16, 29, explanation_number(9), {80, 4}, 4,
           setting_of<&Settings::message_detail>),
    option(Row::keyboard, "keyboard", 48, Group::display, 19, 37, explanation_number(10), {90, 6}, 2,
           setting_of<&Settings::keyboard>,
           {.apply = [](Module) { apply_keyboard_layout(); }, .settle = [](int) { write_keyboard_layout(); }}),
};

} // namespace vcc
