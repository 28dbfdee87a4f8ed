// Slots that the program addresses by number.
#pragma once

#include <string>
#include <string_view>

namespace vcc::kit {

/// What the program uses a slot of a screen for ("module selector"); empty if its number is free.
std::string role_of_fixed_slot(std::string_view screen, int index);

} // namespace vcc::kit
