// Slots that the program knows by their numbers.
#pragma once

#include <string>
#include <string_view>

namespace vcc::kit {

/// What the program takes a slot of a screen for ("module selector"); empty when its number is free.
std::string role_of_fixed_slot(std::string_view screen, int index);

} // namespace vcc::kit
