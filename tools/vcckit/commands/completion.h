// Completions of an unfinished command line, from the description of the commands.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vcc::kit {

/// A line "candidate TAB description" per candidate, whatever has been typed of the last word; then the kind of files
/// that fit: ":folders", ":files" (any) or ":files toml slt" (by extension). `words` are those after the tool's name;
/// the last one, which may be empty, is to be completed.
std::vector<std::string> completions(const CLI::App& app, std::span<const std::string> words);

} // namespace vcc::kit
