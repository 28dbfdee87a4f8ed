#include "cc/load.h"

#include "cc/option_looks.h"
#include "cc/options_screen.h"
#include "cc/sets.h"
#include "cc/theme_player.h"
#include "core/alert.h"
#include "core/installation.h"
#include "core/text.h"
#include "display/buffers.h"
#include "display/pointer.h"
#include "screen/buffer_list.h"
#include "screen/draw.h"
#include "screen/draw_slot.h"
#include "screen/text_window.h"
#include "settings/keyboard_layout.h"
#include "settings/settings.h"
#include "settings/values.h"
#include "sound/setup.h"
#include "sound/sound.h"
#include "text/fonts.h"
#include "text/language.h"
#include "text/screen_texts.h"

namespace vcc {

void load_language_files(std::optional<int> number) {
    if (number) {
        use_language(*number);
        load_screen_texts(screen_text_file(*number));
    } else {
        load_language();
    }
    load_messages(message_file(1));
}

namespace {

void set_up_drawing() {
    configure_fonts();
    select_font(0);
    drawing.previous_font = 0;
}

void setup_cc_screens() {
    set_theme_order_source([] { return theme_order_of(options_screen.selected_module); });
    options_screen.selected_module = Module::control_centre; // the first buffer of music already depends on its loop
    load_settings();
    write_keyboard_layout();
    if (!sound_on)
        disable_sound_controls();
    fill_fields();
    if (sound_on)
        use_effects_volume(Module::control_centre);
    options_screen.play_theme();
}

/// Copies a buffer's whole picture into another buffer; does nothing if either is empty.
void copy_buffer(int from, int to) {
    BITMAP* const source = graphic_buffer(from);
    BITMAP* const target = graphic_buffer(to);
    if (source && target)
        blit(source, target, 0, 0, 0, 0, layout_width, layout_height);
}

} // namespace

bool load_sounds() {
    if (!read_flag("sound_at_all"))
        disable_sound();
    return !sound_on || read_sound_setup(path::sound_setup) != 0;
}

bool load_screens() {
    set_up_drawing();
    if (load_cc_slot_sets() != 0)
        return false;
    setup_cc_screens();
    return true;
}

bool load_windows() {
    return load_text_windows(text_window_prefix + path::text_windows) != 0;
}

bool load_pictures() {
    if (load_graphic_buffers(path::buffer_list) == 0)
        return false;
    const BITMAP* picture = graphic_buffer(screen_buffer);
    return picture && picture->w >= layout_width && picture->h >= layout_height;
}

void fill_fields() {
    store_text(option_slot(options_slot::player_name).text, settings.player_name);
    store_text(option_slot(options_slot::ip_address).text, settings.ip_address);
}

void prepare_background_copies() {
    for (int copy : {window_copy_buffer, info_copy_buffer})
        copy_buffer(backdrop_buffer, copy);
    const auto assign = [](int window, int buffer) {
        TextWindow& changed = text_windows[static_cast<std::size_t>(window)];
        changed.background_buffer = buffer;
        changed.background_bitmap = graphic_buffer(buffer);
    };
    for (int window : {group_window, value_window, module_window, sound_group_window})
        assign(window, window_copy_buffer);
    assign(info_window, info_copy_buffer);
}

void keep_text_background(const SlotSet& set) {
    if (anti_aliased_text)
        copy_buffer(set.slots.front().buffer, text_copy_buffer);
}

bool reload_pictures(BITMAP*& target) {
    if (!load_pictures()) {
        alert_and_log("VCC: Error loading Graphicbuffers!", "VCC: Error loading Graphicbuffers\n");
        target = nullptr;
        return false;
    }
    target = graphic_buffer(screen_buffer);
    prepare_background_copies();
    keep_text_background(options_set);
    install_mouse_and_pointer();
    Slot& label = option_slot(options_slot::loop_label);
    hide(label);
    draw_slots(target, options_set.slots);
    update_screen(target);
    show(label);
    return true;
}

} // namespace vcc
