#include "vcckit/draw/render.h"

#include "vcckit/draw/pilot.h"
#include "vcckit/draw/silent_sound.h"

#include "cc/load.h"
#include "cc/options_screen.h"
#include "cc/screens.h"
#include "cc/sets.h"
#include "core/files.h"
#include "core/installation.h"
#include "core/log.h"
#include "core/scope.h"
#include "core/text.h"
#include "display/buffers.h"
#include "display/graphics_mode.h"
#include "interaction/focus.h"
#include "interaction/player_input.h"
#include "platform/latin1.h"
#include "screen/status_line.h"
#include "screen/text_window.h"
#include "settings/settings.h"
#include "settings/values.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "text/fonts.h"
#include "text/language.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

namespace vcc::kit {

namespace {

/// What the sound set-up leaves behind.
auto sound_values() {
    return std::tie(sound_on, music_on);
}

/// Every value of the program that its screens change, so that a process can draw one picture after another as if each
/// were its first.
auto program_values() {
    return std::tuple_cat(sound_values(), std::tie(cc_screen, options_screen),
                          std::tie(module_prefix, language, slot_prefix, text_window_prefix),
                          std::tie(fullscreen, mode_range, screen_mode_range, depth_class, settings, theme_loop,
                                   number_of_themes, anti_aliased_text, frame_rest, theme_fade_in),
                          std::tie(player_input, drawing, text_windows, current_text_window),
                          std::tie(music_playing, music_volume, themes, sfx_volume));
}

template <class... Values>
std::tuple<Values...> copies_of(std::tuple<Values&...>);

/// A copy of what a function like these ties together.
template <auto values>
using Copies = decltype(copies_of(values()));

/// The buffers that screens are drawn on or copied to.
constexpr std::array changing_buffers{screen_buffer, window_copy_buffer, help_save_buffer, info_copy_buffer,
                                      text_copy_buffer};

/// The settings of the installation, without the file: no change of the program reaches it.
void take_settings(int depth) {
    const std::string text = platform::latin1_from_utf8(read_file(path::settings).value_or(""));
    set_config_data((text + "\n").c_str(), static_cast<int>(text.size()) + 1);
    write_number("bitmap_depth", depth_setting(depth).value_or(0));
    mode_range = screen_mode_range = ModeRange{stored_number("screen_mode_range")};
    if (mode_range < ModeRange::full_screen_only || mode_range > ModeRange::both)
        mode_range = screen_mode_range = ModeRange::both;
    fullscreen = windowed;
    depth_class = depth_flags(depth);
}

/// Pressed looks only take time.
void hurry(SlotSet& set) {
    for (Slot& slot : set.slots)
        slot.display_time = 0;
}

std::vector<SeenSlot> seen_slots(const SlotSet& set) {
    std::vector<SeenSlot> seen;
    for (const Slot& slot : set.slots) {
        if (!is_selectable(slot) || is_hidden(slot))
            continue;
        const Point place = place_in(slot);
        const std::string_view text = slot.graphic == 0 ? text_of(slot.text) : text_of(slot.name);
        seen.push_back({static_cast<int>(&slot - set.slots.data()), place.x, place.y, slot.action, slot.help_number,
                        std::string(text)});
    }
    return seen;
}

} // namespace

struct Renderer::Kept {
    Copies<program_values> before;                    ///< as a picture finds them
    std::optional<Copies<sound_values>> after_sounds; ///< nothing until they are loaded
    std::map<int, BitmapPtr> as_loaded;               ///< the changing buffers; empty until all are loaded
    BitmapPtr display;
    bool fonts = false;
};

Renderer::Renderer() : kept_(std::make_unique<Kept>(Kept{program_values(), {}, {}, {}})) {}

Renderer::~Renderer() {
    free_cc_slot_sets();
    stop_music();
    forget();
    program_values() = kept_->before;
}

void Renderer::forget() {
    sound_on = 1; // or nothing is released
    release_sound();
    for (SoundEntry& entry : sound_entries)
        entry = {};
    release_graphic_buffers();
    kept_->after_sounds.reset();
    kept_->as_loaded.clear();
    kept_->fonts = false;
}

BITMAP* Renderer::buffer(int number) const {
    const auto changing = kept_->as_loaded.find(number);
    return changing == kept_->as_loaded.end() ? graphic_buffer(number) : changing->second.get();
}

void Renderer::load_sounds_once() {
    if (!kept_->after_sounds) {
        install_silent_sound();
        load_sounds(); // a failure leaves an installation without sound
        kept_->after_sounds.emplace(sound_values());
    }
    sound_values() = *kept_->after_sounds;
}

std::string Renderer::load_pictures_once() {
    for (const auto& [number, as_loaded] : kept_->as_loaded)
        if (BITMAP* const used = graphic_buffer(number); as_loaded && used)
            blit(as_loaded.get(), used, 0, 0, 0, 0, used->w, used->h);
    if (!kept_->as_loaded.empty())
        return {};
    if (!load_pictures())
        return "the pictures of tools/vcc.buf cannot be loaded, or buffer 0 is missing or small";
    for (const int number : changing_buffers) {
        BITMAP* const used = graphic_buffer(number);
        kept_->as_loaded.emplace(number, used ? copy_of(used) : nullptr);
    }
    return {};
}

/// What a pass of the program loads; the reason of a failure, or nothing.
std::string Renderer::load(const RenderRequest& request) {
    program_values() = kept_->before;
    module_prefix = "vcckit ";
    take_settings(request.depth);
    load_language_files(static_cast<int>(request.language) + 1);
    if (!kept_->fonts && !load_fonts(path::fonts))
        return "the fonts cannot be loaded";
    kept_->fonts = true;
    load_sounds_once();
    if (!load_screens())
        return "the slot files cannot be loaded";
    if (!load_windows())
        return "the text windows cannot be loaded";
    return load_pictures_once();
}

Result<BitmapPtr> Renderer::draw(const RenderRequest& request) {
    stop_music();
    std::string fault = load(request);
    if (fault.empty())
        fault = fault_of(request);
    if (!fault.empty())
        return Failure{std::move(fault)};
    hurry(menu_set);
    hurry(options_set);
    frame_rest = 0; // nobody looks on
    if (!kept_->display)
        kept_->display.reset(create_bitmap(layout_width, layout_height));
    if (kept_->display)
        clear_bitmap(kept_->display.get());
    const SwitchSet<BITMAP*> stand_in(screen, kept_->display.get()); // the library must not shut down with it
    BITMAP* const target = graphic_buffer(screen_buffer);
    std::vector<Step> steps = steps_of(request, target);
    if (request.screen == RenderedScreen::message)
        for (Slot& slot : menu_set.slots)
            slot.help_number = 0; // the page then says that there is no help
    place_status_line();
    Pilot pilot(std::move(steps));
    run_cc_screens(target);
    if (BitmapPtr picture = pilot.take_picture())
        return picture;
    return Failure{"the screen ends by itself; vcckit check tells why"};
}

Result<SeenScreen> Renderer::see(const RenderRequest& request) {
    const auto picture = draw(request);
    if (!picture)
        return Failure{picture.reason()};
    return SeenScreen{rgb_of(**picture), seen_slots(set_of(request))};
}

} // namespace vcc::kit
