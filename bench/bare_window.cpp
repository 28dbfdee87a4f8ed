// The least a program of the graphics library does: a window of 800 x 600 in one colour, until it is killed.

#include <allegro.h>

int main() {
    if (allegro_init() != 0)
        return 1;
    set_color_depth(32);
    if (set_gfx_mode(GFX_AUTODETECT_WINDOWED, 800, 600, 0, 0) != 0)
        return 1;
    clear_to_color(screen, makecol(255, 128, 0));
    install_timer();
    install_keyboard();
    install_mouse();
    for (;;)
        rest(10);
}
END_OF_MAIN()
