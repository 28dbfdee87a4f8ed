// The lines on the options screen that join the selected module, the current row and the marked value.
#pragma once

#include "cc/option_rows.h"

#include <allegro.h>

#include <array>
#include <vector>

namespace vcc {

struct Band {
    bool horizontal = true;
    int from = 0, to = 0; ///< x of a horizontal band, y of a vertical one; may run either way
    int at = 0;           ///< y of a horizontal band, x of a vertical one
    bool lit = false;     ///< on the path from module to value

    bool operator==(const Band&) const = default;
};

struct ButtonPlace {
    int y = 0;
    bool shown = true; ///< false: the slot is hidden and has no line
};

/// Pixel positions on the options screen, and its selection.
struct ConnectorLayout {
    std::array<int, module_count> selector_y{};      ///< heights of the module selector buttons
    std::vector<ButtonPlace> sound, display, battle; ///< the options of the three groups, from top to bottom
    std::array<int, value_entry_limit> value_y{};    ///< heights of the value entries
    std::array<int, 4> junction_x{}, junction_y{};   ///< slots 78 to 81
    int module_right = 0;                            ///< one column inside the module window's right edge
    int sound_left = 0, sound_right = 0;             ///< edges of the sound group's window
    int group_right = 0;                             ///< right edge of the second and third group's window
    int value_left = 0;                              ///< left edge of the value window

    Group group = Group::none; ///< of the current row
    int button_y = 0;          ///< height of the current row's button
    Module module = Module::hq;
    int marked_value = 0; ///< a value outside 0 to 10 lights no entry
};

/// The bands in drawing order. Pure.
std::vector<Band> connector_bands(const ConnectorLayout& layout);

/// Draws them for what the screen shows.
void draw_connectors(BITMAP* target, const OptionsState& state);

} // namespace vcc
