// Checking an installation: the sources of the built-in one are clean, and every kind of fault is found where it is.
#include "check.h"
#include "names.h"
#include "pictures.h"
#include "slot_bytes.h"
#include "themes.h"

#include "cc/actions.h"
#include "core/text.h"
#include "support/allegro_none.h"
#include "support/avi_file.h"
#include "support/wav_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <regex>

namespace vcc::kit {
namespace {

namespace fs = std::filesystem;

const fs::path source_folder = VELDOR_SOURCE_DIR;

std::string bytes_of_file(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// A sine of 100 Hz at 8000 Hz, so that whole tenths of a second run into themselves.
std::string tone(int samples) {
    std::string audio;
    for (int i = 0; i < samples; ++i)
        audio += static_cast<char>(128 + static_cast<int>(60 * std::sin(i * 2 * 3.14159265 / 80)));
    return test::WavFile().fmt(8, 1, 8000).data(audio);
}

/// The built-in installation as far as it matters to the checks: its own screens, windows, lists and pictures; short
/// sounds, films and help pages.
class Scratch {
public:
    Scratch() {
        for (const char* screen : {"vcc", "vcc_options", "vcc_options_info", "mess"})
            pack(screen);
        for (const char* windows : {"tools/language/english/e_factory.tw", "tools/language/german/g_factory.tw"})
            copy("game/screens/factory.tw", windows);
        copy("game/sound/vcc.snd", "tools/vcc.snd");
        for (const char* file : {"data/configs/vcc.cfg", "tools/vcc.buf", "tools/language.ini",
                                 "tools/language/english/txt/messages.eng", "tools/language/german/txt/messages.ger"})
            copy(std::string("game/install/") + file, file);
        for (const auto& picture : fs::directory_iterator(source_folder / "game/images"))
            if (picture.path().extension() == ".pcx")
                copy("game/images/" + picture.path().filename().string(),
                     "images/" + picture.path().filename().string());
        const fs::path fonts = "/usr/share/fonts/truetype/liberation";
        for (const auto& [from, to] : {std::pair{"Sans-Regular", "arial"},
                                       {"Sans-Bold", "arialbd"},
                                       {"Mono-Regular", "cour"},
                                       {"Mono-Bold", "courbd"}})
            folder.write(std::string("fonts/") + to + ".ttf",
                         bytes_of_file(fonts / (std::string("Liberation") + from + ".ttf")));
        const std::string setup = folder.read("tools/vcc.snd");
        const std::regex file_line("\n-([^\n]+)");
        for (std::sregex_iterator name(setup.begin(), setup.end(), file_line), end; name != end; ++name)
            folder.write("sounds/" + (*name)[1].str(), tone(16000));
        for (const char* film : {"images/Zentrik.avi", "images/VELDOR_Intro.avi"})
            folder.write(film, test::AviFile(4, 2, 24).rate(10, 1).length(1).frame(std::string(24, '\x40')).bytes());
        std::string help;
        for (int entry = 1; entry <= 40; ++entry)
            help += "+" + std::to_string(entry) + "\nP1\nF5\nC15\nW33\nS0\nT26\nX17\nY7\n-_Help\n#\n";
        for (const char* file : {"help/menu_en.hlp", "help/menu_de.hlp", "help/options_en.hlp", "help/options_de.hlp"})
            folder.write(file, help);
        for (const std::string name : {"hq", "factory", "battle"})
            folder.write(name + ".so", "\x7F" + std::string("ELF\0", 4) + name + '\0');
        for (const char* file :
             {"docs/veldor_manual.pdf", "data/logfiles/.keep", "data/configs/us.cfg", "data/configs/de.cfg",
              "data/configs/fi.cfg", "data/configs/fr.cfg", "data/configs/it.cfg", "data/configs/uk.cfg"})
            folder.write(file, "");
    }

    Faults check() const {
        const Library library;
        return check_installation({});
    }

    /// Changes one record of a slot or toggle file.
    void change(const std::string& file, std::size_t index, const std::function<void(Slot&)>& how) const {
        const std::string name = "tools/language/english/e_" + file;
        std::string fault;
        std::vector<Slot> records = records_of(folder.read(name), fault);
        how(records.at(index));
        folder.write(name, slot_file_bytes(records));
    }
    void replace(const std::string& file, const std::string& what, const std::string& by) const {
        std::string text = folder.read(file);
        const std::size_t at = text.find(what);
        ASSERT_NE(at, std::string::npos) << what;
        folder.write(file, text.replace(at, what.size(), by));
    }

    test::ScratchFolder folder;

private:
    void copy(const std::string& from, const std::string& to) const {
        folder.write(to, bytes_of_file(source_folder / from));
    }
    void pack(const std::string& name) const {
        const ScreenSource source =
            read_screen_source(bytes_of_file(source_folder / "game/screens" / (name + ".toml")));
        ASSERT_TRUE(source.faults.empty());
        for (std::size_t i = 0; i < languages.size(); ++i) {
            const std::string stem =
                "tools/language/" + std::string(languages[i].folder) + "/" + std::string(languages[i].prefix) + name;
            folder.write(stem + ".slt", slot_file_bytes(source.screen.records[i].slots));
            if (source.screen.records[i].has_toggle_file)
                folder.write(stem + ".tgl", slot_file_bytes(source.screen.records[i].toggles));
        }
    }
};

std::string all_of(const Faults& faults) {
    std::string text;
    for (const Fault& fault : faults)
        text += text_of_fault(fault, false) + "\n";
    return text;
}

TEST(Check, SourcesOfTheBuiltInInstallationAreClean) {
    EXPECT_EQ(all_of(Scratch().check()), "");
}

TEST(Check, EveryFaultIsFoundInItsPlace) {
    const std::string options = "vcc_options.slt", menu = "vcc.slt";
    const std::string en = "tools/language/english/e_", de = "tools/language/german/g_";
    const auto set = [&](std::string file, std::size_t index, std::int32_t Slot::*field, int value) {
        return [=](const Scratch& at) { at.change(file, index, [=](Slot& slot) { slot.*field = value; }); };
    };
    const auto replace = [](std::string file, std::string what, std::string by) {
        return [=](const Scratch& at) { at.replace(file, what, by); };
    };
    const auto cut = [](std::string file, std::size_t size) {
        return [=](const Scratch& at) { at.folder.write(file, at.folder.read(file).substr(0, size)); };
    };
    const auto remove = [](std::string file) {
        return [=](const Scratch& at) { fs::remove(at.folder.path() / file); };
    };
    struct Case {
        std::function<void(const Scratch&)> breakage;
        std::string told; ///< a line that tells it matches this
    };
    // The faults of a group are made in one installation; none hides another.
    const std::vector<Case> groups[] = {
        {
            {set(options, 1, &Slot::font, 11), en + "vcc_options.slt: slot 1: font: there is no font 11"},
            {set(options, 1, &Slot::fore_colour, 256), en + "vcc_options.slt: slot 1: fore_colour: "},
            {set(options, 3, &Slot::dest_y, 0), en + "vcc_options.slt: slot 3: dest_y: is 0"},
            {set(options, 22, &Slot::action, 8),
             en + "vcc_options.slt: slot 22: action: the option button has action 8"},
            {set(options, 28, &Slot::action, 23),
             en + "vcc_options.slt: slot 28: action: the value button has no value"},
            {set(options, 45, &Slot::box_width, 60), en + "vcc_options.slt: slot 45: size: 15 characters are wider"},
            {set(options, 59, &Slot::action, 4),
             en + "vcc_options.slt: slot 59: action: the record stands for value 4"},
            {set(options, 61, &Slot::row, 20), en + "vcc_options.slt: slot 61: the value record does not lie under"},
            {[&](const Scratch& at) { at.change(options, 63, [](Slot& slot) { slot.draw_flags[2] = ' '; }); },
             en + "vcc_options.slt: slot 63: draw_flags: the keyboard can reach"},
            {[&](const Scratch& at) { at.change(options, 86, [](Slot& slot) { slot = {}; }); },
             en + "vcc_options.slt: slot 86: the theme loop button is missing"},
            {set(options, 44, &Slot::box_width, 20), en + "vcc_options.slt: slot 44: text: \"Name\" is "},
            {set("vcc_options.tgl", 22, &Slot::sound, 12), en + "vcc_options.tgl: toggle 22: sound: "},
            {set(menu, 3, &Slot::dest_x, 700), en + "vcc.slt: slot 3: reaches outside the screen"},
            {set(menu, 5, &Slot::dest_y, 330), en + "vcc.slt: slot 5: overlaps slot 13"},
            {set(menu, 3, &Slot::action, 77), en + "vcc.slt: slot 3: action: there is no action 77"},
            {set(menu, 3, &Slot::help_number, 41),
             en + "vcc.slt: slot 3: help_number: help/menu_en.hlp has no entry 41"},
            {set(menu, 3, &Slot::sound_act, 9), en + "vcc.slt: slot 3: sound_act: there is no sound 9"},
            {set(menu, 3, &Slot::buffer, 9), en + "vcc.slt: slot 3: buffer: no picture"},
            {set(menu, 3, &Slot::activated, 199), en + "vcc.slt: slot 3: activated: "},
            {set(menu, 1, &Slot::graphic, 9), en + "vcc.slt: slot 1: graphic: there is no text window 9"},
            {set(menu, 7, &Slot::src_x, 5000), en + "vcc.slt: slot 7: src_x, box_width: "},
            {set(menu, 15, &Slot::input_mode, 1), de + "vcc.slt: slot 15: input_mode: is 0"},
            {replace(de + "factory.tw", "+22", "+31"), de + R"(factory.tw:\d+: \+: there is no window 31)"},
            {replace(en + "factory.tw", "xu256", "xu20"), en + R"(factory.tw: \+1: xo)"},
            {replace("data/configs/vcc.cfg", "vcc_theme = 2", "vcc_theme = 12"),
             R"(data/configs/vcc.cfg:\d+: vcc_theme: "12" is outside 0 to 10)"},
            {replace("data/configs/vcc.cfg", "frame_rest =", "frame_rests ="),
             R"(data/configs/vcc.cfg:\d+: frame_rests: no such key)"},
            {replace("help/menu_en.hlp", "+2\nP1", "+2\nP2\nQ99"), R"(help/menu_en.hlp:\d+: \+2: page 99 is missing)"},
            {replace("tools/language.ini", "1", "3"), "tools/language.ini:1: names no language"},
            {replace("tools/vcc.buf", "+6", "+23"), R"(tools/vcc.buf:\d+: buffer 23 is one that the program makes)"},
            {replace("sounds/theme04.wav", std::string("\x10\0\0\0\1", 5), std::string("\x10\0\0\0\3", 5)),
             R"(tools/vcc.snd:\d+: sounds/theme04.wav is not PCM)"},
            {[&](const Scratch& at) { at.folder.write("sounds/theme05.wav", tone(16020)); },
             R"(tools/vcc.snd:\d+: sounds/theme05.wav clicks)"},
            {replace("tools/vcc.snd", "+199", "+198"), R"(tools/vcc.snd:\d+: theme out of order)"},
            {replace("tools/vcc.snd", "+181", "+183"), R"(tools/vcc.snd: \+181: is missing)"},
            {cut("sounds/theme06.wav", 12044), R"(tools/vcc.snd:\d+: sounds/theme06.wav ends before its sound)"},
            {replace(en + "factory.tw", "o4", "o44"), en + R"(factory.tw: \+\d+: o: there is no sound 44)"},
            {replace(en + "factory.tw", "s4", "s4000"), en + R"(factory.tw:\d+: s: 4000 .*0 to 100 pixels)"},
            {replace("help/menu_de.hlp", "X17", "X-1"), R"(help/menu_de.hlp:\d+: \+1: its text begins outside)"},
            {replace("data/configs/vcc.cfg", "hq_theme = 4", "hq_theme = 9"),
             "data/configs/vcc.cfg: hq_theme: there is no theme 9"},
            {replace("help/options_en.hlp", "W33", "W333"),
             R"(help/options_en.hlp:\d+: \+1: there is no window colour)"},
            {[](const Scratch& at) { at.change("mess.slt", 20, [](Slot& slot) { slot.name[31] = 'x'; }); },
             en + "mess.slt: slot 20: name: has no zero byte"},
            {[&](const Scratch& at) { at.folder.write(de + "vcc.slt", at.folder.read(de + "vcc.slt") + "x"); },
             de + "vcc.slt: has 1 bytes behind its last record"},
            {[](const Scratch& at) {
                 at.folder.write("data/configs/vcc.cfg", "a = 1\n" + at.folder.read("data/configs/vcc.cfg"));
             },
             "data/configs/vcc.cfg:1: a: stands before the first section"},
        },
        {
            {remove("images/morv3.pcx"), "images/morv3.pcx: cannot be read"},
            {cut("images/morv2.pcx", 20000), "images/morv2.pcx: ends in the middle of the picture"},
            {remove("images/widgets.pcx"), R"(tools/vcc.buf:\d+: images/widgets.pcx cannot be read)"},
            {remove("fonts/courbd.ttf"), "fonts/courbd.ttf: font6_name: does not exist"},
            {cut(en + "vcc.slt", 1000), en + "vcc.slt: "},
            {cut(en + "vcc_options.slt", 0), en + "vcc_options.slt: is empty"},
            {remove(de + "vcc_options.tgl"), de + "vcc_options.tgl: does not exist"},
            {remove("sounds/theme04.wav"), R"(tools/vcc.snd:\d+: sounds/theme04.wav does not exist)"},
            {replace("hq.so", "hq", "HQ"), "hq.so: hq: has no such entry"},
            {cut("battle.so", 3), "battle.so: is not a library"},
            {cut("images/Zentrik.avi", 240), "images/Zentrik.avi: ends before its film"},
            {[](const Scratch& at) { at.folder.write("data/configs/fr.cfg", "[key_ascii]\nkey1 = a\n"); },
             R"(data/configs/fr.cfg:2: key1: "a" is not a number)"},
            {replace("data/configs/vcc.cfg", "[VELDOR_BATTLE]", "[VELDOR_BATLE]"),
             R"(data/configs/vcc.cfg:\d+: there is no section \[VELDOR_BATLE\])"},
            {remove("data/configs/de.cfg"), "data/configs/de.cfg: does not exist"},
            {remove("images/VELDOR_Intro.avi"), "images/VELDOR_Intro.avi: does not exist"},
            {[](const Scratch& at) { at.folder.write("tools/vcc.buf", at.folder.read("tools/vcc.buf") + "\n+25\n"); },
             R"(tools/vcc.buf:\d+: there is no graphic buffer 25)"},
        },
        {
            {replace("tools/vcc.buf", "+6", "*99\n+6"), R"(tools/vcc.buf:\d+: there is no graphic buffer 99)"},
        },
    };
    for (const std::vector<Case>& group : groups) {
        const Scratch installation;
        for (const Case& each : group)
            each.breakage(installation);
        const std::string found = all_of(installation.check());
        for (const Case& each : group)
            EXPECT_TRUE(std::regex_search(found, std::regex("(^|\n)" + each.told))) << "missing: " << each.told;
        if (HasFailure())
            std::cout << found;
    }
}

TEST(Check, FaultsAreToldToMachinesAsJson) {
    const Faults faults{{"a\"b.slt", 0, 3, "text", "M\xfchle", "back\\slash", true},
                        {"x.tw", 7, -1, "", "p", "a", false}};
    EXPECT_EQ(json_of_faults(faults, "dir"),
              "{\"installation\": \"dir\", \"faults\": [\n"
              "  {\"file\": \"a\\\"b.slt\", \"record\": 3, \"field\": \"text\", \"problem\": \"Mühle\", \"advice\": "
              "\"back\\\\slash\", \"fatal\": true},\n"
              "  {\"file\": \"x.tw\", \"line\": 7, \"problem\": \"p\", \"advice\": \"a\", \"fatal\": false}\n]}\n");
}

TEST(Names, ActionsAreThoseOfTheProgram) {
    for (int code = 1; code < 1100; ++code)
        EXPECT_EQ(name_of_number(Meaning::action, code).has_value(), find_action(code) != nullptr) << code;
}

} // namespace
} // namespace vcc::kit
