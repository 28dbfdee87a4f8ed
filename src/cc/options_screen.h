// The options screen: its selection, and how clicks, keys and the pointer change it.
#pragma once

#include "cc/options_picture.h"
#include "cc/sets.h"

#include <allegro.h>

namespace vcc {

class OptionsScreen : public OptionsState {
public:
    /// Selects the HQ and the row that the screen opens with on this machine.
    void open();

    /// Selects the module whose sound rows are edited and plays its theme; does nothing if it is selected already.
    void select_module(BITMAP* target, Module module);

    /// Does what a module's button does: selects it and shows its sound row.
    void select(BITMAP* target, Module module);

    /// Steps an option: by a click on its button, or by a right click or a gamepad.
    void step(BITMAP* target, const OptionRow& option, const Slot& button);
    void press_and_step(BITMAP* target, const OptionRow& option, const Slot& button, bool forward);

    void choose(BITMAP* target, const OptionRow& option, int value);

    /// Switches the selected module's music between its theme and all themes; only while the theme row is shown.
    void toggle_loop(BITMAP* target);

    /// The pointer entered or left a slot.
    void point(BITMAP* target, int slot);

    /// Shows the settings again after a reset.
    void refresh(BITMAP* target);

    /// Whether the screen may redraw its panels without input.
    static bool theme_display_live() { return cc_screen == CcScreen::options; }

    /// Makes the loop button inert, and removes it from the picture.
    void take_loop_button_away(BITMAP* target);

    /// Plays the selected module's theme; after a failure disables the music controls. False if nothing plays.
    bool play_theme();

    /// Marks a row's current value and draws its panel.
    void draw_row(BITMAP* target, const OptionRow& option);

    /// Explains a row; an unknown one leaves the lines unchanged.
    void explain(BITMAP* target, Row row);

    int depth_at_menu = 0; ///< `bitmap_depth` when the main menu was last entered, or as a reset has set it

private:
    void mark_value(BITMAP* target, int value);
    void put_on_panel(BITMAP* target, const OptionRow& option, int direction = 1);
    void show_changed_row(BITMAP* target, const OptionRow& option, int direction);
    void set_value(const OptionRow& option, int value);
    void step_value(BITMAP* target, const OptionRow& option, bool forward);
    void refresh_module_rows(BITMAP* target);
    void point_at_row(BITMAP* target, const OptionRow& option);
    void point_at_values(BITMAP* target);
    bool opened_with(int slot);

    int first_slot_ = 0; ///< current since the screen opened; 0 not yet known, -1 no more
};
inline OptionsScreen options_screen;

} // namespace vcc
