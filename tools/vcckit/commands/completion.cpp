// Completions of an unfinished command line, from the description of the commands.
#include "vcckit/commands/commands.h"
#include "vcckit/faults/fault_codes.h"

#include <CLI/CLI.hpp>

#include <string_view>

namespace vcc::kit {

namespace {

constexpr std::string_view shown_files = "slt tgl tw buf snd eng ger hlp cfg pcx wav avi";

std::string candidate(const std::string& name, const std::string& description) {
    return name + "\t" + description.substr(0, description.find('\n'));
}

void offer_options(const CLI::App& command, std::vector<std::string>& lines) {
    for (const CLI::Option* option : command.get_options())
        for (const std::string& name : option_names(*option))
            lines.push_back(candidate(name, option->get_description()));
}

/// "BITS:{15,16}" offers the values in braces, "DIR" folders, "FILE.toml" and "FILE" files.
void offer_values(const CLI::App& command, const CLI::Option& option, std::vector<std::string>& lines) {
    const std::string type = option.get_type_name();
    if (const auto brace = type.find('{'); brace != std::string::npos) {
        for (const std::string& value : CLI::detail::split(type.substr(brace + 1, type.find('}') - brace - 1), ','))
            lines.push_back(candidate(value, ""));
        return;
    }
    if (type == "CODE") // of faults; that of a language has braces
        for (const FaultRow& row : fault_rows)
            lines.push_back(candidate(code_text(row.code), std::string(row.title)));
    if (type.find("DIR") != std::string::npos)
        lines.emplace_back(":folders");
    if (const auto file = type.find("FILE"); file != std::string::npos) {
        const std::string_view rest = std::string_view(type).substr(file + std::string_view("FILE").size());
        std::string endings = rest.starts_with('.') ? " " + std::string(rest.substr(1)) : "";
        if (command.get_name() == "show")
            endings = " " + std::string(shown_files);
        lines.push_back(":files" + endings);
    }
}

} // namespace

std::vector<std::string> option_names(const CLI::Option& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.get_lnames())
        names.push_back("--" + name);
    for (const std::string& name : option.get_snames())
        names.push_back("-" + name);
    return names;
}

std::vector<std::string> completions(const CLI::App& app, std::span<const std::string> words) {
    std::vector<std::string> lines;
    const auto named = app.get_subcommands(
        [&](const CLI::App* each) { return words.size() < 2 || each->get_name() == words.front(); });
    if (words.size() < 2) {
        for (const CLI::App* command : named)
            lines.push_back(candidate(command->get_name(), command->get_description()));
        offer_options(app, lines);
        return lines;
    }
    if (named.empty())
        return lines;
    const CLI::App& command = *named.front();
    const std::string& before = words[words.size() - 2];
    const CLI::Option* const option =
        words.size() > 2 && before.starts_with('-') ? command.get_option_no_throw(before) : nullptr;
    if (option != nullptr && option->get_items_expected_max() > 0)
        offer_values(command, *option, lines);
    else if (words.back().starts_with('-'))
        offer_options(command, lines);
    else
        for (const CLI::Option* positional : command.get_options(&CLI::Option::get_positional))
            offer_values(command, *positional, lines);
    return lines;
}

} // namespace vcc::kit
