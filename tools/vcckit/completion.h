// What a shell may offer for an unfinished command line, taken from the command line's own description.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vcc::kit {

/// One line for each candidate, "candidate TAB description", whatever has been typed of the last word; then what files
/// may stand there: ":folders", ":files" (any) or ":files toml slt" by their endings. `words` are those behind the
/// tool's name; the last one, which may be empty, is completed.
std::vector<std::string> completions(const CLI::App& app, std::span<const std::string> words);

} // namespace vcc::kit
