#include "vcckit/record/names.h"

#include "cc/actions.h"

#include <array>
#include <charconv>

namespace vcc::kit {

namespace {

using enum Meaning;

struct NameRow {
    Meaning meaning;
    std::string_view name; ///< of one number, or of the first of `count` numbers named name_0, name_1 ...
    std::int32_t first;
    std::int32_t count;
};

constexpr NameRow rows[] = {
    {colour, "black", 0, 1},
    {colour, "blue", 1, 1},
    {colour, "green", 2, 1},
    {colour, "cyan", 3, 1},
    {colour, "red", 4, 1},
    {colour, "magenta", 5, 1},
    {colour, "brown", 6, 1},
    {colour, "light_grey", 7, 1},
    {colour, "dark_grey", 8, 1},
    {colour, "light_blue", 9, 1},
    {colour, "light_green", 10, 1},
    {colour, "light_cyan", 11, 1},
    {colour, "light_red", 12, 1},
    {colour, "light_magenta", 13, 1},
    {colour, "yellow", 14, 1},
    {colour, "white", 15, 1},
    // ramps from dark to bright
    {colour, "steel", 16, 16},
    {colour, "grey", 32, 16},
    {colour, "red", 48, 16},
    {colour, "green", 64, 16},
    {colour, "blue", 80, 16},
    {colour, "magenta", 96, 16},
    {colour, "cyan", 112, 16},
    {colour, "yellow", 128, 16},
    {colour, "bronze", 144, 16},
    {colour, "amber", 160, 12},
    {colour, "copper", 172, 4},

    // face and height in the built-in installation
    {font, "sans_12", 0, 1},
    {font, "sans_13", 1, 1},
    {font, "mono_11", 2, 1},
    {font, "mono_11_b", 3, 1},
    {font, "mono_14", 4, 1},
    {font, "mono_12", 5, 1},
    {font, "bold_14", 6, 1},
    {font, "mono_16", 7, 1},
    {font, "bold_20", 8, 1},
    {font, "mono_20", 9, 1},
    {font, "mono_20_b", 10, 1},

    {action, "none", 0, 1}, // the other actions have their names from the program

    {sound, "none", 0, 1},

    {buffer, "screen", 0, 1},
    {buffer, "backdrop", 3, 1},
    {buffer, "help_save", 22, 1},

    {input, "none", 0, 1},
    {input, "digits", 1, 1},
    {input, "text", 2, 1},

    {focus, "inert", -1, 1},
    {focus, "plain", 0, 1},
};

constexpr std::array<std::string_view, 8> words{"number", "colour", "font",  "action",
                                                "sound",  "buffer", "input", "focus"};

} // namespace

std::string_view meaning_word(Meaning meaning) {
    return words[static_cast<std::size_t>(meaning)];
}

std::optional<Meaning> meaning_of_word(std::string_view word) {
    for (std::size_t i = 0; i < words.size(); ++i)
        if (words[i] == word)
            return static_cast<Meaning>(i);
    return std::nullopt;
}

std::vector<std::string> names_of(Meaning meaning) {
    std::vector<std::string> names;
    for (const NameRow& row : rows)
        for (std::int32_t step = 0; row.meaning == meaning && step < row.count; ++step)
            names.push_back(row.count == 1 ? std::string(row.name)
                                           : std::string(row.name) + "_" + std::to_string(step));
    if (meaning == action)
        for (const ActionName& each : action_names())
            names.push_back(each.name);
    return names;
}

std::string permitted_values(Meaning meaning) {
    switch (meaning) {
    case colour:
        return "colours are 0 to 255, black to white, or ramps such as steel_0 to steel_15";
    case font:
        return "fonts are 0 to 10, or their names from sans_12 to mono_20_b";
    case action:
        return "docs/formats.md lists the actions";
    case sound:
    case buffer:
        return "it is a number, or a name under [names." + std::string(meaning_word(meaning)) + "]";
    case number:
        return "it is a number, or a name under [names.number]";
    case input:
        return "none, digits or text";
    case focus:
        return "inert, plain, or the number of the slot";
    }
    return {};
}

std::optional<std::int32_t> number_of_name(Meaning meaning, std::string_view name) {
    for (const NameRow& row : rows) {
        if (row.meaning != meaning || !name.starts_with(row.name))
            continue;
        std::string_view rest = name.substr(row.name.size());
        if (row.count == 1) {
            if (rest.empty())
                return row.first;
            continue;
        }
        if (rest.size() < 2 || rest.front() != '_')
            continue;
        rest.remove_prefix(1);
        std::int32_t step = 0;
        const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), step);
        if (error == std::errc{} && end == rest.data() + rest.size() && step >= 0 && step < row.count)
            return row.first + step;
    }
    if (meaning == action)
        for (const ActionName& each : action_names())
            if (each.name == name)
                return each.code;
    return std::nullopt;
}

std::optional<std::string> name_of_number(Meaning meaning, std::int32_t number) {
    for (const NameRow& row : rows) {
        if (row.meaning != meaning || number < row.first || std::int64_t{number} - row.first >= row.count)
            continue;
        std::string name(row.name);
        return row.count == 1 ? name : name + "_" + std::to_string(number - row.first);
    }
    if (meaning == action)
        for (const ActionName& each : action_names())
            if (each.code == number)
                return each.name;
    return std::nullopt;
}

} // namespace vcc::kit
