// Running programs without a shell: this one's command line, and another for what it prints.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit {

/// The words of the command line without the program's name; on Windows in UTF-8, as main() does not get them, and a
/// console shows UTF-8 from then on.
std::vector<std::string> command_line(int argc, const char* const* argv);

/// Takes a piece of the output; false ends the program.
using TakeOutput = std::function<bool(std::string_view piece)>;

/// Runs a program, found beside this one (on Windows) or by PATH, with nothing on its standard input; what it prints as
/// errors is output, too, or lost. Returns the exit status, or nothing if it cannot be started.
std::optional<int> run_program(const std::vector<std::string>& words, bool with_errors, const TakeOutput& take);

} // namespace vcc::kit
