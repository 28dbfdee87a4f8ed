#include "text/screen_texts.h"

#include "core/files.h"
#include "core/lines.h"
#include "core/log.h"
#include "core/text.h"
#include "platform/files.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <utility>

namespace vcc {

namespace {

// clang-format off
constexpr ScreenText table[] = {
    // values of the volumes
    {0, "OFF"},
    {1, "Level 1"},
    {2, "Level 2"},
    {3, "Level 3"},
    {4, "Level 4"},
    {5, "Level 5"},
    {6, "Level 6"},
    {7, "Level 7"},
    {8, "Level 8"},
    {9, "Level 9"},
    {10, "Level MAX"},
    // screen mode
    {20, "Windowed"},
    {21, "Fullscreen"},
    // resolution
    {30, "320x200"},
    {31, "640x400"},
    {32, "640x480"},
    {33, "800x600"},
    {34, "1024x768"},
    // bitmap depth
    {40, "32 Bit"},
    {41, "24 Bit"},
    {42, "16 Bit"},
    {43, "15 Bit"},
    // brontar animations
    {50, "OFF"},
    {51, "ON"},
    // sprite speed
    {60, "SLOW"},
    {61, "MEDIUM"},
    {62, "FAST"},
    {63, "MAXIMUM"},
    // message delay
    {70, "SHORT"},
    {71, "MEDIUM"},
    {72, "LONG"},
    {73, "MAXIMUM"},
    // message detail
    {80, "LOW"},
    {81, "MEDIUM"},
    {82, "HIGH"},
    {83, "MAXIMUM"},
    // keyboard
    {90, "US"},
    {91, "German"},
    {92, "Finnish"},
    {93, "France"},
    {94, "Italy"},
    {95, "UK"},
    // themes: the names of the sound set-up
    {100, ""},
    {101, ""},
    {102, ""},
    {103, ""},
    {104, ""},
    {105, ""},
    {106, ""},
    {107, ""},
    {108, ""},
    {109, ""},
    {110, ""},
    // theme loop; %2.2d stands for the number of the theme
    {120, "Loop All Themes"},
    {121, "Loop Theme %2.2d"},
    // help pages
    {122, "N O   H E L P   A V A I L A B L E!"},
    {123, "Error:N O   H E L P   A V A I L A B L E!"},
    // when the manual does not open
    {130, "Error opening the veldor_manual:"},
    {131, "not enough memory!"},
    {132, "veldor_manual not found!"},
    {133, "File is locked by System or another application!"},
    {134, "Please check whether an"},
    {135, "Acrobat Reader is installed/available!"},
    // explanation: effects
    {150, "The volume of the SFX sounds"},
    {151, "for the currently chosen"},
    {152, "module may be changed by"},
    {153, "clicking either on the \"SFX"},
    {154, "Volume\" button or directly"},
    {155, "on the preferred volume"},
    {156, "level in the window to the"},
    {157, "far right. To change the"},
    {158, "current module click on"},
    {159, "another module in the window"},
    {160, "to the far left. All changes"},
    {161, "here apply to that module."},
    // explanation: music
    {162, "The volume of the music for"},
    {163, "the currently chosen module"},
    {164, "may be changed by clicking"},
    {165, "either on the \"Music"},
    {166, "Volume\" button or directly"},
    {167, "on the preferred volume"},
    {168, "level in the window to the"},
    {169, "far right. To change the"},
    {170, "current module click on"},
    {171, "another module in the window"},
    {172, "to the far left. All changes"},
    {173, "here apply to that module."},
    // explanation: theme
    {174, "The background music theme"},
    {175, "for the currently chosen"},
    {176, "module may be changed by"},
    {177, "clicking either on the"},
    {178, "\"Theme Style\" button or"},
    {179, "directly on the preferred"},
    {180, "music theme in the window to"},
    {181, "the far right. To change the"},
    {182, "current module click on"},
    {183, "another module in the window"},
    {184, "to the far left. All changes"},
    {185, "here apply to that module."},
    // explanation: screen mode
    {186, "This option sets the"},
    {187, "screenmode for the HQ,"},
    {188, "the Factory, the Battle"},
    {189, "Module and the CC itself."},
    {190, "The change will take effect"},
    {191, "with the next start of one"},
    {192, "of the modules."},
    {193, ""},
    {194, ""},
    {195, ""},
    {196, ""},
    {197, ""},
    // explanation: resolution
    {198, "RESOLUTION changes are"},
    {199, "not possible in this"},
    {200, "Version of Veldor!"},
    {201, ""},
    {202, ""},
    {203, ""},
    {204, ""},
    {205, ""},
    {206, ""},
    {207, ""},
    {208, ""},
    {209, ""},
    // explanation: depth
    {210, "This option changes the"},
    {211, "Bitmap depth for the HQ,"},
    {212, "the Factory, the Battle"},
    {213, "Module and the CC itself."},
    {214, "The change will take effect"},
    {215, "with the next start of one"},
    {216, "of the modules. If you have"},
    {217, "problems after modification"},
    {218, "of this option try \"Reset"},
    {219, "Options\" or edit entry"},
    {220, "\"bitmap_depth\" in file"},
    {221, "\"\\data\\configs\\vcc.cfg\"."},
    // explanation: animations
    {222, "This option toggles between"},
    {223, "having Brontar animations in"},
    {224, "the Battle Module or not."},
    {225, "Switching off the Brontar"},
    {226, "animations increaases"},
    {227, "the game speed."},
    {228, ""},
    {229, ""},
    {230, ""},
    {231, ""},
    {232, ""},
    {233, ""},
    // explanation: sprite speed
    {234, "This option switches between"},
    {235, "different speeds of sprite"},
    {236, "animations. Decreasing the"},
    {237, "sprite speed will slow down"},
    {238, "gameplay but enhance the"},
    {239, "visual effects of cannon"},
    {240, "shots, laser shots,"},
    {241, "missiles and others."},
    {242, ""},
    {243, ""},
    {244, ""},
    {245, ""},
    // explanation: message delay
    {246, "This option sets the time"},
    {247, "that passes before a game"},
    {248, "message disappears. Increase"},
    {249, "this time if you are having"},
    {250, "difficulties to fully read"},
    {251, "all messages. You will"},
    {252, "probably find it helpful to"},
    {253, "increase the Message delay"},
    {254, "in the beginning and"},
    {255, "decrease it later when"},
    {256, "having much more game"},
    {257, "experience."},
    // explanation: message detail
    {258, "This option determines how"},
    {259, "many game messages are to be"},
    {260, "displayed during a combat."},
    {261, "Increase the message detail"},
    {262, "to get more messages and"},
    {263, "information on every hit"},
    {264, "with a weapon, decrease it"},
    {265, "to speed up gameplay and get"},
    {266, "only vital information on"},
    {267, "hits and other events."},
    {268, ""},
    {269, ""},
    // explanation: keyboard
    {270, "Use this option to switch"},
    {271, "between keyboards if y and z"},
    {272, "are inverted. This will"},
    {273, "apply to the HQ, the Factory,"},
    {274, "the Battle Module and the"},
    {275, "CC itself."},
    {276, ""},
    {277, ""},
    {278, ""},
    {279, ""},
    {280, ""},
    {281, ""},
    // explanation: loop theme
    {282, "Use this option to switch"},
    {283, "between looping only the"},
    {284, "currently chosen music theme"},
    {285, "or looping through all"},
    {286, "music themes."},
    {287, ""},
    {288, ""},
    {289, ""},
    {290, ""},
    {291, ""},
    {292, ""},
    {293, ""},
};
// clang-format on

constexpr std::string_view number_place = "%2.2d";

/// What replaces the text in the same place of the table.
std::array<std::optional<std::string>, std::size(table)> translations;

std::optional<std::size_t> place_of(int number) {
    const auto found = std::ranges::lower_bound(table, number, {}, &ScreenText::number);
    if (found == std::end(table) || found->number != number)
        return std::nullopt;
    return static_cast<std::size_t>(found - std::begin(table));
}

} // namespace

std::span<const ScreenText> screen_text_table() {
    return table;
}

std::vector<Translation> read_translations(std::string_view file) {
    std::vector<Translation> texts;
    LineReader lines(file);
    std::optional<int> number; // none before the first "+"
    bool filled = false;
    while (const std::optional<std::string_view> line = lines.next()) {
        if (line->starts_with('#'))
            continue;
        if (line->starts_with('+')) {
            number = to_number(line->substr(1));
            filled = false;
        } else if (number) {
            if (filled)
                texts.pop_back();
            texts.push_back({lines.line_number(), *number, std::string(*line)});
            filled = true;
        }
    }
    return texts;
}

void load_screen_texts(const std::string& path) {
    translations.fill(std::nullopt);
    const auto file = read_file(path);
    if (!file) {
        if (platform::file_exists(path))
            write_log(format_text("%s %s", path.c_str(), file.reason().c_str()));
        return;
    }
    int unknown = 0, cut = 0;
    for (Translation& translation : read_translations(*file)) {
        const std::optional<std::size_t> place = place_of(translation.number);
        if (!place) {
            ++unknown;
            continue;
        }
        if (translation.text.size() > screen_text_length) {
            translation.text.resize(screen_text_length);
            ++cut;
        }
        translations[*place] = std::move(translation.text);
    }
    if (unknown > 0)
        write_log(format_text("%s: %d numbers name no text of the screens", path.c_str(), unknown));
    if (cut > 0)
        write_log(format_text("%s: %d texts are cut to %d characters", path.c_str(), cut,
                              static_cast<int>(screen_text_length)));
}

std::string_view screen_text(int number) {
    const std::optional<std::size_t> place = place_of(number);
    if (!place)
        return {};
    const std::optional<std::string>& translation = translations[*place];
    return translation ? std::string_view(*translation) : table[*place].fixed;
}

std::string numbered_screen_text(int number, int value) {
    std::string text(screen_text(number));
    if (const std::size_t at = text.find(number_place); at != std::string::npos)
        text.replace(at, number_place.size(), format_text("%2.2d", value));
    return text;
}

} // namespace vcc
