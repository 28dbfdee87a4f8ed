#include "vcckit/draw/pilot.h"

#include "vcckit/record/names.h"

#include "cc/option_rows.h"
#include "cc/sets.h"
#include "core/installation.h"
#include "interaction/focus.h"
#include "screen/draw.h"
#include "screen/draw_slot.h"
#include "sound/sound.h"

#include <algorithm>
#include <initializer_list>

namespace vcc::kit {

namespace {

Step at_slot(Step::Kind kind, const SlotSet& set, int index) {
    return {kind, [&set, index] {
                return set.has_slot(index) ? std::optional(place_in(set.slots[static_cast<std::size_t>(index)]))
                                           : std::nullopt;
            }};
}

Step park_pointer() {
    return {Step::Kind::point, [] { return Point{layout_width - 1, layout_height - 1}; }};
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

/// The pointer on the slot that is pressed or pointed at, or out of the way.
Step at_pointed_slot(const RenderRequest& request, const SlotSet& set) {
    const std::optional<int> slot = request.pressed ? request.pressed : request.hover;
    return slot ? at_slot(Step::Kind::point, set, *slot) : park_pointer();
}

/// Draws the pressed look and lets it stay.
Step press_slot(const SlotSet& set, int index, BITMAP* target) {
    return {Step::Kind::point, [&set, index, target]() -> std::optional<Point> {
                if (const int look = set.slots[static_cast<std::size_t>(index)].activated; look != 0) {
                    const EffectsHeld quiet;
                    draw_slot(target, set.toggles, look);
                    update_screen(target);
                }
                return std::nullopt;
            }};
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
        if (row->rules.shown_when_pointed_at) {
            steps.push_back(at_slot(point, options_set, row->button));
        } else { // on the way there another row is shown; then one step forward and one back
            steps.push_back(at_slot(point, options_set, find_row(Row::screen_mode)->button));
            steps.push_back(at_slot(left_click, options_set, row->button));
            steps.push_back(at_slot(right_click, options_set, row->button));
        }
    }
    steps.push_back(at_pointed_slot(request, options_set));
}

} // namespace

const SlotSet& set_of(const RenderRequest& request) {
    return request.screen == RenderedScreen::options ? options_set : menu_set;
}

Point place_in(const Slot& slot) {
    const Rect area = slot_rect(slot);
    // A text may be empty, and then has no width; its first cell is as good.
    return {std::clamp(area.x1 + std::min((area.x2 - area.x1) / 2, 40), 0, layout_width - 1),
            std::clamp((area.y1 + area.y2) / 2, 0, layout_height - 1)};
}

std::string fault_of(const RenderRequest& request) {
    if (request.row && !find_row(static_cast<Row>(*request.row)))
        return "there is no option row " + std::to_string(*request.row);
    if (request.pressed && (request.screen == RenderedScreen::help || request.screen == RenderedScreen::message))
        return "slots of the menu and the options can be pressed";
    for (const std::optional<int> slot : {request.hover, request.pressed})
        if (slot && !set_of(request).has_slot(*slot))
            return "there is no slot " + std::to_string(*slot);
    return {};
}

std::vector<Step> steps_of(const RenderRequest& request, BITMAP* target) {
    using enum Step::Kind;
    std::vector<Step> steps;
    switch (request.screen) {
    case RenderedScreen::menu:
        steps.push_back(at_pointed_slot(request, menu_set));
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
    if (request.pressed)
        steps.push_back(press_slot(set_of(request), *request.pressed, target));
    return steps;
}

} // namespace vcc::kit
