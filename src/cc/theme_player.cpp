#include "cc/theme_player.h"

#include "settings/settings.h"
#include "sound/sound.h"

namespace vcc {

ThemeOrder theme_order_of(Module module) {
    const int heard = themes.streaming;
    if (theme_loop[index_of(module)] != 1)
        return {false, heard};
    return {true, heard >= 0 && heard + 1 < number_of_themes ? heard + 1 : 0};
}

bool play_theme_of(Module module) {
    if (!sound_on || !music_on)
        return false;
    const int theme = settings.theme[index_of(module)];
    music_volume = settings.volumes[index_of(module)].music * volume_step;
    if (!start_theme(theme, music_volume))
        return false;
    themes.shown = theme;
    set_music_volume(music_volume);
    return true;
}

bool notice_theme(Module module) {
    feed_music();
    if (theme_loop[index_of(module)] != 1 || themes.shown == themes.streaming)
        return false;
    themes.shown = settings.theme[index_of(module)] = themes.streaming;
    return true;
}

} // namespace vcc
