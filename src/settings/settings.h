// The settings that all four programs share: loaded, saved and reset. settings/rows.h has the record and its keys.
#pragma once

#include "settings/rows.h"

namespace vcc {

void load_settings();
void reset_settings();
void save_settings();

} // namespace vcc
