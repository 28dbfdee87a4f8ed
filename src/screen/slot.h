// The slot: one element of a screen, stored in files exactly as in memory. A slot or toggle file is a count and that
// many records.
#pragma once

#include "core/result.h"
#include "core/text.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace vcc {

inline constexpr int slot_limit = 200; ///< records of one set

struct Slot {
    std::int32_t reserved;
    std::int32_t font;
    std::int32_t size;       ///< entry field: width in characters
    std::int32_t box_width;  ///< text: pixels of the box behind it; picture: right edge (exclusive) of the source
    std::int32_t box_height; ///< text: pixels of the box behind it; picture: bottom edge (exclusive) of the source
    std::int32_t fore_colour;
    std::int32_t back_colour;
    std::int32_t column;
    std::int32_t row;
    std::int32_t input_mode; ///< 0 button or label, 1 numeric entry field, other: entry field
    std::int32_t toggle;     ///< -1 inert, 0 no highlight, above 0 highlighted when pointed at
    std::int32_t activated;  ///< toggle record of the pressed look, 0 none
    std::int32_t buffer;
    std::int32_t graphic; ///< 0 text; otherwise picture, or number of a text window
    std::int32_t src_x;
    std::int32_t src_y;
    std::int32_t dest_x;
    std::int32_t dest_y;
    std::int32_t action;
    std::int32_t sound;
    std::int32_t sound_act;
    std::int32_t display_time; ///< tenths of a second
    std::int32_t min_value;
    std::int32_t max_value;
    std::int32_t help_number;
    char help_file[91];
    char draw_flags[31];  ///< [0] 'n' hidden, [1] 's' shadow, [2] 'x' skipped by the keyboard's focus
    char sound_flags[31]; ///< [0] 'n' silent; number: shadow colour; [1]: shadow colour of an entry field
    char text[91];
    char name[32];

    bool operator==(const Slot&) const = default;
};

static_assert(sizeof(Slot) == 376 && alignof(Slot) == 4 && std::is_trivially_copyable_v<Slot>);
static_assert(offsetof(Slot, toggle) == 40 && offsetof(Slot, dest_x) == 64 && offsetof(Slot, help_number) == 96);
static_assert(offsetof(Slot, help_file) == 100 && offsetof(Slot, draw_flags) == 191 &&
              offsetof(Slot, sound_flags) == 222);
static_assert(offsetof(Slot, text) == 253 && offsetof(Slot, name) == 344);

/// The slots of a slot file, and the parallel records of its toggle file (highlighted and pressed looks; may be empty).
struct SlotSet {
    std::vector<Slot> slots;
    std::vector<Slot> toggles;
    std::string file = {}; ///< slot file, for messages

    int slot_count() const { return static_cast<int>(slots.size()); }
    int toggle_count() const { return static_cast<int>(toggles.size()); }
    bool has_slot(int index) const { return index >= 0 && index < slot_count(); }
    bool has_toggle(int index) const { return index >= 0 && index < toggle_count(); }

    /// Null if there is no such record.
    Slot* toggle(int index) { return has_toggle(index) ? &toggles[static_cast<std::size_t>(index)] : nullptr; }
};

/// Characters of the longest entry field, which keeps its text in the slot.
inline constexpr int field_limit = sizeof(Slot::text) - 1;

/// A text slot is placed in pixels if both coordinates are set, else by a cell of its font's grid.
inline bool placed_in_pixels(const Slot& slot) {
    return slot.dest_x != 0 && slot.dest_y != 0;
}
inline bool is_boxed(const Slot& slot) {
    return slot.box_width != 0 && slot.box_height != 0;
}
inline bool is_hidden(const Slot& slot) {
    return slot.draw_flags[0] == 'n';
}
inline bool has_shadow(const Slot& slot) {
    return slot.draw_flags[1] == 's';
}
inline bool skipped_by_focus(const Slot& slot) {
    return slot.draw_flags[2] == 'x';
}
inline void hide(Slot& slot) {
    slot.draw_flags[0] = 'n';
}
inline void show(Slot& slot) {
    slot.draw_flags[0] = ' ';
}
inline bool is_text_window(const Slot& slot) {
    return slot.graphic != 0 && text_of(slot.text).starts_with("TEXT-WIN");
}

/// The records of a slot or toggle file in memory. Fails if the file is shorter than its count announces or has more
/// than 200 records; a file too short for a count has none. Ignores what follows the records.
Result<std::vector<Slot>> read_slot_file(std::string_view bytes);

/// Loads the set's slots. Returns their number; 0 if the file has none or is rejected, 1 if it cannot be opened (no
/// record is then loaded). Messages go to the status line; a file that is rejected or cannot be opened is also logged.
int load_slots(const std::string& path, SlotSet& set);

/// Loads the toggles of a slot file from their own file. Returns their number, 0 in every other case.
int load_toggles(const std::string& slot_path, SlotSet& set);

/// Loads both; returns the sum of the two results.
int load_slot_set(const std::string& path, SlotSet& set);

} // namespace vcc
