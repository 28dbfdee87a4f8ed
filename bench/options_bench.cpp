// The options screen.
#include "cc/connectors.h"
#include "cc/option_rows.h"
#include "cc/options_screen.h"
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
    options_screen.option_row = Row::message_delay;
    measure(state, no_limit, 1, [&] {
        benchmark::DoNotOptimize(draw_slot_set(target(), options_set));
        options_screen.select_module(target(), Module::hq);
        options_screen.selected_module = Module::control_centre;
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
        const Module module = options_screen.selected_module;
        options_screen.option_row = option.row;
        options_screen.explain(target(), option.row);
        option.setting(module) = stepped_value(option.get(module), offered_values(option), option.rules.stepping, true);
        options_screen.draw_row(target(), option);
        update_screen(target());
    });
}
VELDOR_FIGURE(option_row_change);

void connectors(benchmark::State& state) {
    options_screen.option_row = Row::message_delay;
    measure(state, no_limit, 1, [] { draw_connectors(target(), options_screen); });
}
VELDOR_FIGURE(connectors);

} // namespace

} // namespace vcc::bench
