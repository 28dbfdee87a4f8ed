#include "cc/theme_player.h"

#include "cc/options_view.h"
#include "cc/theme_rule.h"
#include "settings/settings.h"
#include "sound/music.h"
#include "sound/sound.h"

namespace vcc {

namespace {

int& stored_theme() {
    return settings.theme[index_of(selected_module)];
}

Themes next(ThemeEvent event) {
    const bool loop_all = theme_loop[index_of(selected_module)] == 1;
    return next_themes({theme_shown, current_theme, stored_theme()}, event, loop_all, number_of_themes);
}

} // namespace

void answer_for_theme_order() {
    set_theme_order_source([] {
        return ThemeOrder{theme_loop[index_of(selected_module)] == 1, next(ThemeEvent::ended).streaming};
    });
}

bool play_selected_theme() {
    if (!needs_met(Needs::music))
        return false;
    music_volume = settings.volumes[index_of(selected_module)].music * volume_step;
    const Themes themes = next(ThemeEvent::wanted);
    if (!start_theme(themes.streaming, music_volume)) {
        disable_music_controls();
        return false;
    }
    current_theme = themes.shown;
    set_music_volume(music_volume);
    return true;
}

bool notice_theme() {
    feed_music();
    const Themes themes = next(ThemeEvent::looked);
    if (themes.shown == current_theme)
        return false;
    current_theme = themes.shown;
    stored_theme() = themes.stored;
    return true;
}

} // namespace vcc
