#include "cc/actions.h"

#include "cc/load.h"
#include "cc/manual.h"
#include "cc/option_looks.h"
#include "cc/option_table.h"
#include "cc/options_screen.h"
#include "cc/sets.h"
#include "core/text.h"
#include "display/buffers.h"
#include "display/graphics_mode.h"
#include "screen/draw.h"
#include "screen/draw_slot.h"
#include "settings/settings.h"
#include "sound/sound.h"

#include <algorithm>

namespace vcc {

namespace {

void take_field(std::string& setting, int field) {
    std::string text{text_of(option_slot(field).text)};
    trim_right(text);
    setting = text.substr(0, field_text_limit);
}

// What codes that belong to no option do. They may replace `target`.

template <ScreenResult Which>
ScreenOutcome end_with(BITMAP*&) {
    return Which;
}

ScreenOutcome accept(BITMAP*&) {
    take_field(settings.player_name, options_slot::player_name);
    take_field(settings.ip_address, options_slot::ip_address);
    save_settings();
    return ScreenResult::menu;
}

template <std::string Settings::*setting, int field>
ScreenOutcome take(BITMAP*&) {
    show_loop_button(false);
    take_field(settings.*setting, field);
    return {};
}

ScreenOutcome show_manual(BITMAP*& target) {
    if (needs_met(Needs::music))
        options_screen.take_loop_button_away(target);
    open_manual();
    draw_module_marker(target, options_screen);
    return {};
}

template <Module Which>
ScreenOutcome select(BITMAP*& target) {
    options_screen.select(target, Which);
    return {};
}

ScreenOutcome toggle_loop(BITMAP*& target) {
    options_screen.toggle_loop(target);
    return {};
}

/// Probes the machine again and loads the pictures again if the colour depth changes; false if that fails.
bool probe_display(BITMAP*& target) {
    const EffectsHeld held;
    show_mouse(nullptr);
    if (setup_graphics_mode(probe_machine); !screen)
        return false;
    if (const int bits = get_color_depth(); bits != bitmap_color_depth(target)) {
        options_screen.depth_at_menu = depth_setting(bits).value_or(options_screen.depth_at_menu);
        release_graphic_buffers();
        if (!reload_pictures(target))
            return false;
    }
    show_mouse(screen);
    return true;
}

ScreenOutcome reset(BITMAP*& target) {
    if (needs_met(Needs::music))
        show_loop_button(false);
    reset_settings();
    if (!probe_display(target))
        return ScreenResult::leave;
    options_screen.refresh(target);
    return {};
}

struct ActionRow {
    int code;
    std::string_view name;
    ScreenOutcome (*act)(BITMAP*& target);
    bool releases = false; ///< the options screen first shows the button's resting look
};

constexpr ActionRow actions[] = {
    {1, "leave", end_with<ScreenResult::leave>},
    {2, "hq", end_with<ScreenResult::hq>},
    {3, "factory", end_with<ScreenResult::factory>},
    {4, "battle", end_with<ScreenResult::battle>},
    {5, "options", end_with<ScreenResult::options>},
    {6, "accept", accept},
    {17, "take_player_name", take<&Settings::player_name, options_slot::player_name>, true},
    {18, "manual", show_manual, true},
    {30, "cancel", end_with<ScreenResult::menu>},
    {31, "select_hq", select<Module::hq>},
    {32, "select_factory", select<Module::factory>},
    {33, "select_battle", select<Module::battle>},
    {34, "select_cc", select<Module::control_centre>},
    {38, "theme_loop", toggle_loop},
    {50, "reset", reset, true},
    {51, "take_address", take<&Settings::ip_address, options_slot::ip_address>},
    {998, "back", end_with<ScreenResult::menu>},
};

constexpr std::string_view step_prefix = "step_", choose_prefix = "choose_";

constexpr bool tables_agree() {
    const auto codes_are = [](int code) {
        return std::ranges::count(actions, code, &ActionRow::code) +
               std::ranges::count(option_table, code, &OptionRow::step_code) +
               std::ranges::count(option_table, code, &OptionRow::choose_code);
    };
    return std::ranges::all_of(actions,
                               [&](const ActionRow& row) {
                                   return codes_are(row.code) == 1 && !row.name.starts_with(step_prefix) &&
                                          !row.name.starts_with(choose_prefix) &&
                                          std::ranges::count(actions, row.name, &ActionRow::name) == 1;
                               }) &&
           std::ranges::all_of(option_table, [&](const OptionRow& row) {
               return codes_are(row.step_code) == 1 && codes_are(row.choose_code) == 1 &&
                      std::ranges::count(option_table, row.row, &OptionRow::row) == 1 &&
                      std::ranges::count(option_table, row.button, &OptionRow::button) == 1 &&
                      std::ranges::count(option_table, row.name, &OptionRow::name) == 1;
           });
}
static_assert(tables_agree(), "a code, button or name of an action or option is taken twice");

} // namespace

std::vector<ActionName> action_names() {
    std::vector<ActionName> names;
    for (const ActionRow& action : actions)
        names.push_back({action.code, std::string(action.name)});
    for (const OptionRow& option : option_table) {
        names.push_back({option.step_code, std::string(step_prefix).append(option.name)});
        names.push_back({option.choose_code, std::string(choose_prefix).append(option.name)});
    }
    std::ranges::sort(names, {}, &ActionName::code);
    return names;
}

ScreenOutcome carry_out_action(BITMAP*& target, const SlotSet& running, int index) {
    const Slot& slot = running.slots[static_cast<std::size_t>(index)];
    const auto action = std::ranges::find(actions, slot.action, &ActionRow::code);
    const OptionRow* stepped = find_row(&OptionRow::step_code, slot.action);
    const bool releases = stepped || (action != std::end(actions) && action->releases);
    if (cc_screen == CcScreen::options && releases && slot.activated != 0)
        draw_slot(target, running.slots, slot.activated);
    ScreenOutcome result;
    if (action != std::end(actions))
        result = action->act(target);
    else if (stepped)
        options_screen.step(target, *stepped, slot);
    else if (const OptionRow* chosen = find_row(&OptionRow::choose_code, slot.action);
             chosen && options_set.has_slot(index + 1)) // the last record has no value after it
        options_screen.choose(target, *chosen, option_slot(index + 1).action);
    if (!result)
        update_screen(target);
    return result;
}

void step_value(BITMAP* target, const SlotSet& running, int index, bool forward) {
    const Slot& button = running.slots[static_cast<std::size_t>(index)];
    if (const OptionRow* option = find_row(&OptionRow::step_code, button.action)) {
        options_screen.press_and_step(target, *option, button, forward);
        update_screen(target);
    }
}

} // namespace vcc
