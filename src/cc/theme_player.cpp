#include "cc/theme_player.h"

#include "cc/options_view.h"
#include "cc/theme_rule.h"
#include "sound/music.h"
#include "sound/sound.h"

namespace vcc {

namespace {

Themes next(ThemeEvent event) {
    return next_themes({theme_shown, current_theme, selected_theme()}, event, selected_loop() == 1, number_of_themes);
}

} // namespace

void answer_for_theme_order() {
    set_theme_order_source([] { return ThemeOrder{selected_loop() == 1, next(ThemeEvent::ended).streaming}; });
}

bool play_selected_theme() {
    if (!needs_met(Needs::music))
        return false;
    music_volume = selected_volumes().music * volume_step;
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
    selected_theme() = themes.stored;
    return true;
}

} // namespace vcc
