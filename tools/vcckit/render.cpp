#include "render.h"

#include "names.h"
#include "pilot.h"
#include "screen_source.h"
#include "silent_sound.h"

#include "cc/load.h"
#include "cc/option_rows.h"
#include "cc/screens.h"
#include "cc/sets.h"
#include "core/files.h"
#include "core/installation.h"
#include "core/log.h"
#include "core/text.h"
#include "display/buffers.h"
#include "display/graphics_mode.h"
#include "display/mode_rules.h"
#include "interaction/focus.h"
#include "platform/latin1.h"
#include "screen/buffer_list.h"
#include "screen/draw_slot.h"
#include "screen/status_line.h"
#include "screen/text_window.h"
#include "settings/values.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "text/fonts.h"
#include "text/language.h"

#include <algorithm>
#include <utility>

namespace vcc::kit {

namespace {

/// Stands in for the display; taken away before the library notices at its end.
class StandInDisplay {
public:
    StandInDisplay() : picture_(create_bitmap(picture_width, picture_height)) {
        if (picture_)
            clear_bitmap(picture_.get());
        screen = picture_.get();
    }
    ~StandInDisplay() { screen = nullptr; }
    StandInDisplay(const StandInDisplay&) = delete;
    StandInDisplay& operator=(const StandInDisplay&) = delete;

private:
    BitmapPtr picture_;
};

/// What the program holds while it runs, given back in the right order.
struct ProgramState {
    ~ProgramState() {
        set_status_target(nullptr);
        free_cc_slot_sets();
        stop_music();
        release_sound();
        release_graphic_buffers();
    }
};

/// The settings of the installation, without the file: nothing that the program changes reaches it.
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

/// What a pass of the program loads; the reason of a failure, or nothing.
std::string load(const RenderRequest& request) {
    module_prefix = "vcckit ";
    take_settings(request.depth);
    load_language_files(static_cast<int>(request.language) + 1);
    if (!load_font_files())
        return "the fonts cannot be loaded";
    install_silent_sound();
    std::string fault;
    load_installation(
        {.failed =
             [&](LoadFailure failure) {
                 if (failure == LoadFailure::screens)
                     fault = "the slot files cannot be loaded";
                 if (failure == LoadFailure::text_windows)
                     fault = "the text windows cannot be loaded";
                 if (failure == LoadFailure::pictures)
                     fault = "the pictures of tools/vcc.buf cannot be loaded, or buffer 0 is missing or small";
             },
         .before_pictures = {}});
    return fault;
}

Point place_in(const Slot& slot) {
    const Rect area = slot_rect(slot);
    // A text may be empty, and then has no width; its first cell is as good.
    return {std::clamp(area.x1 + std::min((area.x2 - area.x1) / 2, 40), 0, picture_width - 1),
            std::clamp((area.y1 + area.y2) / 2, 0, picture_height - 1)};
}

Step at_slot(Step::Kind kind, const SlotSet& set, int index) {
    return {kind, [&set, index](int& x, int& y) {
                if (!set.has_slot(index))
                    return;
                const Point place = place_in(set.slots[static_cast<std::size_t>(index)]);
                x = place.x;
                y = place.y;
            }};
}

Step park_pointer() {
    return {Step::Kind::point, [](int& x, int& y) {
                x = picture_width - 1;
                y = picture_height - 1;
            }};
}

/// A pressed look would only cost time.
void hurry(SlotSet& set) {
    for (Slot& slot : set.slots)
        slot.display_time = 0;
}

int slot_with_action(const SlotSet& set, int action) {
    const auto found = std::ranges::find(set.slots, action, &Slot::action);
    return found == set.slots.end() ? -1 : static_cast<int>(found - set.slots.begin());
}

int first_help_slot() {
    const auto found = std::ranges::find_if(
        menu_set.slots, [](const Slot& slot) { return is_selectable(slot) && slot.help_number > 0; });
    return found == menu_set.slots.end() ? 0 : static_cast<int>(found - menu_set.slots.begin());
}

void options_steps(const RenderRequest& request, std::vector<Step>& steps) {
    using enum Step::Kind;
    steps.push_back(at_slot(left_click, menu_set,
                            slot_with_action(menu_set, number_of_name(Meaning::action, "options").value_or(0))));
    steps.push_back(park_pointer());
    if (request.module)
        steps.push_back(at_slot(left_click, options_set, options_slot::first_selector + *request.module));
    if (request.row) {
        const OptionRow* row = find_row(static_cast<Row>(*request.row));
        if (row->shown_when_pointed_at) {
            steps.push_back(at_slot(point, options_set, row->button));
        } else { // on the way there another row is shown; then one step forward and one back
            steps.push_back(at_slot(point, options_set, find_row(Row::screen_mode)->button));
            steps.push_back(at_slot(left_click, options_set, row->button));
            steps.push_back(at_slot(right_click, options_set, row->button));
        }
    }
    steps.push_back(request.hover ? at_slot(point, options_set, *request.hover) : park_pointer());
}

std::vector<Step> steps_of(const RenderRequest& request) {
    using enum Step::Kind;
    std::vector<Step> steps;
    switch (request.screen) {
    case RenderedScreen::menu:
        steps.push_back(request.hover ? at_slot(point, menu_set, *request.hover) : park_pointer());
        break;
    case RenderedScreen::options:
        options_steps(request, steps);
        break;
    case RenderedScreen::help:
    case RenderedScreen::message:
        steps.push_back(at_slot(point, menu_set, request.hover.value_or(first_help_slot())));
        steps.push_back({help_key, nullptr});
        steps.push_back(park_pointer());
        break;
    }
    return steps;
}

std::string fault_of(const RenderRequest& request) {
    if (request.row && !find_row(static_cast<Row>(*request.row)))
        return "there is no option row " + std::to_string(*request.row);
    const SlotSet& set = request.screen == RenderedScreen::options ? options_set : menu_set;
    if (request.hover && !set.has_slot(*request.hover))
        return "there is no slot " + std::to_string(*request.hover);
    return {};
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

BitmapPtr draw_screen(const RenderRequest& request, std::string& fault) {
    fault = load(request);
    if (fault.empty())
        fault = fault_of(request);
    if (!fault.empty())
        return nullptr;
    hurry(menu_set);
    hurry(options_set);
    std::vector<Step> steps = steps_of(request);
    if (request.screen == RenderedScreen::message)
        for (Slot& slot : menu_set.slots)
            slot.help_number = 0; // the page then says that there is no help
    const StandInDisplay display;
    BITMAP* const target = graphic_buffer(screen_buffer);
    set_status_target(target);
    place_status_line();
    Pilot pilot(std::move(steps));
    run_cc_screens(target);
    BitmapPtr picture = pilot.take_picture();
    if (!picture)
        fault = "the screen ends by itself; vcckit check tells why";
    return picture;
}

} // namespace

BitmapPtr render_screen(const RenderRequest& request, std::string& fault) {
    const ProgramState state;
    return draw_screen(request, fault);
}

std::optional<SeenScreen> see_screen(const RenderRequest& request, std::string& fault) {
    const ProgramState state;
    const BitmapPtr picture = draw_screen(request, fault);
    if (!picture)
        return std::nullopt;
    return SeenScreen{rgb_of(*picture), seen_slots(request.screen == RenderedScreen::options ? options_set : menu_set)};
}

} // namespace vcc::kit
