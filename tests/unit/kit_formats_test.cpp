// The examples of docs/formats.md, given to the readers that they are written for.
#include "screen_source.h"

#include "core/text.h"
#include "display/buffers.h"
#include "interaction/help.h"
#include "platform/latin1.h"
#include "screen/buffer_list.h"
#include "screen/text_window.h"
#include "settings/rows.h"
#include "sound/sound.h"
#include "support/allegro_none.h"
#include "support/wav_file.h"
#include "text/language.h"

#include <gtest/gtest.h>

namespace vcc {
namespace {

/// The first example of a kind; texts stand in UTF-8 in the document, in Latin-1 in the files.
std::string example(const std::string& kind) {
    std::ifstream in(VELDOR_SOURCE_DIR "/docs/formats.md", std::ios::binary);
    const std::string document{std::istreambuf_iterator<char>(in), {}};
    const std::string opening = "\n```" + kind + "\n";
    const std::size_t begin = document.find(opening);
    if (begin == std::string::npos)
        return {};
    const std::size_t text = begin + opening.size();
    return platform::latin1_from_utf8(document.substr(text, document.find("```", text) - text));
}

class FormatExample : public testing::Test {
protected:
    FormatExample() { test::start_library(); }
    test::ScratchFolder folder;
};

TEST_F(FormatExample, TextWindow) {
    std::array<TextWindow, text_window_count> windows;
    EXPECT_EQ(read_text_windows(example("tw"), windows, nullptr), 1);
    EXPECT_EQ(windows[1].right - windows[1].left, 200);
    EXPECT_EQ(windows[1].bottom - windows[1].top, 120);
    EXPECT_EQ(windows[1].shadow, 4);
    EXPECT_GT(windows[1].style, 0);
}

TEST_F(FormatExample, BufferList) {
    const BitmapPtr picture(create_bitmap(8, 8));
    clear_bitmap(picture.get());
    std::filesystem::create_directory("images");
    for (const char* name : {"images/menu.pcx", "images/options.pcx"})
        ASSERT_EQ(save_pcx(name, picture.get(), nullptr), 0);
    folder.write("a.buf", example("buf"));
    EXPECT_EQ(load_graphic_buffers("a.buf"), 2);
    EXPECT_TRUE(graphic_buffer(0) && graphic_buffer(3));
    release_graphic_buffers();
}

TEST_F(FormatExample, SoundSetup) {
    for (const char* name : {"sounds/hover.wav", "sounds/theme00.wav"})
        folder.write(name, test::WavFile().fmt(8, 1).data("abcd"));
    folder.write("a.snd", example("snd"));
    install_sound(DIGI_NONE, MIDI_NONE, nullptr);
    EXPECT_EQ(read_sound_setup("a.snd"), 2);
    EXPECT_EQ(music_on, 1);
    EXPECT_EQ(sound_entries[first_theme_entry].name, "Command Deck");
    EXPECT_TRUE(sound_entries[1].sample);
    for (SoundEntry& entry : sound_entries)
        entry = {};
    remove_sound();
}

TEST_F(FormatExample, Messages) {
    folder.write("a.eng", example("messages"));
    EXPECT_EQ(load_messages("a.eng"), 2);
    EXPECT_EQ(message(1), "Headquarters");
}

TEST_F(FormatExample, Help) {
    const std::string text = example("hlp");
    const auto entry = read_help_entry(text, 1, help_line_length);
    ASSERT_TRUE(entry);
    EXPECT_TRUE(entry->complete);
    EXPECT_EQ(entry->pages, (std::vector{1, 101}));
    EXPECT_EQ(entry->row, 7);
    EXPECT_EQ(entry->lines, std::vector<std::string>{"First page"});
    EXPECT_EQ(read_help_page(text, 101, help_line_length), std::vector<std::string>{"Second page"});
}

TEST_F(FormatExample, Settings) {
    const std::string text = example("cfg");
    set_config_data(text.c_str(), static_cast<int>(text.size()));
    EXPECT_EQ(get_config_int("VELDOR_SOUND", "vcc_theme_loop", 9), 0);
    for (const auto& [section, key] : {std::pair{"VELDOR_SOUND", "vcc_theme"}, {"VELDOR_GRAPHICS", "bitmap_depth"}})
        EXPECT_TRUE(find_setting_row(section, key)) << key;
}

TEST_F(FormatExample, ScreenSource) {
    const kit::ScreenSource source = kit::read_screen_source(example("toml"));
    EXPECT_TRUE(source.faults.empty());
    const kit::ScreenRecords& german = source.screen.records[1];
    EXPECT_EQ(text_of(german.slots.at(3).text), "Fabrik");
    EXPECT_EQ(text_of(german.slots.at(7).text), "Leise");
    EXPECT_EQ(german.slots.at(9).activated, 24);
    EXPECT_EQ(german.toggles.at(30).back_colour, 56);
}

} // namespace
} // namespace vcc
