// Checking an installation: the sources of the built-in one are clean, and every kind of fault is found where it is.
#include "game_folder.h"
#include "vcckit/check/check.h"
#include "vcckit/check/source_check.h"
#include "vcckit/faults/report.h"
#include "vcckit/record/fields.h"
#include "vcckit/record/slot_bytes.h"

#include "core/files.h"
#include "core/text.h"
#include "platform/shared_library.h"
#include "support/wav_file.h"

#include <algorithm>
#include <regex>

#include <nlohmann/json.hpp>

namespace vcc::kit {
namespace {

namespace fs = std::filesystem;

const std::string en = test::english_stem, de = test::german_stem;
constexpr const char *menu = "vcc.slt", *options = "vcc_options.slt", *settings = "data/configs/vcc.cfg";

/// What damages the installation says what must be told then: a line that begins like an expression.
class Check : public test::GameFolder {
protected:
    /// Changes one record of an English slot or toggle file; `told` follows the record's number.
    void change(const std::string& file, std::size_t index, const char* told, auto how) {
        std::vector<Slot> records = read_slot_file(folder.read(en + file)).value_or({});
        how(records.at(index));
        folder.write(en + file, slot_file_bytes(records));
        const char* const kind = file.ends_with(".tgl") ? ": toggle " : ": slot ";
        told_.push_back(en + file + kind + std::to_string(index) + ": " + told);
    }
    void replace(const std::string& file, const std::string& what, const std::string& by, const std::string& told) {
        std::string text = folder.read(file);
        folder.write(file, text.replace(text.find(what), what.size(), by));
        told_.push_back(told);
    }
    void cut(const std::string& file, std::size_t size, const std::string& told) {
        folder.write(file, folder.read(file).substr(0, size));
        told_.push_back(told);
    }
    void remove(const std::string& file, const std::string& told) {
        fs::remove(file);
        told_.push_back(told);
    }

    /// Each of `told_` is told once, with or without its code; gives what else is told.
    std::string expect_told() const {
        const Library library;
        Installation installation;
        std::vector<std::string> lines;
        for (const Fault& fault : check_installation(installation, {}))
            lines.push_back(text_of_fault(fault, false));
        const std::regex code(" VK\\d{3} ");
        for (const std::string& told : told_) {
            const auto is_told = [&, beginning = std::regex(told)](const std::string& line) {
                constexpr auto at_beginning = std::regex_constants::match_continuous;
                return std::regex_search(line, beginning, at_beginning) ||
                       std::regex_search(std::regex_replace(line, code, " "), beginning, at_beginning);
            };
            EXPECT_EQ(std::erase_if(lines, is_told), 1U) << told << "\n" << testing::PrintToString(lines);
        }
        std::string others;
        for (const std::string& line : lines)
            others += line + "\n";
        return others;
    }

    std::vector<std::string> told_;
};

TEST_F(Check, SourcesOfTheBuiltInInstallationAreClean) {
    fs::rename("images/Zentrik.avi", "images/ZENTRIK.AVI");
    EXPECT_EQ(expect_told(), "");
}

TEST_F(Check, FaultsOfRecordsAreFoundInTheirPlace) {
    const struct {
        const char* file;
        std::size_t index;
        std::int32_t Slot::*field;
        int value;
        const char* told;
    } damages[] = {
        {menu, 1, &Slot::graphic, 9, "graphic: there is no text window 9"},
        {menu, 3, &Slot::dest_x, 700, "extends outside the screen"},
        {menu, 3, &Slot::action, 77, "action: there is no action 77"},
        {menu, 3, &Slot::help_number, 41, "help_number: help/menu_en.hlp has no entry 41"},
        {menu, 3, &Slot::sound_act, 9, "sound_act: there is no sound 9"},
        {menu, 3, &Slot::buffer, 9, "buffer: no picture"},
        {menu, 3, &Slot::activated, 199, "activated: "},
        {menu, 5, &Slot::dest_y, 330, "overlaps slot 13"},
        {menu, 7, &Slot::src_x, 5000, "src_x, box_width: "},
        {options, 3, &Slot::dest_y, 0, "dest_y: is 0"},
        {options, 22, &Slot::action, 8, "action: the option button has action 8"},
        {options, 28, &Slot::action, 23, "action: the value button has no value"},
        {options, 44, &Slot::box_width, 20, "text: \"Name\" is "},
        {options, 45, &Slot::box_width, 60, "size: 15 characters are wider"},
        {options, 59, &Slot::action, 4, "action: the record has value 4"},
        {options, 61, &Slot::row, 20, "the value record is not at the position"},
        {"vcc_options.tgl", 22, &Slot::sound, 12, "sound: "},
    };
    for (const auto& [file, index, field, value, told] : damages)
        change(file, index, told, [field = field, value = value](Slot& slot) { slot.*field = value; });
    change(options, 63, "draw_flags: the value record takes the focus", [](Slot& slot) { slot.draw_flags[2] = ' '; });
    change(options, 86, "the theme loop button is missing", [](Slot& slot) { slot = {}; });
    change("mess.slt", 20, "name: has no terminating zero", [](Slot& slot) { slot.name[31] = 'x'; });
    told_.push_back(de + "vcc.slt: slot 3: action: is 2, in the other language 77");
    expect_told();
}

TEST_F(Check, FaultsOfOtherFilesAreFoundInTheirPlace) {
    replace(de + "factory.tw", "+22", "+31", de + R"(factory.tw:\d+: \+: there is no window 31)");
    replace(en + "factory.tw", "\nxu", "\nxu0\n#", en + R"(factory.tw: \+1: xo)");
    replace(en + "factory.tw", "o4", "o44", en + R"(factory.tw: \+\d+: o: there is no sound 44)");
    replace(en + "factory.tw", "\ns", "\ns4000\n#", en + R"(factory.tw:\d+: s: 4000 .*0 to 100 pixels)");
    replace(settings, "vcc_theme = 2", "vcc_theme = 12", R"(.*vcc.cfg:\d+: vcc_theme: "12" is outside 0 to 10)");
    replace(settings, "frame_rest =", "frame_rests =", R"(.*vcc.cfg:\d+: frame_rests: no such key)");
    replace(settings, "hq_theme = 4", "hq_theme = 9", ".*vcc.cfg: hq_theme: there is no theme 9");
    replace(settings, "[VELDOR_VCC]", "[VELDOR_VC]", R"(.*vcc.cfg:\d+: there is no section \[VELDOR_VC\])");
    replace(settings, "", "a = 1\n", ".*vcc.cfg:1: a: is before the first section");
    replace("help/menu_en.hlp", "+2\nP1", "+2\nP2\nQ99", R"(help/menu_en.hlp:\d+: \+2: page 99 is missing)");
    replace("help/menu_de.hlp", "X17", "X-1", R"(help/menu_de.hlp:\d+: \+1: its text begins outside)");
    replace("help/options_en.hlp", "W33", "W333", R"(help/options_en.hlp:\d+: \+1: there is no window colour)");
    const std::string texts = "tools/language/german/txt/screen_texts.ger", place = R"(.*screen_texts.ger:\d+: )";
    replace(texts, "in der Schlacht\n", "in der Schlacht?\n", place + R"(\+222: ".*" is 7 pixels too wide)");
    replace(texts, "+50\n", "+146\n", place + R"(\+146: there is no such text)");
    replace(texts, "+63\n", "+62\n", place + R"(\+62: is given twice)");
    replace("tools/language/english/txt/messages.eng", "+0\n", "+0\n\xC3\xA9",
            "tools/language/english/txt/messages.eng:\\d+: the file is UTF-8");
    replace("help/menu_de.hlp", "-_Help", "-The manual",
            R"(help/menu_de.hlp:10: \+1: "-The manual" is shown without its first letter)");
    replace("help/options_de.hlp", "C15", "C33",
            R"(help/options_de.hlp:1: \+1: its text has the colour of its window)");
    replace(texts, "LANG\n", std::string(90, 'x') + "\n", place + R"(\+72: has 90 characters)");
    replace("tools/language.ini", "1", "3", "tools/language.ini:1: does not choose a language");
    replace("images/options.pcx", "\x1F\3\x57\2", "\x1F\3\x56\2", // 799, 599
            en + "vcc_options.slt, " + de + "vcc_options.slt: slot 0: buffer: the background in buffer 3 is smaller");
    replace("tools/vcc.buf", "+6", "+23", R"(tools/vcc.buf:\d+: buffer 23 is created by the program)");
    replace("tools/vcc.snd", "+199", "+198", R"(tools/vcc.snd:\d+: theme out of order)");
    replace("tools/vcc.snd", "+181", "+183", R"(tools/vcc.snd: \+181: is missing)");
    replace("sounds/theme04.wav", "\1", "\3", R"(tools/vcc.snd:\d+: sounds/theme04.wav is not PCM)");
    replace("sounds/theme05.wav", "@@", "\xC0@", R"(tools/vcc.snd:\d+: sounds/theme05.wav clicks)");
    expect_told();
}

TEST_F(Check, MissingAndCutFilesAreFound) {
    const std::string hq = platform::module_file_name("hq"), battle = platform::module_file_name("battle");
    remove("images/morv3.pcx", "images/morv3.pcx: does not exist");
    fs::copy("images/widgets.pcx", "images/widget.pcx");
    remove("images/widgets.pcx",
           R"(tools/vcc.buf:\d+: images/widgets.pcx does not exist - did you mean images/widget.pcx\?)");
    folder.write("fonts/cour.ttf", "x");
    told_.emplace_back("fonts/cour.ttf: font2_name, font3_name, font4_name, font5_name, font7_name, font9_name, "
                       "font10_name: is not a font");
    folder.write(de + "factory.tw", "+1\nw1\n-0\n");
    told_.push_back(de + R"(factory.tw: \+19, \+21, \+22, \+23, \+24, \+25: are missing)");
    remove("images/VELDOR_Intro.avi", "images/VELDOR_Intro.avi: does not exist");
    remove("fonts/courbd.ttf", "fonts/courbd.ttf: font6_name, font8_name: does not exist");
    remove("sounds/theme04.wav", R"(tools/vcc.snd:\d+: sounds/theme04.wav does not exist)");
    remove("data/configs/de.cfg", "data/configs/de.cfg: does not exist");
    remove(de + "vcc_options.tgl", de + "vcc_options.tgl: does not exist");
    replace(hq, "hq", "HQ", hq + ": hq: has no such entry");
    replace("data/configs/it.cfg", "", "= 5", "data/configs/it.cfg:1: neither a section nor key = value");
    replace("data/configs/fr.cfg", "", "[key_ascii]\nkey1 = a", R"(data/configs/fr.cfg:2: key1: "a" is not a number)");
    cut(battle, 1, battle + ": is not a library");
    cut("images/Zentrik.avi", 100000, "images/Zentrik.avi: is truncated");
    cut("images/morv2.pcx", 20000, "images/morv2.pcx: is truncated");
    cut("sounds/theme06.wav", 12044, R"(tools/vcc.snd:\d+: sounds/theme06.wav is truncated)");
    cut(en + "vcc.slt", 1000, en + R"(vcc.slt: \d+ records announced, but)");
    cut(en + "vcc_options.slt", 0, en + "vcc_options.slt: is empty");
    replace(de + "vcc.slt", "menu_de", "menu_den", de + "vcc.slt: has 1 bytes after its last record");
    replace("tools/vcc.buf", "+8", "+25", R"(tools/vcc.buf:\d+: there is no graphic buffer 25)");
    expect_told();
}

/// What a source or an installation is told of: every cause once, with its code and its line.
TEST_F(Check, MistakesOfASourceAreToldOnceAtTheirLine) {
    const std::string slot = "[[slot]]\nindex = 3\ndest_x = 9\ndest_y = 9\n"; // four lines
    const std::string box = slot + "box_width = 90\nbox_height = 20\nback_colour = 1\nfont = \"bold_14\"\n"; // eight
    const std::string style = "[style.a]\nfore_colour = \"AMBRE_8\"\n[[slot]]\nindex = 1\nstyle = \"a\"\n"
                              "repeat = { count = 12 }\n";
    const std::tuple<std::string, std::string, std::string> mistakes[] = {
        // ten mistakes of a first evening
        {"menu", "name = \"vcc_option\"\n", "1:8 VK017 vcc_options"},
        {"vcc", style, "2:15 VK004 amber_8"},
        {"vcc", slot + "row = \"420\"", "5:7 VK005 420"},
        {"vcc", slot + "fore_colour = 300", "5:15 VK102 "},
        {"vcc", slot + "font = 11", "5:8 VK101 "},
        {"vcc", slot + "txet = \"a\"", "5:1 VK003 text"},
        {"vcc", slot + "style = \"buton\"\n[style.button]", "5:9 VK009 button"},
        {"vcc", slot + "toggle = 0\naction = 77", "6:10 VK114 "},
        {"vcc", slot + slot, "5:1 VK008 "},
        {"vcc", slot + "text = \"a", "5:10 VK001 "},
        // what passed in silence
        {"vcc", slot + "box_width = 9\ntext = \"Leave\"", "6:8 VK116 "},
        {"vcc", slot + "box_width = 90\nbox_height = 9\nback_colour = 1\ntext = \"Leave\"", "6:14 VK117 "},
        {"vcc", box + "fore_colour = 1\ntext = \"Leave\"", "9:15 VK118 "},
        {"vcc", box + "text = \"a\\n\"", "9:8 VK119 "},
        {"vcc", slot + "text = \"Leave the game\"", "5:8 VK126 "},
        {"vcc", slot + "text = { en = \"Storm Fleet\", de = \"Storm Fleet\" }", ""},
        {"vcc", slot + "toggle = 0\naction = \"manual\"", "6:10 VK127 "},
        {"vcc_options", slot + "toggle = 0\naction = \"options\"", "6:10 VK127 "},
        {"vcc", slot + "toggle = 0", "1:1 VK128 "},
        {"vcc", slot + "display_time = 100", ""},
        {"vcc", slot + "display_time = 101", "5:16 VK113 "},
        // silenced, and not
        {"vcc", slot + "font = 11 # vcckit: ignore VK101", ""},
        {"vcc", "# vcckit: ignore VK101, VK103\n" + slot + "font = 11", ""},
        {"vcc", slot + "# vcckit: ignore VK101\nrow = 1\nfont = 11", "7:8 VK101 "},
        {"vcc", slot + "# vcckit: ignore VK10", "5:18 VK022 VK010"},
        {"vcc", slot + "# vcckit: ignore", "5:1 VK022 "},
    };
    const Library library;
    ASSERT_TRUE(load_measuring_fonts());
    for (const auto& [name, source, told] : mistakes) {
        std::string found;
        for (const Fault& fault : check_source(name + ".toml", source, {false, true, {}}).faults)
            found += std::to_string(fault.line) + ":" + std::to_string(fault.column) + " " + code_text(fault.code) +
                     " " + fault.nearest;
        EXPECT_EQ(found, told) << source;
    }
}

TEST_F(Check, WhatPassedInSilenceIsToldOnce) {
    for (const std::string& language : {en, de}) {
        std::vector<Slot> records = read_slot_file(folder.read(language + menu)).value_or({});
        for (const int preview : {8, 9, 10, 16, 11})
            records.at(static_cast<std::size_t>(preview)) = gap_slot();
        folder.write(language + menu, slot_file_bytes(records));
    }
    told_.push_back(en + menu + ", " + de + menu + ": slots 8 to 11, 16: VK201 the preview shown by the pointer");
    replace("help/menu_en.hlp", "-_Help", "-_" + std::string(66, 'a'),
            R"(help/menu_en.hlp:10: VK426 \+1: the text is 66)");
    replace("help/menu_de.hlp", "-_Help", "-_F\xC3\xBCr", "help/menu_de.hlp:10: VK427 the file is UTF-8");
    replace("help/options_en.hlp", "C15", "Z15", R"(help/options_en.hlp:4: VK428 \+1: "Z15" stands where)");
    std::string fading(16000, '@');
    for (std::size_t i = 0; i < fading.size(); ++i)
        fading[i] = static_cast<char>(128 + (i % 2 == 0 ? 1 : -1) * static_cast<int>(60 * (16000 - i) / 16000));
    folder.write("sounds/theme03.wav", test::WavFile().fmt(8, 1, 8000).data(fading));
    told_.push_back(R"(tools/vcc.snd:\d+: VK336 sounds/theme03.wav fades out at its end)");
    folder.write("tools/language/english/e_menu.slt", "");
    told_.push_back("tools/language/english/e_menu.slt: VK302 nothing reads this file");
    std::string alpha = folder.read("images/morv1.pcx");
    alpha[65] = 4;
    folder.write("images/morv1.pcx", alpha);
    told_.push_back("images/morv1.pcx: VK304 has four planes: save it without alpha");
    folder.write("images/morv2.pcx", "\x89PNG\r\n");
    told_.push_back("images/morv2.pcx: VK304 is a PNG file under the name of a PCX");

    EXPECT_EQ(expect_told(), "");
}

TEST_F(Check, FaultsAreToldAtTheLinesOfSourcesBeside) {
    std::string source = *read_file(VELDOR_SOURCE_DIR "/game/screens/vcc.toml");
    source += "[[slot]]\nindex = 30\ntext = { en = \"Storm Fleet\", de = \"Storm Fleet\" }\n"
              "[[slot]]\nindex = 31\ntext = \"Storm Fleet\"\n";
    const Screen packed = read_screen_source(source).screen;
    for (std::size_t i = 0; i < languages.size(); ++i) {
        folder.write((i == 0 ? en : de) + "vcc.slt", slot_file_bytes(packed.records[i].slots));
        folder.write((i == 0 ? en : de) + "vcc.tgl", slot_file_bytes(packed.records[i].toggles));
    }
    folder.write("screens/vcc.toml", source);
    const auto last = std::to_string(std::ranges::count(source, '\n'));
    told_ = {"screens/vcc.toml:" + last + ":8: slot 31: text: \"Storm Fleet\" is the text of both languages"};
    replace("help/menu_de.hlp", "+1\n", "+99\n",
            R"(screens/vcc.toml:\d+:\d+: slot 3: help_number: help/menu_de.hlp has no entry 1)");
    EXPECT_EQ(expect_told(), "");
}

TEST(Faults, AreToldToMachinesAsJson) {
    const Faults faults{{FaultCode::text_wide, "a\"b.slt", 7, 3, "text", "M\xfchle", "a\\b", true}};
    EXPECT_EQ(nlohmann::ordered_json::parse(json_of_faults(faults, "installation", "dir", {{"s.slt"}})).dump(),
              R"({"installation":"dir","faults":[{"code":"VK116","file":"a\"b.slt","line":7,"record":3,)"
              R"("field":"text","problem":"Mühle","advice":"a\\b","fatal":true}],"written":["s.slt"]})");
}

} // namespace
} // namespace vcc::kit
