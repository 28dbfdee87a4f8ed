#include "display/mode_rules.h"

#include "core/log.h"

#include <algorithm>

namespace vcc {

namespace {

using enum ModeFailure;

constexpr std::array<ModeFailureRow, 10> rows{{
    {desktop_size, "Wrong desktop resolution!\n800x600 is minimum", "Wrong desktop resolution!\n800x600 is minimum", 0,
     SetupResult::fatal},
    {desktop_depth, "Wrong Desktop color depth!\n16bit is minimum", "Wrong Desktop color depth!\n16bit is minimum", 0,
     SetupResult::fatal},
    {no_mode, "No valid videomode detected !", "No valid videomode detected !", 0, SetupResult::fatal},
    {probed_full_screen_at_15, "gfx mode error 1 !", "", 1, SetupResult::fatal},
    {probed_full_screen, "gfx mode error 2 !", "", 2, SetupResult::fatal},
    {probed_window_at_15, "gfx mode error 3 !", "", 3, SetupResult::fatal},
    {probed_window, "gfx mode error 4 !", "", 4, SetupResult::fatal},
    {configured_full_screen, "gfx mode error 5 !", "", 5, SetupResult::retry},
    {configured_window, "gfx mode error 6 !", "", 6, SetupResult::retry},
    {depth_not_found, "First run fdepth error !", "First run fdepth error", 0, SetupResult::fatal},
}};
static_assert(std::ranges::is_sorted(rows, std::ranges::less_equal{}, &ModeFailureRow::failure) &&
                  static_cast<std::size_t>(rows.back().failure) == rows.size() - 1,
              "the number of a failure is its row");

} // namespace

const ModeFailureRow& failure_row(ModeFailure failure) {
    return rows[static_cast<std::size_t>(failure)];
}

std::string error_line(int number, const Desktop& desktop, int requested_depth, std::uint8_t screen, ModeRange range) {
    return format_text("Error %d: Desktop %d/%d/%d Request %d/%d/%d", number, desktop.depth, desktop.width,
                       desktop.height, requested_depth, static_cast<std::int8_t>(screen), static_cast<int>(range));
}

std::optional<ModeFailure> desktop_failure(const Desktop& desktop) {
    if (desktop.size_known() && (desktop.width < layout_width || desktop.height < layout_height))
        return desktop_size;
    if (!desktop.is_exact() && desktop.depth < 15)
        return desktop_depth;
    return std::nullopt;
}

int best_listed_depth(std::span<const ListedMode> modes, bool centred) {
    int best = 0;
    for (const ListedMode& mode : modes) {
        const bool exact = mode.width == layout_width && mode.height == layout_height;
        const bool roomy = mode.width >= layout_width && mode.height >= layout_height;
        if (exact || (centred && roomy))
            best = std::max(best, mode.depth);
    }
    return best >= 15 ? best : 0;
}

std::optional<int> depth_setting(int bits) {
    const auto* const found = std::ranges::find(depths, bits);
    return found == depths.end() ? std::nullopt : std::optional(static_cast<int>(found - depths.begin()));
}

} // namespace vcc
