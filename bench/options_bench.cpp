// The options screen.
#include "cc/connectors.h"
#include "cc/option_rows.h"
#include "cc/options_view.h"
#include "cc/selection.h"
#include "cc/sets.h"
#include "figure.h"
#include "screen/draw.h"
#include "screen/draw_slot.h"
#include "settings/settings.h"
#include "world.h"

namespace vcc::bench {

namespace {

/// Everything that opening the screen draws, and the copy to the display.
void options_redraw(benchmark::State& state) {
    std::vector<std::string> edit_texts;
    option_row = Row::message_delay;
    measure(state, no_limit, 1, [&] {
        benchmark::DoNotOptimize(draw_slot_set(target(), options_set, edit_texts));
        select_module(target(), Module::hq);
        selected_module = Module::control_centre;
        update_screen(target());
    });
}
VELDOR_FIGURE(options_redraw);

/// From a click on an option to the changed picture on the display: its explanation, its panel with the connectors, the
/// copy. Two options in turn, so that everything changes.
void option_row_change(benchmark::State& state) {
    const OptionRow* rows[] = {find_row(Row::message_delay), find_row(Row::sprite_speed)};
    std::size_t turn = 0;
    measure(state, no_limit, 1, [&] {
        const OptionRow& option = *rows[turn++ % 2];
        option_row = option.row;
        show_explanation(target(), option.row);
        option.set(stepped_value(option.get(), offered_values(option), option.stepping, true));
        show_row_panel(target(), option);
        update_screen(target());
    });
}
VELDOR_FIGURE(option_row_change);

void connectors(benchmark::State& state) {
    option_row = Row::message_delay;
    measure(state, no_limit, 1, [] { draw_connectors(target()); });
}
VELDOR_FIGURE(connectors);

} // namespace

} // namespace vcc::bench
