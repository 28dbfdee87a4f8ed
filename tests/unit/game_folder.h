// A whole installation for tests of the tool.
#pragma once

#include "folder_test.h"
#include "vcckit/record/slot_bytes.h"
#include "vcckit/source/screen_source.h"

#include "core/files.h"
#include "platform/shared_library.h"
#include "support/wav_file.h"

#include <filesystem>
#include <string>
#include <utility>

namespace vcc::test {

inline constexpr const char *english_stem = "tools/language/english/e_", *german_stem = "tools/language/german/g_";

/// The built-in installation as far as it matters to the tool, as the working folder: its own screens, windows, lists,
/// pictures and films; short sounds and help pages.
class GameFolder : public FolderTest {
protected:
    GameFolder() {
        allegro_exit(); // started again over settings that have no file, as other tests leave them, it would crash
        namespace fs = std::filesystem;
        const fs::path game = VELDOR_SOURCE_DIR "/game", liberation = "/usr/share/fonts/truetype/liberation";
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(game / "install"))
            if (const fs::path& file = entry.path(); entry.is_regular_file())
                folder.write(file.lexically_relative(game / "install").string(), *read_file(file.string()));
        fs::create_directory("images");
        for (const auto& file : fs::directory_iterator(game / "images"))
            if (!file.path().stem().string().starts_with("icon"))
                fs::copy(file, "images" / file.path().filename());
        for (const char* const language : {english_stem, german_stem})
            fs::copy_file(game / "screens/factory.tw", std::string(language) + "factory.tw");
        for (const std::string screen : {"vcc", "vcc_options", "vcc_options_info", "mess"}) {
            const auto source = read_file((game / "screens" / (screen + ".toml")).string());
            const kit::Screen packed = kit::read_screen_source(*source).screen;
            for (const auto& [stem, language] : {std::pair(english_stem, 0u), {german_stem, 1u}}) {
                folder.write(stem + screen + ".slt", kit::slot_file_bytes(packed.records[language].slots));
                folder.write(stem + screen + ".tgl", kit::slot_file_bytes(packed.records[language].toggles));
            }
        }
        fs::create_directory("fonts");
        for (const char* font : {"fonts/arial.ttf", "fonts/arialbd.ttf"})
            fs::copy_file(liberation / "LiberationSans-Regular.ttf", font);
        for (const char* font : {"fonts/cour.ttf", "fonts/courbd.ttf"})
            fs::copy_file(liberation / "LiberationMono-Regular.ttf", font);
        fs::copy_file(game / "sound/vcc.snd", "tools/vcc.snd");
        std::ifstream setup("tools/vcc.snd");
        for (std::string line; std::getline(setup, line);)
            if (line.starts_with('-'))
                folder.write("sounds/" + line.substr(1), WavFile().fmt(8, 1, 8000).data(std::string(16000, '@')));
        std::string help;
        for (int entry = 1; entry <= 40; ++entry)
            help += "+" + std::to_string(entry) + "\nP1\nF5\nC15\nW33\nS0\nT26\nX17\nY7\n-_Help\n#\n";
        for (const char* file : {"menu_en", "menu_de", "options_en", "options_de"})
            folder.write(std::string("help/") + file + ".hlp", help);
        for (const char* keyboard : {"us", "de", "fi", "fr", "it", "uk"})
            folder.write(std::string("data/configs/") + keyboard + ".cfg", "");
        for (const std::string module : {"hq", "factory", "battle"})
            folder.write(platform::module_file_name(module),
                         std::string(platform::module_file_magic()) + '\0' + module + '\0' + module + ".pcx");
        folder.write("docs/veldor_manual.pdf", "");
    }
};

} // namespace vcc::test
