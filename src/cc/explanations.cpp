// The paragraphs of the explanation box. They are the program's own and English in every language.
#include "cc/option_rows.h"

#include <algorithm>

namespace vcc {

namespace {

struct Explanation {
    int row;
    std::array<std::string_view, explanation_lines> lines;
};

constexpr Explanation explanations[] = {
    {row::effects,
     {"The volume of the SFX sounds", "for the currently chosen", "module may be changed by",
      "clicking either on the \"SFX", "Volume\" button or directly", "on the preferred volume",
      "level in the window to the", "far right. To change the", "current module click on",
      "another module in the window", "to the far left. All changes", "here apply to that module."}},
    {row::music,
     {"The volume of the music for", "the currently chosen module", "may be changed by clicking",
      "either on the \"Music", "Volume\" button or directly", "on the preferred volume", "level in the window to the",
      "far right. To change the", "current module click on", "another module in the window",
      "to the far left. All changes", "here apply to that module."}},
    {row::theme,
     {"The background music theme", "for the currently chosen", "module may be changed by", "clicking either on the",
      "\"Theme Style\" button or", "directly on the preferred", "music theme in the window to",
      "the far right. To change the", "current module click on", "another module in the window",
      "to the far left. All changes", "here apply to that module."}},
    {row::screen_mode,
     {"This option sets the", "screenmode for the HQ,", "the Factory, the Battle", "Module and the CC itself.",
      "The change will take effect", "with the next start of one", "of the modules."}},
    {row::resolution, {"RESOLUTION changes are", "not possible in this", "Version of Veldor!"}},
    {row::depth,
     {"This option changes the", "Bitmap depth for the HQ,", "the Factory, the Battle", "Module and the CC itself.",
      "The change will take effect", "with the next start of one", "of the modules. If you have",
      "problems after modification", "of this option try \"Reset", "Options\" or edit entry",
      "\"bitmap_depth\" in file", "\"\\data\\configs\\vcc.cfg\"."}},
    {row::animations,
     {"This option toggles between", "having Brontar animations in", "the Battle Module or not.",
      "Switching off the Brontar", "animations increaases", "the game speed."}},
    {row::sprite_speed,
     {"This option switches between", "different speeds of sprite", "animations. Decreasing the",
      "sprite speed will slow down", "gameplay but enhance the", "visual effects of cannon", "shots, laser shots,",
      "missiles and others."}},
    {row::message_delay,
     {"This option sets the time", "that passes before a game", "message disappears. Increase",
      "this time if you are having", "difficulties to fully read", "all messages. You will",
      "probably find it helpful to", "increase the Message delay", "in the beginning and", "decrease it later when",
      "having much more game", "experience."}},
    {row::message_detail,
     {"This option determines how", "many game messages are to be", "displayed during a combat.",
      "Increase the message detail", "to get more messages and", "information on every hit",
      "with a weapon, decrease it", "to speed up gameplay and get", "only vital information on",
      "hits and other events."}},
    {row::keyboard,
     {"Use this option to switch", "between keyboards if y and z", "are inverted. This will",
      "apply to the HQ, the Factory,", "the Battle Module and the", "CC itself."}},
    {row::loop_theme,
     {"Use this option to switch", "between looping only the", "currently chosen music theme", "or looping through all",
      "music themes."}},
};

constexpr std::array<std::string_view, explanation_lines> no_lines{};

const Explanation* find(int row) {
    const auto found = std::ranges::find(explanations, row, &Explanation::row);
    return found == std::end(explanations) ? nullptr : found;
}

} // namespace

bool has_explanation(int row) {
    return find(row) != nullptr;
}

std::span<const std::string_view, explanation_lines> explanation_of(int row) {
    const Explanation* explanation = find(row);
    return explanation ? explanation->lines : no_lines;
}

} // namespace vcc
