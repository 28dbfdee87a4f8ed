// Running another program, without a shell, for what it prints.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit {

/// Takes a piece of the output; false ends the program.
using TakeOutput = std::function<bool(std::string_view piece)>;

/// Runs a program, found beside this one (on Windows) or by PATH, with nothing on its standard input; what it prints as
/// errors is output, too, or lost. Returns the exit status, or nothing if it cannot be started.
std::optional<int> run_program(const std::vector<std::string>& words, bool with_errors, const TakeOutput& take);

} // namespace vcc::kit
