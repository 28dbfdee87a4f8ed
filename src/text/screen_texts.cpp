#include "text/screen_texts.h"

#include "core/files.h"
#include "core/lines.h"
#include "core/log.h"

#include <array>
#include <iterator>
#include <optional>
#include <utility>

namespace vcc {

namespace {

namespace n = screen_text_number;

/// English texts with consecutive numbers. Empty ones are blank lines, or names that another file provides.
struct Group {
    int first, count;
    std::array<std::string_view, 11> texts;
};
constexpr Group groups[] = {
    {0,
     11,
     {"OFF", "Level 1", "Level 2", "Level 3", "Level 4", "Level 5", "Level 6", "Level 7", "Level 8", "Level 9",
      "Level MAX"}},
    {20, 2, {"Windowed", "Fullscreen"}},
    {30, 5, {"320x200", "640x400", "640x480", "800x600", "1024x768"}},
    {40, 4, {"32 Bit", "24 Bit", "16 Bit", "15 Bit"}},
    {50, 2, {"OFF", "ON"}},
    {60, 4, {"SLOW", "MEDIUM", "FAST", "MAXIMUM"}},
    {70, 4, {"SHORT", "MEDIUM", "LONG", "MAXIMUM"}},
    {80, 4, {"LOW", "MEDIUM", "HIGH", "MAXIMUM"}},
    {90, 6, {"US", "German", "Finnish", "France", "Italy", "UK"}},
    {n::themes, 11, {}},                                       // named by the sound set-up
    {n::loop_all, 2, {"Loop All Themes", "Loop Theme %2.2d"}}, // %2.2d: the number of the theme
    {n::no_help, 2, {"N O   H E L P   A V A I L A B L E!", "Error:N O   H E L P   A V A I L A B L E!"}},
    {n::manual_headline,
     6,
     {"Error opening the veldor_manual:", "not enough memory!", "veldor_manual not found!",
      "File is locked by System or another application!", "Please check whether an",
      "Acrobat Reader is installed/available!"}},
    {n::hints, 2 * hint_pairs, {}},
};

constexpr std::string_view explanations[][explanation_lines] = {
    {"The volume of the SFX sounds", "for the currently chosen", "module may be changed by",
     "clicking either on the \"SFX", "Volume\" button or directly", "on the preferred volume",
     "level in the window to the", "far right. To change the", "current module click on",
     "another module in the window", "to the far left. All changes", "here apply to that module."},
    {"The volume of the music for", "the currently chosen module", "may be changed by clicking",
     "either on the \"Music", "Volume\" button or directly", "on the preferred volume", "level in the window to the",
     "far right. To change the", "current module click on", "another module in the window",
     "to the far left. All changes", "here apply to that module."},
    {"The background music theme", "for the currently chosen", "module may be changed by", "clicking either on the",
     "\"Theme Style\" button or", "directly on the preferred", "music theme in the window to",
     "the far right. To change the", "current module click on", "another module in the window",
     "to the far left. All changes", "here apply to that module."},
    {"This option sets the", "screenmode for the HQ,", "the Factory, the Battle", "Module and the CC itself.",
     "The change will take effect", "with the next start of one", "of the modules."},
    {"RESOLUTION changes are", "not possible in this", "Version of Veldor!"},
    {"This option changes the", "Bitmap depth for the HQ,", "the Factory, the Battle", "Module and the CC itself.",
     "The change will take effect", "with the next start of one", "of the modules. If you have",
     "problems after modification", "of this option try \"Reset", "Options\" or edit entry", "\"bitmap_depth\" in file",
     "\"\\data\\configs\\vcc.cfg\"."},
    {"This option toggles between", "having Brontar animations in", "the Battle Module or not.",
     "Switching off the Brontar", "animations increaases", "the game speed."},
    {"This option switches between", "different speeds of sprite", "animations. Decreasing the",
     "sprite speed will slow down", "gameplay but enhance the", "visual effects of cannon", "shots, laser shots,",
     "missiles and others."},
    {"This option sets the time", "that passes before a game", "message disappears. Increase",
     "this time if you are having", "difficulties to fully read", "all messages. You will",
     "probably find it helpful to", "increase the Message delay", "in the beginning and", "decrease it later when",
     "having much more game", "experience."},
    {"This option determines how", "many game messages are to be", "displayed during a combat.",
     "Increase the message detail", "to get more messages and", "information on every hit",
     "with a weapon, decrease it", "to speed up gameplay and get", "only vital information on",
     "hits and other events."},
    {"Use this option to switch", "between keyboards if y and z", "are inverted. This will",
     "apply to the HQ, the Factory,", "the Battle Module and the", "CC itself."},
    {"Use this option to switch", "between looping only the", "currently chosen music theme", "or looping through all",
     "music themes."},
};

constexpr std::string_view number_place = "%2.2d";

std::array<std::optional<std::string>, explanation_number(std::size(explanations))> translations;

std::optional<std::string_view> english_text(int number) {
    constexpr int end = static_cast<int>(translations.size());
    if (const int line = number - n::explanations; line >= 0 && number < end)
        return explanations[line / explanation_lines][line % explanation_lines];
    for (const Group& group : groups)
        if (number >= group.first && number < group.first + group.count)
            return group.texts[static_cast<std::size_t>(number - group.first)];
    return std::nullopt;
}

} // namespace

bool is_screen_text(int number) {
    return english_text(number).has_value();
}

std::vector<Translation> read_translations(std::string_view file) {
    std::vector<Translation> texts;
    NumberedLines lines(file);
    bool filled = false;
    while (const auto line = lines.next()) {
        if (line->kind == NumberedLine::Kind::number)
            filled = false;
        if (line->kind != NumberedLine::Kind::text || !line->number)
            continue;
        if (filled)
            texts.pop_back();
        texts.push_back({lines.line_number(), *line->number, std::string(line->text)});
        filled = true;
    }
    return texts;
}

void load_screen_texts(const std::string& path) {
    translations.fill(std::nullopt);
    const auto file = read_file(path);
    if (!file) {
        if (file.reason() != missing_file)
            write_log(format_text("%s %s", path.c_str(), file.reason().c_str()));
        return;
    }
    int unknown = 0, cut = 0;
    for (Translation& translation : read_translations(*file)) {
        if (!is_screen_text(translation.number)) {
            ++unknown;
            continue;
        }
        if (translation.text.size() > screen_text_length) {
            translation.text.resize(screen_text_length);
            ++cut;
        }
        translations[static_cast<std::size_t>(translation.number)] = std::move(translation.text);
    }
    if (unknown > 0)
        write_log(format_text("%s: %d numbers name no text of the screens", path.c_str(), unknown));
    if (cut > 0)
        write_log(format_text("%s: %d texts are cut to %d characters", path.c_str(), cut,
                              static_cast<int>(screen_text_length)));
}

std::string_view screen_text(int number) {
    const std::optional<std::string_view> english = english_text(number);
    if (!english)
        return {};
    const std::optional<std::string>& translation = translations[static_cast<std::size_t>(number)];
    return translation ? std::string_view(*translation) : *english;
}

std::string numbered_screen_text(int number, int value) {
    std::string text(screen_text(number));
    if (const std::size_t at = text.find(number_place); at != std::string::npos)
        text.replace(at, number_place.size(), format_text("%2.2d", value));
    return text;
}

} // namespace vcc
