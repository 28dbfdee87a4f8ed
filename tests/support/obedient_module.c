/* A game module that does what it is told, a file at a time: it reads module_order.txt, removes it, obeys, and writes
 * module_state.txt anew: the pointer's place, and how many orders it has obeyed. Orders: "mode FULL WIDTH HEIGHT
 * DEPTH", "place X Y" (of the pointer), "cursor SHAPE" (of the system's), "hide" (the pointer), "spoil" (leave
 * everything otherwise than it was), "leave MODE". */
#include "module_entries.h"

#include <allegro.h>
#include <string.h>
#include <unistd.h>

/* Bands in all colours with fine lines and single pixels in between. */
static void draw_pattern(void) {
    BITMAP* pattern = create_bitmap(SCREEN_W, SCREEN_H);
    for (int y = 0; y < SCREEN_H; ++y)
        for (int x = 0; x < SCREEN_W; ++x)
            putpixel(pattern, x, y,
                     y % 100 < 50  ? makecol(x * 255 / SCREEN_W, y * 255 / SCREEN_H, (x + y) & 255)
                     : (x ^ y) & 1 ? makecol(255, 255, 255)
                                   : makecol(x & 255, 0, y & 255));
    blit(pattern, screen, 0, 0, 0, 0, SCREEN_W, SCREEN_H);
    destroy_bitmap(pattern);
    /* straight on the screen, where the library would ask the display server when it may */
    rect(screen, 0, 0, SCREEN_W - 1, SCREEN_H - 1, makecol(255, 0, 0));
    rectfill(screen, 100, 120, 180, 160, makecol(10, 200, 30));
    hline(screen, 20, 300, 450, makecol(255, 255, 255));
    vline(screen, 420, 30, 400, makecol(0, 255, 255));
    for (int i = 0; i < 50; ++i)
        putpixel(screen, 300 + i, 200 + i, makecol(255, 0, 255));
}

static void never(void) {}
static void never_flags(int flags) {
    (void)flags;
}
static int never_key(int key) {
    return key;
}

static void spoil(void) {
    SAMPLE* tone = create_sample(16, 0, 22050, 22050);
    for (int i = 0; i < 22050; ++i)
        ((unsigned short*)tone->data)[i] = i / 50 % 2 ? 0xC000 : 0x4000;
    play_sample(tone, 255, 128, 1000, TRUE);
    position_mouse_z(7);
    poll_mouse();
    poll_keyboard();
    set_mouse_range(10, 10, 50, 50);
    set_mouse_speed(5, 5);
    BITMAP* arrow = create_bitmap(16, 16);
    clear_to_color(arrow, makecol(0, 255, 0));
    set_mouse_sprite(arrow);
    select_mouse_cursor(MOUSE_CURSOR_BUSY);
    show_mouse(screen);
    remove_keyboard();
    remove_timer();
    install_timer();
    install_int(never, 3);
    mouse_callback = never_flags;
    keyboard_callback = never_key;
    set_display_switch_callback(SWITCH_OUT, never);
    set_close_button_callback(never);
    set_clip_rect(screen, 100, 100, 300, 300);
    drawing_mode(DRAW_MODE_XOR, NULL, 0, 0);
    set_uformat(U_UNICODE);
    set_color_conversion(COLORCONV_NONE);
    font = NULL;
    set_config_data("[mine]\nkey=1\n", 13);
    if (chdir("/") != 0)
        return;
}

static uint8_t stay(uint8_t fullscreen) {
    int obeyed = 0;
    clear_to_color(screen, 0); /* who waits for the menu waits until it is drawn again */
    for (;;) {
        char order[16] = "";
        int a = 0, b = 0, c = 0, d = 0;
        FILE* file = fopen("module_order.txt", "r");
        if (file) {
            if (fscanf(file, "%15s %d %d %d %d", order, &a, &b, &c, &d) < 1)
                order[0] = 0;
            fclose(file);
            remove("module_order.txt");
            ++obeyed;
        }
        if (strcmp(order, "leave") == 0)
            return (uint8_t)a;
        if (strcmp(order, "spoil") == 0) {
            spoil();
            return fullscreen;
        }
        if (strcmp(order, "cursor") == 0) {
            enable_hardware_cursor();
            select_mouse_cursor(a);
            show_mouse(screen);
        }
        if (strcmp(order, "hide") == 0)
            show_mouse(NULL);
        if (strcmp(order, "place") == 0)
            position_mouse(a, b);
        if (strcmp(order, "mode") == 0) {
            set_color_depth(d);
            if (set_gfx_mode(a ? GFX_AUTODETECT_FULLSCREEN : GFX_AUTODETECT_WINDOWED, b, c, 0, 0) != 0)
                return fullscreen;
            draw_pattern();
        }
        file = fopen("module_state.new", "w");
        if (file) {
            fprintf(file, "%d %d %d\n", mouse_x, mouse_y, obeyed);
            fclose(file);
            rename("module_state.new", "module_state.txt");
        }
        rest(5);
    }
}
