#include "cc/explanations.h"

#include "text/screen_texts.h"

#include <optional>

namespace vcc {

namespace {

constexpr int of_the_loop_button = explanation_number(11);

std::optional<int> first_line(Row row) {
    if (row == Row::loop_theme)
        return of_the_loop_button;
    const OptionRow* option = find_row(row);
    return option ? std::optional(option->explanation) : std::nullopt;
}

} // namespace

bool has_explanation(Row row) {
    return first_line(row).has_value();
}

Explanation explanation_of(Row row) {
    Explanation lines{};
    if (std::optional<int> number = first_line(row))
        for (std::string_view& line : lines)
            line = screen_text((*number)++);
    return lines;
}

} // namespace vcc
