#include "cc/explanations.h"

namespace vcc {

namespace {

constexpr Explanation of_the_loop_button{"Use this option to switch", "between looping only the",
                                         "currently chosen music theme", "or looping through all", "music themes."};
constexpr Explanation no_lines{};

const Explanation* find(Row row) {
    if (row == Row::loop_theme)
        return &of_the_loop_button;
    const OptionRow* option = find_row(row);
    return option ? &option->explanation : nullptr;
}

} // namespace

bool has_explanation(Row row) {
    return find(row) != nullptr;
}

std::span<const std::string_view, explanation_lines> explanation_of(Row row) {
    const Explanation* explanation = find(row);
    return explanation ? *explanation : no_lines;
}

} // namespace vcc
