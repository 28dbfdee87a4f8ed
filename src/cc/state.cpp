#include "cc/state.h"

namespace vcc {

CcScreen cc_screen = CcScreen::menu;
int theme_display_live = 0;
int depth_at_menu = 0;
Module selected_module = Module::hq;
Row option_row = Row::effects;
int marked_value = 0;
Row info_row = Row::none;

} // namespace vcc
