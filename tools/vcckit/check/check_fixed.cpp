// Slots that the program addresses by number.
#include "vcckit/check/check.h"

#include "vcckit/check/fixed_slots.h"
#include "vcckit/record/fields.h"

#include "cc/option_rows.h"
#include "core/text.h"
#include "screen/draw_slot.h"
#include "text/screen_texts.h"

#include <algorithm>

namespace vcc::kit {

namespace {

enum class Form { any, selectable, field, picture, text, window };

struct FixedSlot {
    ScreenKind screen;
    int first, count, step;
    Form form;
    int action;        ///< of the first, plus one for each further slot; -1: any
    bool needs_toggle; ///< the program uses the toggle record of the same number
    const char* role;
};

using enum ScreenKind;
using enum FaultCode;
constexpr int any_action = -1;

constexpr FixedSlot fixed_slots[] = {
    {options, options_slot::first_selector, 4, 1, Form::selectable, 31, true, "module selector"},
    {options, options_slot::first_marker, 4, 1, Form::any, any_action, true, "module marker"},
    {options, options_slot::player_name, 1, 1, Form::field, any_action, true, "player's name"},
    {options, options_slot::ip_address, 1, 1, Form::field, any_action, true, "player's address"},
    {options, value_button(0), value_entry_limit, 2, Form::text, any_action, true, "value button"},
    {options, value_record(0), value_entry_limit, 2, Form::text, any_action, true, "value record"},
    {options, options_slot::first_junction, 4, 1, Form::picture, any_action, false, "junction of the lines"},
    {options, options_slot::loop_button, 1, 1, Form::text, 38, true, "theme loop button"},
    {options, options_slot::connector_colours, 1, 1, Form::any, any_action, true, "colours of the lines"},
    {options, options_slot::loop_label, 1, 1, Form::text, any_action, true, "theme loop label"},
    {info, info_slot::first_line, explanation_lines, 1, Form::text, any_action, false, "line of the explanation"},
    {message, message_slot::window, 1, 1, Form::window, any_action, false, "help window"},
    {message, message_slot::first_line, message_slot::last_line - message_slot::first_line + 1, 1, Form::text,
     any_action, false, "message line"},
    {message, message_slot::close, 1, 1, Form::any, any_action, true, "close button"},
    {message, message_slot::back, 1, 1, Form::any, any_action, true, "page-back button"},
    {message, message_slot::forward, 1, 1, Form::any, any_action, true, "page-forward button"},
};

struct FixedWindow {
    int number;
    const char* role;
};
constexpr FixedWindow fixed_windows[] = {
    {style_window, "style of highlighted frames and of shadows"},
    {info_window, "place of the explanation"},
    {group_window, "display and battle group"},
    {value_window, "place of the values"},
    {module_window, "module selector"},
    {sound_group_window, "sound group"},
};

/// What a player must be able to do on a screen.
struct NeededAction {
    ScreenKind screen;
    int action;
    const char* what;
};
constexpr NeededAction needed_actions[] = {
    {menu, 2, "enter the HQ"},           {menu, 3, "enter the Factory"}, {menu, 4, "enter the Battle module"},
    {menu, 5, "open the options"},       {menu, 1, "leave the program"}, {options, 6, "accept the options"},
    {options, 30, "cancel the options"},
};

/// Those above, the previews and the option buttons.
std::vector<FixedSlot> all_fixed_slots() {
    std::vector<FixedSlot> all(std::begin(fixed_slots), std::end(fixed_slots));
    for (const menu_slot::Preview& preview : menu_slot::previews)
        all.push_back({menu, preview.picture, 1, 1, Form::any, any_action, false, "preview shown by the pointer"});
    for (const OptionRow& row : option_rows())
        all.push_back({options, row.button, 1, 1, Form::selectable, row.step_code, true, "option button"});
    return all;
}

/// A slot of a screen; null if there is none, or one that says nothing.
const Slot* find_used_slot(const ScreenFiles& screen, int index) {
    const Slot* const slot = find_slot(screen, index);
    return slot && *slot != gap_slot() && *slot != empty_slot() && *slot != Slot{} ? slot : nullptr;
}

/// Why a slot does not have a form; empty if it has.
std::string fault_of_form(Form form, const Slot& slot) {
    const bool text = slot.graphic == 0;
    switch (form) {
    case Form::selectable:
        return slot.toggle == -1 ? "cannot be selected" : "";
    case Form::field:
        return slot.input_mode == 0 ? "is not an entry field" : slot.toggle == -1 ? "cannot be selected" : "";
    case Form::picture:
        return text || is_text_window(slot) ? "is not a picture slot" : "";
    case Form::text:
        return !text ? "is not a text slot" : "";
    case Form::window:
        return !is_text_window(slot) ? "is not a text window" : "";
    case Form::any:
        break;
    }
    return {};
}

void check_fixed_slot(const ScreenFiles& screen, const FixedSlot& row, int step, Faults& faults) {
    const int index = row.first + step * row.step;
    const Reporter report{faults, screen.slot_file, 0, index};
    const std::string the_slot = std::string("the ") + row.role + " ";
    const Slot* const slot = find_used_slot(screen, index);
    if (!slot) {
        report(fixed_slot_missing, "", the_slot + "is missing", "give it this number: the program looks for it there");
        return;
    }
    if (const std::string fault = fault_of_form(row.form, *slot); !fault.empty())
        report(fixed_slot_form, "", the_slot + fault, "make it one: the program looks for it at this number");
    if (row.action != any_action && slot->action != row.action + step)
        report(fixed_slot_action, "action", the_slot + "has action " + std::to_string(slot->action),
               "it must be " + std::to_string(row.action + step));
    if (row.needs_toggle && !screen.toggles_lost && !screen.set.has_toggle(index))
        report(fixed_slot_toggle, "", the_slot + "has no toggle record", "add one for its other look");
}

void check_pair(const ScreenFiles& screen, int value, Faults& faults) {
    const int index = value_record(value);
    const Slot* const record = find_used_slot(screen, index);
    if (!record)
        return; // reported with the fixed slots
    const Reporter report{faults, screen.slot_file, 0, index};
    if (record->action != value)
        report(value_record_value, "action", "the record has value " + std::to_string(record->action),
               "the record after value button " + std::to_string(value_button(value)) + " must say " +
                   std::to_string(value));
    if (!skipped_by_focus(*record))
        report(value_record_focus, "draw_flags",
               "the value record takes the focus, and its value would be carried out as an action",
               "set focus_skip: the third character of draw_flags is x");
    const Point over = slot_position(*find_slot(screen, value_button(value))), under = slot_position(*record);
    if (over.x != under.x || over.y != under.y)
        report(value_record_place, "", "the value record is not at the position of its button",
               "the pointer would reach it beside slot " + std::to_string(value_button(value)));
}

} // namespace

std::string role_of_fixed_slot(std::string_view screen, int index) {
    const auto* const file = std::ranges::find(screen_files, screen, &ScreenFile::name);
    if (file == screen_files.end())
        return {};
    for (const menu_slot::Preview& preview : menu_slot::previews)
        if (file->kind == menu && preview.picture == index)
            return "preview shown with the pointer on slot " + std::to_string(preview.slot);
        else if (file->kind == menu && preview.slot == index)
            return "slot on which the pointer shows preview " + std::to_string(preview.picture);
    for (const FixedSlot& row : all_fixed_slots())
        for (int step = 0; step < row.count; ++step)
            if (row.screen == file->kind && row.first + step * row.step == index)
                return row.role;
    return {};
}

bool is_action_of(ScreenKind screen, int action) {
    const auto is_of_menu = [action](const NeededAction& row) { return row.screen == menu && row.action == action; };
    constexpr int options_action = 5;
    return screen == menu ? std::ranges::any_of(needed_actions, is_of_menu)
                          : screen != options || action != options_action;
}

std::string role_of_fixed_window(int number) {
    const auto* const row = std::ranges::find(fixed_windows, number, &FixedWindow::number);
    return row == std::end(fixed_windows) ? "" : row->role;
}

void check_fixed_slots(Installation& installation, Faults& faults) {
    for (const LanguageFiles& language : installation.by_language) {
        for (const FixedSlot& row : all_fixed_slots())
            for (int step = 0; step < row.count && screen_of(language, row.screen).set.slot_count() > 0; ++step)
                check_fixed_slot(screen_of(language, row.screen), row, step, faults);
        for (const NeededAction& needed : needed_actions) {
            const ScreenFiles& screen = screen_of(language, needed.screen);
            const auto does = [&](const Slot& slot) { return slot.action == needed.action && slot.toggle != -1; };
            if (!screen.set.slots.empty() && std::ranges::none_of(screen.set.slots, does))
                Reporter{faults, screen.slot_file}(action_missing, "action",
                                                   std::string("no slot lets the player ") + needed.what,
                                                   "give a slot action " + std::to_string(needed.action));
        }
        const Slot* const page = find_slot(screen_of(language, message), message_slot::window);
        const TextWindow* const window =
            language.windows_usable && page && is_text_window(*page) ? find_window(language, page->graphic) : nullptr;
        if (window && window->pixel_coords == 0)
            Reporter{faults, language.window_file}(window_in_cells, "+" + std::to_string(page->graphic),
                                                   "the help window is placed in cells",
                                                   "add w1, and give its edges in pixels");
    }
    for (const LanguageFiles& language : installation.by_language) {
        std::string missing;
        for (const FixedWindow& window : fixed_windows)
            if (language.windows_usable && !find_window(language, window.number))
                missing += (missing.empty() ? "+" : ", +") + std::to_string(window.number);
        if (!missing.empty())
            Reporter{faults, language.window_file}(
                window_missing, missing, missing.find(',') == std::string::npos ? "is missing" : "are missing",
                "describe it: the program uses its position");
    }
}

void check_values(Installation& installation, Faults& faults) {
    for (const LanguageFiles& language : installation.by_language) {
        const ScreenFiles& screen = screen_of(language, options);
        for (int value = 0; value < value_entry_limit; ++value)
            check_pair(screen, value, faults);
        for (int index = 0; index < screen.set.slot_count(); ++index) {
            const OptionRow* const row = find_row(&OptionRow::choose_code, find_slot(screen, index)->action);
            if (!row || (index >= value_button(0) && index <= value_record(value_entry_limit - 1)))
                continue;
            const int values = row->labels.empty() ? value_entry_limit : row->labels.count;
            const Slot* const record = find_slot(screen, index + 1);
            if (!record || record->action < 0 || record->action >= values)
                Reporter{faults, screen.slot_file, 0,
                         index}(value_button_alone, "action", "the value button has no value record after it",
                                "the next record's action must be 0 to " + std::to_string(values - 1));
        }
    }
}

} // namespace vcc::kit
