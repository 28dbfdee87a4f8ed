// The lines on the options screen that join the selected module, the current row and the marked value: where they run,
// without any drawing.
#pragma once

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

/// Pixel positions on the options screen, and what is selected there.
struct ConnectorLayout {
    std::array<int, 4> selector_y{};               ///< heights of the module selector buttons
    std::array<int, 3> sound_y{};                  ///< heights of the sound rows' buttons
    std::array<int, 4> display_y{};                ///< heights of the buttons 29, 31, 33, 48
    std::array<bool, 4> display_shown{};           ///< those that are not hidden
    std::array<int, 4> battle_y{};                 ///< heights of the buttons 36, 38, 40, 42
    std::array<int, 11> value_y{};                 ///< heights of the value entries
    std::array<int, 4> junction_x{}, junction_y{}; ///< slots 78 to 81
    int module_right = 0;                          ///< one column inside the module window's right edge
    int sound_left = 0, sound_right = 0;           ///< edges of the sound group's window
    int group_right = 0;                           ///< right edge of the second and third group's window
    int value_left = 0;                            ///< left edge of the value window

    int group = 0;        ///< 1, 2, 3; 0 when the row belongs to none
    int button_y = 0;     ///< height of the current row's button
    int module = 0;       ///< 0 to 3
    int marked_value = 0; ///< a value outside 0 to 10 lights no entry
};

/// The bands in drawing order. Pure.
std::vector<Band> connector_bands(const ConnectorLayout& layout);

} // namespace vcc
