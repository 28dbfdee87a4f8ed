// A game module: what docs/modules.md says of its entry, and no more. Escape goes back to the menu.
#include "veldor_module.h"

#include <allegro.h>

@ENTRY@ {
    const int white = makecol(235, 235, 235);
    clear_to_color(screen, makecol(16, 20, 32));
    textout_centre_ex(screen, font, "@TITLE@: @MODULE@", SCREEN_W / 2, SCREEN_H / 2 - 20, white, -1);
    textout_centre_ex(screen, font, "Escape", SCREEN_W / 2, SCREEN_H / 2 + 20, white, -1);
    clear_keybuf();
    while (!keypressed() || readkey() >> 8 != KEY_ESC)
        rest(10);
    return fullscreen;
}
