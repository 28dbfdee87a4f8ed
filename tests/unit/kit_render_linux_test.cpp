// Pictures drawn one after the other in one process.
#include "game_folder.h"
#include "vcckit/check/installation.h"
#include "vcckit/draw/render.h"

#include "cc/options_screen.h"
#include "display/buffers.h"
#include "interaction/player_input.h"
#include "screen/text_window.h"
#include "sound/sound.h"
#include "text/fonts.h"

#include <algorithm>
#include <random>

#include <sys/wait.h>

namespace vcc::kit {
namespace {

/// What a screen that ends in the middle of its work could leave behind.
void leave_traces() {
    drawing.text_on_box = drawing.full_redraw = player_input.pointer_by_keyboard = player_input.insert_mode = 1;
    options_screen.info_row = options_screen.option_row = Row::keyboard;
    options_screen.selected_module = Module::battle;
    music_on = sound_on = 0;
    player_input.reported_buttons = player_input.wheel = 9;
    for (TextWindow& window : text_windows)
        window.shadow = 9;
    for (const int drawn_on : {screen_buffer, window_copy_buffer, help_save_buffer, info_copy_buffer, text_copy_buffer})
        if (BITMAP* const buffer = graphic_buffer(drawn_on))
            clear_to_color(buffer, 0x123456);
}

/// The bytes of the picture, or why there is none.
std::string drawn(Renderer& renderer, const RenderRequest& request) {
    const auto picture = renderer.draw(request);
    if (!picture)
        return picture.reason();
    const BITMAP& pixels = **picture;
    return {reinterpret_cast<const char*>(pixels.dat), sizeof(int) * static_cast<std::size_t>(pixels.w * pixels.h)};
}

using Render = test::GameFolder;

TEST_F(Render, NothingOfAPictureShowsInAnother) {
    using enum RenderedScreen;
    const Library library;
    const RenderRequest requests[]{
        {},
        {.language = 1, .hover = 5},
        {.hover = 3, .pressed = 3},
        {.pressed = 13},
        {.screen = options},
        {.screen = options, .language = 1, .row = 2, .module = 1},
        {.screen = options, .row = 5, .hover = 58},
        {.screen = options, .row = 8, .hover = 83},
        {.screen = options, .module = 2, .pressed = 22},
        {.screen = options, .hover = 13},
        {.screen = options, .module = 3, .hover = 12},
        {.screen = help, .language = 1, .hover = 5},
        {.screen = help, .hover = 7},
        {.screen = message},
        {.hover = 190}, // there is no such slot
    };
    std::vector<std::pair<RenderRequest, std::string>> afresh;
    for (const RenderRequest& request : requests) { // in a process of its own
        const pid_t child = ::fork();
        if (child == 0) {
            Renderer renderer;
            folder.write("picture", drawn(renderer, request));
            std::_Exit(0);
        }
        ::waitpid(child, nullptr, 0);
        afresh.emplace_back(request, folder.read("picture"));
    }
    for (const auto& [request, picture] : afresh)
        ASSERT_EQ(std::ranges::count(afresh, picture, &decltype(afresh)::value_type::second), 1) << "two are alike";

    std::ranges::shuffle(afresh, std::mt19937(15));
    Renderer renderer;
    for (const auto& [request, picture] : afresh) {
        EXPECT_TRUE(drawn(renderer, request) == picture) << "hover " << request.hover.value_or(-1);
        leave_traces();
    }
}

} // namespace
} // namespace vcc::kit
