#include "cc/option_rows.h"

#include "cc/option_table.h"
#include "sound/sound.h"
#include "text/screen_texts.h"

#include <algorithm>

namespace vcc {

std::span<const OptionRow> option_rows() {
    return option_table;
}

const OptionRow* find_row(Row row) {
    const auto* const found = std::ranges::find(option_table, row, &OptionRow::row);
    return found == std::end(option_table) ? nullptr : found;
}

const OptionRow* find_row(int OptionRow::*member, int value) {
    const auto* const found = std::ranges::find(option_table, value, member);
    return found == std::end(option_table) ? nullptr : found;
}

int offered_values(const OptionRow& option) {
    return option.labels.empty() ? std::clamp(number_of_themes, 0, value_entry_limit) : option.offered;
}

Entry entry_of(const OptionRow& option, int value) {
    if (value >= offered_values(option))
        return Entry::hidden;
    return option.rules.entry ? option.rules.entry(value) : Entry::choosable;
}

bool is_choice(const OptionRow& option, int value) {
    return value >= 0 && value < (option.labels.empty() ? number_of_themes : option.labels.count);
}

std::string_view value_label(const OptionRow& option, int value) {
    if (!option.labels.empty())
        return value >= 0 && value < option.labels.count ? screen_text(option.labels.first + value)
                                                         : std::string_view{};
    if (value < 0 || value >= theme_limit)
        return {};
    const std::string_view translated = screen_text(screen_text_number::themes + value);
    const std::string& name = sound_entries[static_cast<std::size_t>(first_theme_entry + value)].name;
    return translated.empty() ? std::string_view(name) : translated;
}

int stepped_value(int value, int offered, Stepping stepping, bool forward) {
    if (stepping == Stepping::flip)
        return value == 0 ? 1 : 0;
    const int top = std::max(offered - 1, 0);
    if (forward)
        return value < top ? value + 1 : 0;
    return value > 0 ? value - 1 : top;
}

int settled_depth(int depth, int direction, const std::array<int, 3>& offered) {
    const auto is_offered = [&](int i) { return i >= 0 && i < 3 && offered[static_cast<std::size_t>(i)]; };
    constexpr int last = 2;
    for (int i = 0; i <= last; ++i) {
        if (depth != i || is_offered(i))
            continue;
        const int neighbour = i == 0 || (direction > 0 && i < last) ? i + 1 : i - 1;
        if (is_offered(neighbour))
            depth = neighbour;
    }
    return depth;
}

std::optional<int> explanation_of(Row row) {
    if (row == Row::loop_theme)
        return explanation_number(11);
    const OptionRow* option = find_row(row);
    return option ? std::optional(option->explanation) : std::nullopt;
}

bool needs_met(Needs needs) {
    return needs == Needs::nothing || (sound_on != 0 && (needs == Needs::sound || music_on != 0));
}

} // namespace vcc
