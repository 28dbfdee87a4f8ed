// Checks every record of every slot and toggle file, alone and against what its numbers refer to.
#include "vcckit/check/check.h"

#include "vcckit/check/fixed_slots.h"
#include "vcckit/record/fields.h"
#include "vcckit/record/names.h"

#include "cc/option_rows.h"
#include "core/text.h"
#include "display/buffers.h"
#include "interaction/focus.h"
#include "screen/colours.h"
#include "screen/draw_slot.h"
#include "sound/sound.h"
#include "text/fonts.h"

#include <algorithm>
#include <cctype>

namespace vcc::kit {

namespace {

using enum FaultCode;
using std::to_string;

/// A record with everything that a check may need.
struct Subject {
    const Installation& installation;
    const LanguageFiles& language;
    const ScreenFiles& screen;
    const Slot& slot;
    int index;
    bool is_toggle;
    Reporter report;

    bool is_text() const { return slot.graphic == 0; }
    bool is_window() const { return is_text_window(slot); }
    bool is_picture() const { return slot.graphic != 0 && !is_text_window(slot); }
    std::string_view text() const { return text_of(slot.text); }
};

void check_font(const Subject& at) {
    if (at.is_text() && (at.slot.font < 0 || at.slot.font >= font_count))
        at.report(font_unknown, "font", "there is no font " + to_string(at.slot.font), "fonts are 0 to 10");
}

void check_colours(const Subject& at) {
    if (!at.is_text())
        return;
    const auto check = [&](const char* field, const char* what, int colour) {
        if (!is_colour(colour))
            at.report(colour_unknown, field, "there is no " + (what + to_string(colour)), "colours are 0 to 255");
    };
    check("fore_colour", "colour ", at.slot.fore_colour);
    check("back_colour", "colour ", at.slot.back_colour);
    if (has_shadow(at.slot))
        check("sound_flags", "shadow colour ", to_number(text_of(at.slot.sound_flags)));
}

void check_place(const Subject& at) {
    if (!at.is_text())
        return;
    if ((at.slot.dest_x == 0) != (at.slot.dest_y == 0)) {
        at.report(half_a_place, at.slot.dest_x == 0 ? "dest_x" : "dest_y", "is 0, so the other one is ignored",
                  "set both, or neither and use column and row");
        return;
    }
    if (at.slot.dest_x != 0)
        return;
    const int columns = layout_width / cell_width(at.slot.font), rows = layout_height / cell_height(at.slot.font);
    const auto check = [&](std::string field, int place, int count) {
        if (place < 0 || place >= count)
            at.report(outside_grid, field, to_string(place) + " is outside the grid",
                      "font " + to_string(at.slot.font) + " has " + field + "s 0 to " + to_string(count - 1));
    };
    check("column", at.slot.column, columns);
    check("row", at.slot.row, rows);
}

void check_toggle(const Subject& at) {
    if (at.slot.toggle < -1)
        at.report(toggle_unknown, "toggle", to_string(at.slot.toggle) + " means nothing",
                  "-1 is inert, 0 plain, above 0 highlighted");
    if (at.is_toggle || at.slot.toggle <= 0 || at.screen.toggles_lost)
        return;
    const int looks = at.slot.input_mode == 0 ? at.index : at.slot.toggle;
    if (!at.screen.set.has_toggle(looks))
        at.report(highlight_missing, "toggle",
                  "there is no toggle record " + to_string(looks) + " with its highlighted look",
                  "add the record, or set toggle to 0");
}

void check_activated(const Subject& at) {
    if (!at.is_toggle && !at.screen.toggles_lost && at.slot.activated != 0 &&
        !at.screen.set.has_toggle(at.slot.activated))
        at.report(pressed_missing, "activated",
                  "there is no toggle record " + to_string(at.slot.activated) + " with its pressed look",
                  "add the record, or set activated to 0");
}

void check_buffer(const Subject& at) {
    const bool background =
        at.index == 0 && !at.is_toggle && at.screen.kind != ScreenKind::info && at.screen.kind != ScreenKind::message;
    if ((!background && !at.is_picture()) || !at.installation.listed_buffers)
        return;
    const auto found = at.installation.buffers.find(at.slot.buffer);
    const bool made = at.slot.buffer >= window_copy_buffer && at.slot.buffer < graphic_buffer_count;
    if (found == at.installation.buffers.end()) {
        if (!made)
            at.report(buffer_empty, "buffer", "no picture is loaded into buffer " + to_string(at.slot.buffer),
                      "tools/vcc.buf lists the pictures");
        return;
    }
    const BITMAP* const picture = found->second.get();
    if (!picture)
        return; // reported where the list is checked
    if (background && (picture->w < layout_width || picture->h < layout_height))
        at.report(background_small, "buffer",
                  "the background in buffer " + to_string(at.slot.buffer) + " is smaller than the screen",
                  "it must be 800 x 600 pixels");
    if (!at.is_picture())
        return;
    const auto check = [&](const char* fields, const char* what, int first, int end, int size, const char* meaning) {
        if (first < 0 || end <= first || end > size)
            at.report(piece_outside, fields,
                      what + to_string(first) + " to " + to_string(end) + " are outside the picture",
                      "it is " + to_string(size) + meaning);
    };
    check("src_x, box_width", "columns ", at.slot.src_x, at.slot.box_width, picture->w,
          " pixels wide; box_width is the right edge, exclusive");
    check("src_y, box_height", "rows ", at.slot.src_y, at.slot.box_height, picture->h,
          " pixels high; box_height is the bottom edge, exclusive");
}

void check_window(const Subject& at) {
    if (!at.is_window() || !at.language.windows_usable)
        return;
    if (!find_window(at.language, at.slot.graphic))
        at.report(window_unknown, "graphic", "there is no text window " + to_string(at.slot.graphic),
                  "describe it in " + at.language.window_file);
}

void check_sounds(const Subject& at) {
    const auto check = [&](const char* field, int sound) {
        if (at.installation.listed_sounds && sound != 0 &&
            (sound < 0 || sound >= first_theme_entry || !at.installation.sounds.contains(sound)))
            at.report(sound_unknown, field, "there is no sound " + to_string(sound),
                      "tools/vcc.snd lists the sounds; 0 is none");
    };
    check("sound", at.slot.sound);
    if (!at.is_toggle)
        check("sound_act", at.slot.sound_act);
    const Field& time = *find_number_field("display_time");
    if (at.slot.display_time < time.min || at.slot.display_time > time.max)
        at.report(press_time, "display_time",
                  to_string(at.slot.display_time) + " tenths of a second are no duration of a pressed look",
                  range_of(time));
}

/// Whether the player can press a slot. The program shows some that the file hides.
bool can_be_pressed(ScreenKind kind, const Slot& slot, int index) {
    constexpr int paging_back = 33, paging_forward = 35;
    if (skipped_by_focus(slot))
        return false;
    if (kind == ScreenKind::message)
        return index == 13 || index == paging_back || index == paging_forward;
    return slot.toggle != -1 && !is_hidden(slot);
}

bool is_value_record(const Subject& at) {
    return at.screen.kind == ScreenKind::options && at.index >= value_record(0) &&
           at.index <= value_record(value_entry_limit - 1) && at.index % 2 == value_record(0) % 2;
}

/// The program gives it the action of its option.
bool is_value_button(const Subject& at) {
    return at.screen.kind == ScreenKind::options && at.index >= value_button(0) &&
           at.index <= value_button(value_entry_limit - 1);
}

void check_action(const Subject& at) {
    if (at.is_toggle || at.slot.toggle == -1 || at.screen.kind == ScreenKind::message || is_value_record(at))
        return;
    const auto name = name_of_number(Meaning::action, at.slot.action);
    if (!name)
        at.report(action_unknown, "action", "there is no action " + to_string(at.slot.action),
                  "docs/formats.md lists the actions");
    else if (at.slot.action == 0 && at.slot.input_mode == 0 && !is_value_button(at) &&
             can_be_pressed(at.screen.kind, at.slot, at.index))
        at.report(action_none, "action", "the button does nothing", "give it an action, or toggle = \"inert\"");
    else if (at.slot.action != 0 && !is_action_of(at.screen.kind, at.slot.action))
        at.report(action_elsewhere, "action", "\"" + *name + "\" is an action of another screen",
                  "docs/formats.md lists the actions of each");
}

bool has_box(const Slot& slot) {
    return slot.box_width > 0 && slot.box_height > 0;
}

void check_extent(const Subject& at) {
    if (is_hidden(at.slot) || at.is_window() || !at.installation.fonts)
        return;
    Rect area = slot_rect(at.slot);
    if (at.is_text()) {
        std::string text(at.text());
        trim_right(text);
        area.x2 = area.x1 + text_width(at.slot.font, text);
        if (has_box(at.slot)) {
            area.x2 = std::max(area.x2, area.x1 + at.slot.box_width);
            area.y2 = area.y1 + at.slot.box_height;
        } else if (text.empty() && at.slot.input_mode == 0) {
            return;
        }
    }
    if (area.x1 < 0 || area.x2 > layout_width || area.y1 < 0 || area.y2 > layout_height)
        at.report(outside_screen, "",
                  "extends outside the screen: " + to_string(area.x1) + "," + to_string(area.y1) + " to " +
                      to_string(area.x2) + "," + to_string(area.y2),
                  "the screen is 800 x 600 pixels");
}

void check_text(const Subject& at) {
    if (!at.is_text() || at.slot.font < 0 || at.slot.font >= font_count || !at.installation.fonts)
        return;
    std::string text(at.text());
    trim_right(text);
    const int width = text_width(at.slot.font, text);
    if (at.slot.box_width > 0 && width > at.slot.box_width)
        at.report(text_wide, "text",
                  "\"" + text + "\" is " + to_string(width) + " pixels wide, its box " + to_string(at.slot.box_width),
                  "shorten the text or widen the box");
    if (at.slot.input_mode == 0 || at.is_toggle)
        return;
    if (at.slot.box_width == 0)
        at.report(field_without_box, "box_width", "an entry field without a box cannot be edited", "give it a width");
    if (at.slot.size < 1 || at.slot.size > static_cast<int>(sizeof at.slot.text) - 1)
        at.report(field_size, "size", "a field cannot hold " + to_string(at.slot.size) + " characters", "1 to 90");
    else if (at.slot.size * cell_width(at.slot.font) > at.slot.box_width)
        at.report(field_wide, "size", to_string(at.slot.size) + " characters are wider than the box",
                  "widen the box to " + to_string(long{at.slot.size} * cell_width(at.slot.font)) + " pixels");
}

void check_look(const Subject& at) {
    if (!at.is_text())
        return;
    if (std::ranges::any_of(at.text(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7F; }))
        at.report(text_control, "text", "has a line feed or another control character", "a text is one line");
    const bool shows_text = at.slot.input_mode != 0 || at.text().find_first_not_of(' ') != std::string_view::npos;
    if (!shows_text || !has_box(at.slot) || at.slot.font < 0 || at.slot.font >= font_count)
        return;
    if (at.installation.fonts && cell_height(at.slot.font) > at.slot.box_height)
        at.report(text_tall, "box_height",
                  "the text is " + to_string(cell_height(at.slot.font)) + " pixels high, its box " +
                      to_string(at.slot.box_height),
                  "make the box as high as the font");
    if (at.slot.fore_colour == at.slot.back_colour)
        at.report(text_unseen, "fore_colour", "the text has the colour of its box",
                  "change fore_colour or back_colour");
}

void check_ends(const Subject& at) {
    for (const Field& field : text_fields())
        if (bytes_of(at.slot, field).back() != '\0')
            at.report(text_unended, std::string(field.name), "has no terminating zero",
                      to_string(field.size - 1) + " characters fit; shorten it");
    if (!at.is_toggle && at.slot.help_number < 0)
        at.report(help_negative, "help_number", "there is no help entry " + to_string(at.slot.help_number),
                  "0 is none");
}

constexpr void (*record_checks[])(const Subject&) = {
    check_font,   check_colours, check_place,  check_toggle, check_activated, check_buffer, check_window,
    check_sounds, check_action,  check_extent, check_text,   check_look,      check_ends,
};

/// Names are often the same in all languages; texts of two or more words rarely are.
bool has_two_words(std::string_view text) {
    const auto is_letter = [](char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0 || c < 0; };
    int words = 0;
    bool inside = false;
    for (const char c : text) {
        words += !inside && is_letter(c) ? 1 : 0;
        inside = is_letter(c);
    }
    return words > 1;
}

} // namespace

void check_records_of(const Installation& installation, const LanguageFiles& language, const ScreenFiles& screen,
                      Faults& faults) {
    for (const bool toggles : {false, true}) {
        const std::vector<Slot>& records = toggles ? screen.set.toggles : screen.set.slots;
        for (int i = 0; i < static_cast<int>(records.size()); ++i)
            for (const auto check : record_checks)
                check({installation,
                       language,
                       screen,
                       records[static_cast<std::size_t>(i)],
                       i,
                       toggles,
                       {faults, toggles ? screen.toggle_file : screen.slot_file, 0, i}});
    }
}

void check_translation_of(const ScreenFiles& first, const ScreenFiles& other, Faults& faults) {
    const auto& slots = other.set.slots;
    for (std::size_t i = 0; i < std::min(first.set.slots.size(), slots.size()); ++i) {
        const std::string_view text = text_of(slots[i].text);
        if (slots[i].graphic == 0 && text == text_of(first.set.slots[i].text) && has_two_words(text))
            Reporter{faults, other.slot_file, 0, static_cast<int>(i)}(
                text_untranslated, "text", "\"" + std::string(text) + "\" is the text of both languages",
                "translate it");
    }
}

void check_records(Installation& installation, Faults& faults) {
    for (const LanguageFiles& language : installation.by_language)
        for (int i = 0; i < text_window_count && installation.listed_sounds; ++i)
            if (const TextWindow* const window = find_window(language, i);
                window && window->open_sound != 0 && !installation.sounds.contains(window->open_sound))
                Reporter{faults, language.window_file}(sound_unknown, "+" + std::to_string(i) + ": o",
                                                       "there is no sound " + to_string(window->open_sound),
                                                       "tools/vcc.snd lists the sounds; 0 is none");
    for (const LanguageFiles& language : installation.by_language)
        for (const ScreenFiles& screen : language.screens)
            check_records_of(installation, language, screen, faults);
}

void check_overlaps_of(const ScreenFiles& screen, Faults& faults) {
    for (int i = 0; i < screen.set.slot_count(); ++i) {
        const Reporter report{faults, screen.slot_file, 0, i};
        for (int j = i + 1; j < screen.set.slot_count(); ++j) {
            const Slot &a = *find_slot(screen, i), &b = *find_slot(screen, j);
            if (!can_be_pressed(screen.kind, a, i) || !can_be_pressed(screen.kind, b, j))
                continue;
            const Rect one = slot_rect(a), other = slot_rect(b);
            if (one.x1 < other.x2 && other.x1 < one.x2 && one.y1 < other.y2 && other.y1 < one.y2)
                report(slots_overlap, "", "overlaps slot " + to_string(j),
                       "move one of them: where they overlap, the pointer reaches only the first");
        }
    }
}

void check_overlaps(Installation& installation, Faults& faults) {
    for (const LanguageFiles& language : installation.by_language)
        for (const ScreenFiles& screen : language.screens)
            check_overlaps_of(screen, faults);
}

} // namespace vcc::kit
