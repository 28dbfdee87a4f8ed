// vcckit: the tool for people who make or change an installation. This is its command line.
#include "vcckit/commands/commands.h"
#include "vcckit/commands/completion.h"
#include "vcckit/text/nearest.h"

#include "core/version.h"
#include "platform/process.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace {

using namespace vcc::kit;

const std::map<std::string, RenderedScreen> screens{{"menu", RenderedScreen::menu},
                                                    {"options", RenderedScreen::options},
                                                    {"help", RenderedScreen::help},
                                                    {"message", RenderedScreen::message}};

constexpr const char* examples =
    "Examples:\n"
    "  vcckit new lantern\n"
    "  vcckit check veldor\n"
    "  vcckit render veldor --screen menu -o menu.png\n"
    "  vcckit unpack veldor/tools/language/english/e_vcc.slt veldor/tools/language/german/g_vcc.slt -o vcc.toml\n"
    "  vcckit pack vcc.toml -o veldor\n"
    "  vcckit show veldor/images/menu.pcx\n\n"
    "\"vcckit COMMAND --help\" has more of them.\n\n"
    "Exit status: 0 done or clean, 1 mistakes in a source or faults in an installation, 2 a file that cannot be\n"
    "read or written, or an installation with which the program does not reach its menu.";

struct Arguments {
    PackRequest packing;
    CheckRequest checking;
    std::vector<std::string> files, codes;
    std::string output, rendered, picture, shown, screen, language = "en";
    bool markdown = false, fields = false, force = false;
    RenderRequest request;
    std::vector<std::string> converted;
    ConvertRequest conversion;
    NewRequest project;
    PlayRequest play;
    EditorRequest edit;
    ExportRequest exporting;
};

CLI::App& add_command(CLI::App& app, const char* name, const char* purpose, const std::string& lines) {
    CLI::App& command = *app.add_subcommand(name, purpose);
    command.footer("Examples:\n" + lines);
    return command;
}

CLI::App& add_new(CLI::App& app, Arguments& given) {
    NewRequest& request = given.project;
    CLI::App& command =
        add_command(app, "new", "Makes a folder of sources for an installation of your own",
                    "  vcckit new lantern                                screens, a picture, a theme, a Makefile\n"
                    "  vcckit new lantern --module hq                    with the source of a game module");
    command.add_option("NAME", request.name, "folder to create; its name becomes the title")
        ->required()
        ->type_name("NAME");
    command.add_option("--module", request.module, "source of a game module")
        ->type_name("MODULE")
        ->check(CLI::IsMember({"hq", "factory", "battle"}));
    command.add_option("--base", request.base, "installation to build on (default: the built-in one)")
        ->type_name("DIR");
    return command;
}

std::string unknown_word(const std::string& kind, const std::string& word, const std::string& nearest) {
    return "\"" + word + "\" is no " + kind + (nearest.empty() ? "" : "; did you mean " + nearest + "?");
}

void add_ignore(CLI::App& command, std::vector<std::string>& codes) {
    command.add_option("--ignore", codes, "code of a fault to ignore, or several separated by commas")
        ->type_name("CODE")
        ->take_all()
        ->expected(1);
}

CLI::App& add_pack(CLI::App& app, Arguments& given) {
    CLI::App& command = add_command(
        app, "pack", "Makes slot and toggle files from screen sources",
        "  vcckit pack vcc.toml -o veldor                    writes e_vcc.slt, e_vcc.tgl, g_vcc.slt, g_vcc.tgl\n"
        "  vcckit pack screens/*.toml -o veldor");
    PackRequest& request = given.packing;
    command.add_option("SOURCE", request.sources, "screen sources")->required()->type_name("FILE.toml");
    command.add_option("-o,--output", request.installation, "folder of the installation")->required()->type_name("DIR");
    command.add_flag("--any-name", request.any_name, "packs screens that the program does not read, too");
    add_ignore(command, request.ignored);
    command.add_flag("--json", request.json, "prints one JSON object");
    command.add_flag("--watch", request.watch, "packs again after every change of a source");
    command.add_flag("-q,--quiet", request.quiet, "does not list the files written");
    return command;
}

CLI::App& add_unpack(CLI::App& app, Arguments& given) {
    CLI::App& command =
        add_command(app, "unpack", "Writes a screen source from slot files",
                    "  vcckit unpack e_vcc.slt                           one language, to standard output\n"
                    "  vcckit unpack e_vcc.slt g_vcc.slt -o vcc.toml     both languages in one source");
    command
        .add_option("FILE", given.files,
                    "slot file, and that of the second language; toggle files beside them are read, too")
        ->required()
        ->expected(1, 2)
        ->type_name("FILE.slt");
    command.add_option("-o,--output", given.output, "source to write (default: standard output)")
        ->type_name("FILE.toml");
    command.add_flag("--force", given.force, "replaces a source that says something else");
    return command;
}

CLI::App& add_check(CLI::App& app, Arguments& given) {
    CLI::App& command =
        add_command(app, "check", "Reads a whole installation as the program would and reports every fault",
                    "  vcckit check veldor                               every fault in it\n"
                    "  vcckit check veldor --ignore VK302                except files that only a module reads\n"
                    "  vcckit check veldor --json | jq '.faults[].file'");
    CheckRequest& request = given.checking;
    command.add_option("DIR", request.folder, "folder of the installation")->required()->type_name("DIR");
    add_ignore(command, request.ignored);
    command.add_flag("--json", request.json, "prints one JSON object");
    command.add_flag("--watch", request.watch, "checks again after every change of a file");
    return command;
}

CLI::App& add_render(CLI::App& app, Arguments& given) {
    RenderRequest& request = given.request;
    CLI::App& command =
        add_command(app, "render", "Renders a screen into a PNG file, without a display",
                    "  vcckit render veldor --screen menu -o menu.png    exactly as the program shows it\n"
                    "  vcckit render veldor --screen options --language de --row 5 --hover 58 -o depth.png\n"
                    "  vcckit render veldor --screen help --hover 5 -o help.png");
    command.add_option("DIR", given.rendered, "folder of the installation")->required()->type_name("DIR");
    command
        .add_option("--screen", given.screen,
                    "help: the page of a menu slot; message: the page for a slot without help")
        ->required()
        ->type_name("SCREEN")
        ->check(CLI::IsMember({"menu", "options", "help", "message"}));
    command.add_option("--language", given.language, "English or German")
        ->type_name("CODE")
        ->check(CLI::IsMember({"en", "de"}));
    command.add_option("--row", request.row, "options: number of the option whose values to show")
        ->type_name("N")
        ->check(CLI::IsMember({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 11}));
    command.add_option("--module", request.module, "options: 0 HQ, 1 Factory, 2 Battle, 3 control centre")
        ->type_name("M")
        ->check(CLI::IsMember({0, 1, 2, 3}));
    command.add_option("--hover", request.hover, "slot under the pointer; help: the slot whose page to show")
        ->type_name("SLOT")
        ->check(CLI::Range(0, 199).description("0 to 199"));
    command.add_option("--pressed", request.pressed, "menu, options: slot to show pressed")
        ->type_name("SLOT")
        ->check(CLI::Range(0, 199).description("0 to 199"));
    command.add_option("--depth", request.depth, "bits per pixel")
        ->type_name("BITS")
        ->check(CLI::IsMember({15, 16, 24, 32}));
    command.add_option("-o,--output", given.picture, "PNG file to write; - for standard output")
        ->required()
        ->type_name("FILE.png");
    return command;
}

CLI::App& add_show(CLI::App& app, Arguments& given) {
    CLI::App& command = add_command(app, "show", "Prints a file of an installation as readable text",
                                    "  vcckit show veldor/images/menu.pcx\n"
                                    "  vcckit show veldor/tools/language/english/e_vcc.slt");
    command
        .add_option("FILE", given.shown,
                    "slot, toggle, window, buffer, sound, message, help, settings, PCX, WAV or AVI file")
        ->required()
        ->type_name("FILE");
    return command;
}

CLI::App& add_convert(CLI::App& app, Arguments& given) {
    ConvertRequest& request = given.conversion;
    CLI::App& command =
        add_command(app, "convert", "Converts pictures, sounds and films of other formats to PCX, WAV and AVI",
                    "  vcckit convert menu.png -o veldor/images          alpha becomes the transparent colour\n"
                    "  vcckit convert --loop theme.ogg -o veldor/sounds/theme00.wav\n"
                    "  vcckit convert intro.mp4 -o veldor/images/VELDOR_Intro.avi");
    command.add_option("INPUT", given.converted, "pictures, sounds and films of any format")
        ->required()
        ->type_name("FILE");
    command.add_option("-o,--output", request.output, "file or folder to write (default: beside the input)")
        ->type_name("FILE|DIR");
    command.add_option("--bits", request.bits, "pictures: bits per pixel (default: 24)")
        ->type_name("BITS")
        ->check(CLI::IsMember({8, 24}));
    command.add_flag("--loop", request.loop, "sounds: refuses one whose end does not run into its beginning");
    return command;
}

CLI::App& add_explain(CLI::App& app, Arguments& given) {
    CLI::App& command = add_command(app, "explain", "Explains the code of a fault, with an example",
                                    "  vcckit explain VK117\n"
                                    "  vcckit explain                                    lists all codes");
    command.add_option("CODE", given.codes, "codes of faults")->type_name("CODE");
    command.add_flag("--markdown", given.markdown, "prints the table of docs/faults.md");
    return command;
}

CLI::App& add_schema(CLI::App& app, Arguments& given) {
    CLI::App& command = add_command(app, "schema", "Prints the JSON schema of screen sources, for editors",
                                    "  vcckit schema > screen.schema.json");
    command.add_flag("--fields", given.fields, "prints the table of record fields of docs/formats.md");
    return command;
}

/// Names an unknown option among words, and the nearest known one; empty if all are known.
std::string unknown_option(const CLI::App& app, const std::string& kind, std::span<const std::string> words) {
    std::vector<std::string> known;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames())
            known.push_back("--" + name);
        for (const std::string& name : option->get_snames())
            known.push_back("-" + name);
    }
    for (const std::string& word : words) {
        if (word == "--")
            break;
        if (word.size() < 2 || word[0] != '-' || (word[1] >= '0' && word[1] <= '9'))
            continue;
        const std::string name = word[1] == '-' ? word.substr(0, word.find('=')) : word.substr(0, 2);
        if (std::ranges::find(known, name) == known.end())
            return unknown_word(kind, name, nearest_word(name, known));
    }
    return {};
}

/// Names an unknown command or option; empty if all are known.
std::string suggestion(const CLI::App& app, std::span<const std::string> words) {
    std::vector<std::string> known;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        known.push_back(command->get_name());
    if (words.empty() || words[0].starts_with('-'))
        return unknown_option(app, "option", words.first(words.empty() ? 0 : 1));
    if (std::ranges::find(known, words[0]) == known.end())
        return unknown_word("command", words[0], nearest_word(words[0], known));
    return unknown_option(*app.get_subcommand(words[0]), "option of " + words[0], words.subspan(1));
}

CLI::App& add_play(CLI::App& app, Arguments& given) {
    PlayRequest& request = given.play;
    request.pictures = "played";
    CLI::App& command = add_command(
        app, "play", "Visits every slot in the real program on a virtual display and saves pictures",
        "  vcckit play veldor                                both languages; pictures in the folder played\n"
        "  vcckit play veldor --language de -o pictures");
    command.add_option("DIR", request.folder, "folder of the installation")->required()->type_name("DIR");
    command.add_option("-o,--output", request.pictures, "folder for the pictures (default: played)")->type_name("DIR");
    command.add_option("--language", request.language, "English or German (default: both)")
        ->type_name("CODE")
        ->check(CLI::IsMember({"en", "de"}));
    command.add_flag("--films", request.films, "shows the films at the start, too");
    return command;
}

CLI::App& add_edit(CLI::App& app, Arguments& given) {
    EditorRequest& request = given.edit;
    CLI::App& command =
        add_command(app, "edit", "Edits screens in a browser, exactly as the program shows them",
                    "  vcckit edit veldor                                opens the page\n"
                    "  vcckit edit game --screens screens --no-browser   prints its address, and waits");
    command.add_option("DIR", request.folder, "folder of the installation")->required()->type_name("DIR");
    command.add_option("--screens", request.screens, "folder of the sources (default: screens in or beside DIR)")
        ->type_name("DIR");
    command.add_option("--port", request.port, "port of 127.0.0.1 (default: a free one)")
        ->type_name("N")
        ->check(CLI::Range(0, 65535).description("0 to 65535"));
    command.add_flag("--no-browser{false}", request.browser, "does not open the page");
    return command;
}

CLI::App& add_export(CLI::App& app, Arguments& given) {
    ExportRequest& request = given.exporting;
    CLI::App& command = add_command(app, "export", "Makes a zip for players, without log and personal settings",
                                    "  vcckit export game -o lantern.zip                 for Linux\n"
                                    "  vcckit export game --windows veldor_win64 -o lantern_windows.zip");
    command.add_option("DIR", request.folder, "folder of the installation")->required()->type_name("DIR");
    command.add_option("--windows", request.windows, "for Windows, with the program of this folder")->type_name("DIR");
    command.add_option("-o,--output", request.output, "zip to write; its name is that of the folder in it")
        ->required()
        ->type_name("FILE.zip");
    return command;
}

/// "help" and "help COMMAND" are the option --help.
std::vector<std::string> with_help_as_option(std::vector<std::string> words) {
    if (!words.empty() && words[0] == "help") {
        words.erase(words.begin());
        words.emplace_back("--help");
    }
    return words;
}

/// The status of a command, which has failed if its output could not be written.
int after_output(int status) {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return status;
    return complain(std::string("cannot write to standard output: ") + std::strerror(errno));
}

/// A command: how the command line describes it, and what it does.
struct CommandRow {
    CLI::App& (*add)(CLI::App& app, Arguments& given);
    int (*run)(Arguments& given);
};
constexpr CommandRow commands[] = {
    {add_new, [](Arguments& given) { return run_new(given.project); }},
    {add_pack, [](Arguments& given) { return run_pack(given.packing); }},
    {add_unpack, [](Arguments& given) { return run_unpack(given.files, given.output, given.force); }},
    {add_check, [](Arguments& given) { return run_check(given.checking); }},
    {add_render,
     [](Arguments& given) {
         given.request.language = given.language == "de" ? 1 : 0;
         given.request.screen = screens.at(given.screen);
         return run_render(given.rendered, given.request, given.picture);
     }},
    {add_convert, [](Arguments& given) { return run_convert(given.converted, given.conversion); }},
    {add_explain, [](Arguments& given) { return run_explain(given.codes, given.markdown); }},
    {add_schema, [](Arguments& given) { return run_schema(given.fields); }},
    {add_play, [](Arguments& given) { return run_play(given.play); }},
    {add_edit, [](Arguments& given) { return run_edit(given.edit); }},
    {add_export, [](Arguments& given) { return run_export(given.exporting); }},
    {add_show, [](Arguments& given) { return run_show(given.shown); }},
};

} // namespace

// Setting up the command line throws only for a bug in it.
int main(int argc, char** argv) { // NOLINT(bugprone-exception-escape)
    CLI::App app{"Makes, unpacks, checks and shows the files of a Veldor installation.", "vcckit"};
    app.require_subcommand(1);
    app.allow_windows_style_options(false); // "/" begins a folder's name on every system
    app.set_version_flag("--version", std::string("vcckit ") + vcc::version_text);
    app.footer(examples);
    Arguments given;
    int (*run)(Arguments&) = nullptr;
    for (const CommandRow& row : commands)
        row.add(app, given).callback([&run, &row] { run = row.run; });
    const std::vector<std::string> words = with_help_as_option(vcc::platform::command_line(argc, argv));
    if (!words.empty() && words[0] == "__complete") { // by a shell; not in the help, because nobody types it
        for (const std::string& line : completions(app, std::span(words).subspan(1)))
            std::printf("%s\n", line.c_str());
        return exit_clean;
    }
    try {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
    } catch (const CLI::ParseError& error) {
        if (const std::string told = error.get_exit_code() == 0 ? "" : suggestion(app, words); !told.empty())
            return complain(told + "\nRun \"vcckit --help\" for more.");
        return after_output(app.exit(error) == 0 ? exit_clean : exit_unusable);
    }
    return after_output(run(given));
}
