#include "module_screen.h"

#include "media/truetype.h"
#include "platform/files.h"
#include "platform/latin1.h"

#include <allegro.h>

#include <atomic>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <memory>

namespace module {

namespace {

constexpr int width = 800, height = 600;
constexpr std::uint8_t window_mode = 0, full_screen_mode = 0xFF;
constexpr int both_modes = 3;

constexpr Text orders_heading{"STANDING ORDERS", "TAGESBEFEHL"};
constexpr Text view_label{"Lookout", "Ausblick"};
constexpr Text window_view{"through the window", "durchs Fenster"};
constexpr Text full_view{"over the whole field", "über das ganze Feld"};
constexpr Text relay_label{"Sent by", "Absender"};
constexpr Text relay_name{"Control Centre ", "Veldor-Zentrale "};
constexpr Text back_hint{"Escape or a click: back to the control centre", "Escape oder ein Klick: zurück zur Zentrale"};
constexpr Text switch_hint{"Alt+W: window or full screen", "Alt+W: Fenster oder Vollbild"};
constexpr Text depth_names[] = {
    {"32 bits", "32 Bit"}, {"24 bits", "24 Bit"}, {"16 bits", "16 Bit"}, {"15 bits", "15 Bit"}};
constexpr Text range_names[] = {{"full screen only", "nur Vollbild"},
                                {"window only", "nur Fenster"},
                                {"window and full screen", "Fenster und Vollbild"}};
constexpr Text unknown{"unknown", "unbekannt"};

/// Index of the language that tools/language.ini names; English when it names none.
std::size_t chosen_language() {
    std::ifstream file(vcc::platform::resolve_path("tools/language.ini"), std::ios::binary);
    return file.get() == '2' ? 1 : 0;
}

std::string version_name(std::int32_t version) {
    return std::to_string(version / 100) + "." + std::to_string(version % 100 / 10) + "." +
           std::to_string(version % 10);
}

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
    Font title = load_font("arialbd.ttf", 48);
    Font heading = load_font("arialbd.ttf", 17);
    Font text = load_font("arial.ttf", 18);
};

int length(const Font& face, const std::string& text) {
    return face ? face->text_length(text) : text_length(font, text.c_str());
}

void write(BITMAP* target, const Font& face, const std::string& text, int x, int y, int colour) {
    if (!face) {
        textout_ex(target, font, text.c_str(), x, y, colour, -1);
        return;
    }
    face->draw(target, text, x + 1, y + 1, makecol(0, 0, 0), true);
    face->draw(target, text, x, y, colour, true);
}

struct Area {
    int left, top, right, bottom;
};

/// A dark plate in a frame of brass whose upper edge catches the light.
void draw_panel(BITMAP* target, const Area& area) {
    constexpr int opacity = 225;
    drawing_mode(DRAW_MODE_TRANS, nullptr, 0, 0);
    set_trans_blender(0, 0, 0, opacity);
    rectfill(target, area.left, area.top, area.right, area.bottom, makecol(12, 15, 20));
    solid_mode();
    const int bars[] = {makecol(20, 14, 6), makecol(255, 214, 138), makecol(190, 122, 44), makecol(104, 62, 20),
                        makecol(12, 9, 6)};
    int inset = -2;
    for (int colour : bars) {
        rect(target, area.left + inset, area.top + inset, area.right - inset, area.bottom - inset, colour);
        ++inset;
    }
}

void draw_orders(BITMAP* target, const Screen& shown, const Fonts& fonts, std::uint8_t fullscreen) {
    constexpr int left = 40, right = 400, top = 150, margin = 18, value_column = 118, row_height = 28;
    const int amber = makecol(255, 191, 67), label = makecol(167, 175, 190), value = makecol(235, 235, 235);
    const int rows = static_cast<int>(shown.orders.size() + shown.lines.size()) + 2;
    draw_panel(target, {left, top, right, top + rows * row_height + 72});

    int y = top + margin - 4;
    write(target, fonts.heading, in_language(orders_heading), left + margin, y, amber);
    y += row_height;
    for (const Text& order : shown.orders) {
        write(target, fonts.text, in_language(order), left + margin, y, value);
        y += row_height;
    }
    hline(target, left + margin, y + 8, right - margin, makecol(104, 62, 20));
    y += 22;
    const auto row = [&](const Text& name, const std::string& text) {
        write(target, fonts.text, in_language(name), left + margin, y, label);
        write(target, fonts.text, text, left + margin + value_column, y, value);
        y += row_height;
    };
    for (const Line& line : shown.lines)
        row(line.label, line.value);
    row(view_label, in_language(fullscreen == window_mode ? window_view : full_view));
    row(relay_label, in_language(relay_name) + version_name(shown.version));
}

Picture draw(const Screen& shown, const Fonts& fonts, std::uint8_t fullscreen) {
    Picture canvas(create_bitmap(width, height));
    if (!canvas)
        return canvas;
    clear_to_color(canvas.get(), makecol(18, 17, 15));
    PALETTE palette;
    if (const Picture picture{load_pcx(shown.picture, palette)})
        blit(picture.get(), canvas.get(), 0, 0, 0, 0, width, height);

    constexpr int left = 40, top = 36, hint_top = height - 62, hint_bottom = height - 24;
    write(canvas.get(), fonts.title, in_language(shown.title), left, top, makecol(255, 191, 67));
    write(canvas.get(), fonts.text, in_language(shown.subtitle), left + 2, top + 58, makecol(235, 235, 235));
    draw_orders(canvas.get(), shown, fonts, fullscreen);

    std::string hint = in_language(back_hint);
    if (shown.mode_range == both_modes)
        hint += "      " + in_language(switch_hint);
    draw_panel(canvas.get(), {left, hint_top, width - left, hint_bottom});
    write(canvas.get(), fonts.text, hint, (width - length(fonts.text, hint)) / 2, hint_top + 9, makecol(235, 235, 235));
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
            if (wants_switch && shown.mode_range == both_modes)
                fullscreen = switch_mode(fullscreen);
            if (must_redraw.exchange(false))
                if (const Picture canvas = draw(shown, fonts, fullscreen)) {
                    show_mouse(nullptr);
                    blit(canvas.get(), screen, 0, 0, 0, 0, width, height);
                    show_mouse(screen);
                }
            rest(2);
        }
        while (mouse_b) // the control centre must not see this click
            rest(2);
        clear_keybuf();
        show_mouse(nullptr);
    }
    vcc::platform::exit_truetype();
    return fullscreen;
}

std::string in_language(const Text& text) {
    static const std::size_t language = chosen_language();
    return vcc::platform::latin1_from_utf8(text[language]);
}

std::string setting(const char* section, const char* key, const char* fallback) {
    const char* text = get_config_string(section, key, fallback);
    return text ? text : "";
}
int number_setting(const char* section, const char* key, int fallback) {
    return get_config_int(section, key, fallback);
}

std::string depth_name(std::int32_t bitmap_depth) {
    const bool known = bitmap_depth >= 0 && bitmap_depth < static_cast<std::int32_t>(std::size(depth_names));
    return in_language(known ? depth_names[bitmap_depth] : unknown);
}

std::string range_name(std::int32_t mode_range) {
    const bool known = mode_range >= 1 && mode_range <= static_cast<std::int32_t>(std::size(range_names));
    return in_language(known ? range_names[mode_range - 1] : unknown);
}

} // namespace module
