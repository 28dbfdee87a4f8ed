// Slots and text windows that the program addresses by number.
#pragma once

#include "core/installation.h"

#include <string>
#include <string_view>

namespace vcc::kit {

/// What the program uses a slot of a screen for ("module selector"); empty if its number is free.
std::string role_of_fixed_slot(std::string_view screen, int index);

/// Whether a slot with this action does on a screen what it is meant to.
bool is_action_of(ScreenKind screen, int action);

/// What the program uses a text window for; empty if its number is free.
std::string role_of_fixed_window(int number);

} // namespace vcc::kit
