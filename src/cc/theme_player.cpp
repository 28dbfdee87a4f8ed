#include "cc/theme_player.h"

#include "settings/settings.h"
#include "sound/sound.h"

namespace vcc {

namespace {

int theme_after(int theme, int theme_count) {
    return theme < 0 || theme >= theme_count - 1 ? 0 : theme + 1;
}

Themes next(Module module, ThemeEvent event) {
    const std::size_t index = index_of(module);
    return next_themes(themes, settings.theme[index], event, theme_loop[index] == 1, number_of_themes);
}

} // namespace

Themes next_themes(const Themes& now, int stored, ThemeEvent event, bool loop_all, int theme_count) {
    switch (event) {
    case ThemeEvent::wanted:
        return {stored, stored};
    case ThemeEvent::ended:
        return {loop_all ? theme_after(now.streaming, theme_count) : now.streaming, now.shown};
    case ThemeEvent::looked:
        return loop_all ? Themes{now.streaming, now.streaming} : now;
    }
    return now;
}

ThemeOrder theme_order_of(Module module) {
    return {theme_loop[index_of(module)] == 1, next(module, ThemeEvent::ended).streaming};
}

bool play_theme_of(Module module) {
    if (!sound_on || !music_on)
        return false;
    music_volume = settings.volumes[index_of(module)].music * volume_step;
    const Themes wanted = next(module, ThemeEvent::wanted);
    if (!start_theme(wanted.streaming, music_volume))
        return false;
    themes.shown = wanted.shown;
    set_music_volume(music_volume);
    return true;
}

bool notice_theme(Module module) {
    feed_music();
    const int shown = next(module, ThemeEvent::looked).shown;
    if (shown == themes.shown)
        return false;
    themes.shown = settings.theme[index_of(module)] = shown;
    return true;
}

} // namespace vcc
