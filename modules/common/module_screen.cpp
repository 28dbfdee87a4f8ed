#include "module_screen.h"

#include "platform/truetype.h"

#include <allegro.h>

#include <atomic>
#include <cstdio>
#include <memory>

namespace module {

namespace {

constexpr int width = 800, height = 600;
constexpr std::uint8_t window_mode = 0, full_screen_mode = 0xFF;

struct BitmapCloser {
    void operator()(BITMAP* bitmap) const noexcept { destroy_bitmap(bitmap); }
};
using Picture = std::unique_ptr<BITMAP, BitmapCloser>;
using Font = std::unique_ptr<vcc::platform::TrueTypeFont>;

/// Set when the player comes back from another program: the screen may have lost its contents.
std::atomic<bool> must_redraw{true};
void on_switch_in() {
    must_redraw = true;
}

void watch_switching() {
    set_display_switch_mode(SWITCH_BACKGROUND);
    set_display_switch_callback(SWITCH_IN, on_switch_in);
}

/// Sets the other display mode; keeps the one in force when that fails.
std::uint8_t switch_mode(std::uint8_t fullscreen) {
    const auto set = [](std::uint8_t mode) {
        return set_gfx_mode(mode == window_mode ? GFX_AUTODETECT_WINDOWED : GFX_AUTODETECT_FULLSCREEN, width, height, 0,
                            0) == 0;
    };
    const std::uint8_t other = fullscreen == window_mode ? full_screen_mode : window_mode;
    const bool switched = set(other);
    if (!switched)
        set(fullscreen);
    watch_switching();
    must_redraw = true;
    return switched ? other : fullscreen;
}

Font load_font(const char* file, int height_px) {
    Font font = vcc::platform::load_truetype_font(std::string("fonts/") + file);
    if (font)
        font->set_size(height_px);
    return font;
}

struct Fonts {
    Font title = load_font("arial.ttf", 44);
    Font text = load_font("arial.ttf", 17);
};

void write(BITMAP* target, const Font& face, const std::string& text, int x, int y, int colour) {
    if (!face) {
        textout_ex(target, font, text.c_str(), x, y, colour, -1);
        return;
    }
    face->text_out_aa(target, text, x + 1, y + 1, makecol(0, 0, 0));
    face->text_out_aa(target, text, x, y, colour);
}

void draw_panel(BITMAP* target, int x, int y, int right, int bottom) {
    drawing_mode(DRAW_MODE_TRANS, nullptr, 0, 0);
    set_trans_blender(0, 0, 0, 176);
    rectfill(target, x, y, right, bottom, makecol(12, 15, 20));
    solid_mode();
    rect(target, x, y, right, bottom, makecol(99, 115, 143));
    rectfill(target, x, y, right, y + 3, makecol(255, 167, 0));
}

Picture draw(const Screen& shown, const Fonts& fonts, std::uint8_t fullscreen) {
    Picture canvas(create_bitmap(width, height));
    if (!canvas)
        return canvas;
    clear_to_color(canvas.get(), makecol(18, 17, 15));
    PALETTE palette;
    if (const Picture picture{load_pcx(shown.picture, palette)})
        blit(picture.get(), canvas.get(), 0, 0, 0, 0, width, height);

    constexpr int left = 40, top = 40, line_height = 28;
    const int amber = makecol(255, 191, 67), label = makecol(167, 175, 190), value = makecol(235, 235, 235);
    write(canvas.get(), fonts.title, shown.title, left, top, amber);
    write(canvas.get(), fonts.text, shown.subtitle, left + 2, top + 52, value);

    const int panel_top = 150, rows = static_cast<int>(shown.lines.size()) + 1;
    draw_panel(canvas.get(), left, panel_top, left + 380, panel_top + 28 + rows * line_height);
    int y = panel_top + 18;
    const auto row = [&](const std::string& name, const std::string& text) {
        write(canvas.get(), fonts.text, name, left + 18, y, label);
        write(canvas.get(), fonts.text, text, left + 190, y, value);
        y += line_height;
    };
    row("Display now", mode_name(fullscreen));
    for (const Line& line : shown.lines)
        row(line.label, line.value);

    const char* hint = shown.mode_range == 3
                           ? "Escape or a click: back to the control centre     Alt+W: window or full screen"
                           : "Escape or a click: back to the control centre";
    draw_panel(canvas.get(), left, height - 62, width - left, height - 24);
    write(canvas.get(), fonts.text, hint, left + 18, height - 53, value);
    return canvas;
}

bool escape_pressed(bool& wants_switch) {
    while (keypressed()) {
        int scancode = 0;
        ureadkey(&scancode);
        if (scancode == KEY_ESC)
            return true;
        if (scancode == KEY_W && (key_shifts & KB_ALT_FLAG))
            wants_switch = true;
    }
    return false;
}

} // namespace

std::uint8_t run(const Screen& shown, std::uint8_t fullscreen) {
    vcc::platform::init_truetype();
    {
        const Fonts fonts;
        watch_switching();
        clear_keybuf();
        must_redraw = true;
        bool released = false; // the click that led here may still be held
        while (true) {
            bool wants_switch = false;
            if (escape_pressed(wants_switch) || (released && mouse_b))
                break;
            released = released || !mouse_b;
            if (wants_switch && shown.mode_range == 3)
                fullscreen = switch_mode(fullscreen);
            if (must_redraw.exchange(false))
                if (const Picture canvas = draw(shown, fonts, fullscreen)) {
                    show_mouse(nullptr);
                    blit(canvas.get(), screen, 0, 0, 0, 0, width, height);
                    show_mouse(screen);
                }
            rest(5);
        }
        while (mouse_b) // the control centre must not see this click
            rest(5);
        clear_keybuf();
        show_mouse(nullptr);
    }
    vcc::platform::exit_truetype();
    return fullscreen;
}

std::string setting(const char* section, const char* key, const char* fallback) {
    const char* text = get_config_string(section, key, fallback);
    return text ? text : "";
}
int number_setting(const char* section, const char* key, int fallback) {
    return get_config_int(section, key, fallback);
}

std::string mode_name(std::uint8_t fullscreen) {
    return fullscreen == window_mode ? "window" : "full screen";
}

std::string version_name(std::int32_t version) {
    return std::to_string(version / 100) + "." + std::to_string(version % 100 / 10) + "." +
           std::to_string(version % 10);
}

std::string range_name(std::int32_t mode_range) {
    constexpr const char* names[] = {"not probed", "full screen only", "window only", "window and full screen"};
    return mode_range >= 1 && mode_range <= 3 ? names[mode_range] : names[0];
}

} // namespace module
