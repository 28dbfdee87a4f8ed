#include "vcckit/record/names.h"

#include "cc/actions.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <sstream>

namespace vcc::kit {

namespace {

using enum Meaning;

/// Names of consecutive numbers: a list of them, separated by blanks, or a ramp name_0, name_1 ... of `steps`.
struct NameRow {
    Meaning meaning;
    std::int32_t first;
    std::string_view names;
    std::int32_t steps = 0;
};

constexpr NameRow rows[] = {
    {colour, 0, "black blue green cyan red magenta brown light_grey"},
    {colour, 8, "dark_grey light_blue light_green light_cyan light_red light_magenta yellow white"},
    // ramps from dark to bright
    {colour, 16, "steel", 16},
    {colour, 32, "grey", 16},
    {colour, 48, "red", 16},
    {colour, 64, "green", 16},
    {colour, 80, "blue", 16},
    {colour, 96, "magenta", 16},
    {colour, 112, "cyan", 16},
    {colour, 128, "yellow", 16},
    {colour, 144, "bronze", 16},
    {colour, 160, "amber", 12},
    {colour, 172, "copper", 4},
    // face and height in the built-in installation
    {font, 0, "sans_12 sans_13 mono_11 mono_11_b mono_14 mono_12 bold_14 mono_16 bold_20 mono_20 mono_20_b"},
    {action, 0, "none"}, // the other actions have their names from the program
    {sound, 0, "none"},
    {buffer, 0, "screen"},
    {buffer, 3, "backdrop"},
    {buffer, 22, "help_save"},
    {input, 0, "none digits text"},
    {focus, -1, "inert plain"},
};

struct Name {
    std::string name;
    std::int32_t number;
};

std::vector<Name> made_names(Meaning meaning) {
    std::vector<Name> names;
    for (const NameRow& row : rows) {
        if (row.meaning != meaning)
            continue;
        for (std::int32_t step = 0; step < row.steps; ++step)
            names.push_back({std::string(row.names) + "_" + std::to_string(step), row.first + step});
        std::istringstream list(row.steps == 0 ? std::string(row.names) : "");
        std::int32_t number = row.first;
        for (std::string name; list >> name; ++number)
            names.push_back({name, number});
    }
    if (meaning == action)
        for (const ActionName& each : action_names())
            names.push_back({each.name, each.code});
    return names;
}

struct MeaningRow {
    std::string_view word;
    std::string_view permitted{}; ///< empty: a number, or a name that the source defines
};
constexpr std::array<MeaningRow, all_meanings.size()> meanings{{
    {"number"},
    {"colour", "colours are 0 to 255, black to white, or ramps such as steel_0 to steel_15"},
    {"font", "fonts are 0 to 10, or their names from sans_12 to mono_20_b"},
    {"action", "docs/formats.md lists the actions"},
    {"sound"},
    {"buffer"},
    {"input", "none, digits or text"},
    {"focus", "inert, plain, or the number of the slot"},
}};

/// All names of a meaning, in the order of the rows.
const std::vector<Name>& all_names(Meaning meaning) {
    static const auto names = [] {
        std::array<std::vector<Name>, all_meanings.size()> made;
        std::ranges::transform(all_meanings, made.begin(), made_names);
        return made;
    }();
    return names[static_cast<std::size_t>(meaning)];
}

} // namespace

std::string_view meaning_word(Meaning meaning) {
    return meanings[static_cast<std::size_t>(meaning)].word;
}

std::optional<Meaning> meaning_of_word(std::string_view word) {
    const auto* const found = std::ranges::find(all_meanings, word, meaning_word);
    return found == all_meanings.end() ? std::nullopt : std::optional(*found);
}

std::vector<std::string> names_of(Meaning meaning) {
    std::vector<std::string> names;
    std::ranges::transform(all_names(meaning), std::back_inserter(names), &Name::name);
    return names;
}

std::string permitted_values(Meaning meaning) {
    const MeaningRow& row = meanings[static_cast<std::size_t>(meaning)];
    return row.permitted.empty() ? "it is a number, or a name under [names." + std::string(row.word) + "]"
                                 : std::string(row.permitted);
}

std::optional<std::int32_t> number_of_name(Meaning meaning, std::string_view name) {
    std::string plain(name); // a ramp's step may have zeros before it: steel_07
    if (const std::size_t zeros = plain.rfind("_0"); zeros != std::string::npos)
        plain.erase(zeros + 1, std::min(plain.find_first_not_of('0', zeros + 1), plain.size() - 1) - zeros - 1);
    const auto& names = all_names(meaning);
    const auto found = std::ranges::find(names, plain, &Name::name);
    return found == names.end() ? std::nullopt : std::optional(found->number);
}

std::optional<std::string> name_of_number(Meaning meaning, std::int32_t number) {
    const auto& names = all_names(meaning);
    const auto found = std::ranges::find(names, number, &Name::number);
    return found == names.end() ? std::nullopt : std::optional(found->name);
}

} // namespace vcc::kit
