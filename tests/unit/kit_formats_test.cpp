// The examples of docs/formats.md, given to the readers that they are written for.
#include "folder_test.h"
#include "vcckit/check/installation.h"
#include "vcckit/source/screen_source.h"

#include "core/text.h"
#include "interaction/help_file.h"
#include "platform/latin1.h"
#include "screen/text_window.h"
#include "text/language.h"

namespace vcc::kit {
namespace {

/// The first example of a kind; texts stand in UTF-8 in the document, in Latin-1 in the files.
std::string example(const std::string& kind) {
    std::ifstream in(VELDOR_SOURCE_DIR "/docs/formats.md", std::ios::binary);
    const std::string document{std::istreambuf_iterator<char>(in), {}};
    const std::size_t text = document.find("\n```" + kind + "\n") + kind.size() + 5;
    return platform::latin1_from_utf8(document.substr(text, document.find("```", text) - text));
}

using FormatExample = test::FolderTest;

TEST_F(FormatExample, TextWindow) {
    std::array<TextWindow, text_window_count> windows;
    EXPECT_EQ(read_text_windows(example("tw"), windows), 1);
    EXPECT_EQ(windows[1].right - windows[1].left, 200);
}

TEST_F(FormatExample, ListsMessagesAndSettings) {
    for (const auto& [file, kind] :
         {std::pair("tools/vcc.buf", "buf"), {"tools/vcc.snd", "snd"}, {"data/configs/vcc.cfg", "cfg"}})
        folder.write(file, example(kind));
    folder.write("a.eng", example("messages"));
    Installation read;
    Faults faults;
    read_settings(read, faults);
    EXPECT_TRUE(faults.empty());
    read_buffers(read, faults);
    EXPECT_TRUE(read.buffers.contains(0) && read.buffers.contains(3));
    read_sounds(read, faults);
    EXPECT_EQ(read.sounds, (std::set{1, 190}));
    EXPECT_EQ(load_messages("a.eng"), 2);
    EXPECT_EQ(message(1), "Headquarters");
}

TEST_F(FormatExample, Help) {
    const std::string text = example("hlp");
    const auto entry = read_help_entry(text, 1);
    ASSERT_TRUE(entry && entry->complete);
    EXPECT_EQ(read_help_page(text, entry->pages.at(1)), std::vector<std::string>{"Second page"});
}

TEST_F(FormatExample, ScreenSource) {
    const ScreenSource source = read_screen_source(example("toml"));
    EXPECT_TRUE(source.faults.empty());
    const auto& [slots, toggles, has_toggle_file] = source.screen.records[1];
    EXPECT_EQ(text_of(slots.at(7).text), "Leise");
    EXPECT_EQ(slots.at(9).dest_y, 252);
    EXPECT_EQ(slots.at(9).activated, 24);
    EXPECT_EQ(text_of(toggles.at(30).text), "Fabrik");
}

} // namespace
} // namespace vcc::kit
