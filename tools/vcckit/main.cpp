// vcckit: the tool for people who make or change an installation. This is its command line.
#include "vcckit/commands/commands.h"
#include "vcckit/files/run_program.h"
#include "vcckit/text/nearest.h"

#include "core/version.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <map>
#include <optional>
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

template <class Value>
CLI::Option* require(CLI::App& command, const char* name, Value& value, const char* type, const char* help) {
    return command.add_option(name, value, help)->required()->type_name(type);
}

void require_installation(CLI::App& command, std::string& folder) {
    require(command, "DIR", folder, "DIR", "folder of the installation");
}

CLI::Option* add_language(CLI::App& command, std::string& code, const char* help) {
    return command.add_option("--language", code, help)->type_name("CODE")->check(CLI::IsMember({"en", "de"}));
}

void add_slot(CLI::App& command, const char* name, std::optional<int>& slot, const char* help) {
    command.add_option(name, slot, help)->type_name("SLOT")->check(CLI::Range(0, 199).description("0 to 199"));
}

void add_ignore(CLI::App& command, std::vector<std::string>& codes) {
    command.add_option("--ignore", codes, "code of a fault to ignore, or several separated by commas")
        ->type_name("CODE")
        ->take_all()
        ->expected(1);
}

/// A command: how the command line describes it, and what it does.
struct CommandRow {
    const char *name, *purpose, *examples;
    void (*describe)(CLI::App& command, Arguments& given);
    int (*run)(Arguments& given);
};
constexpr CommandRow commands[] = {
    {"new", "Makes a folder of sources for an installation of your own",
     "  vcckit new lantern                                screens, a picture, a theme, a Makefile\n"
     "  vcckit new lantern --module hq                    with the source of a game module",
     [](CLI::App& command, Arguments& given) {
         NewRequest& request = given.project;
         require(command, "NAME", request.name, "NAME", "folder to create; its name becomes the title");
         command.add_option("--module", request.module, "source of a game module")
             ->type_name("MODULE")
             ->check(CLI::IsMember({"hq", "factory", "battle"}));
         command.add_option("--base", request.base, "installation to build on (default: the built-in one)")
             ->type_name("DIR");
     },
     [](Arguments& given) { return run_new(given.project); }},
    {"pack", "Makes slot and toggle files from screen sources",
     "  vcckit pack vcc.toml -o veldor                    writes e_vcc.slt, e_vcc.tgl, g_vcc.slt, g_vcc.tgl\n"
     "  vcckit pack screens/*.toml -o veldor",
     [](CLI::App& command, Arguments& given) {
         PackRequest& request = given.packing;
         require(command, "SOURCE", request.sources, "FILE.toml", "screen sources");
         require(command, "-o,--output", request.installation, "DIR", "folder of the installation");
         command.add_flag("--any-name", request.any_name, "packs screens that the program does not read, too");
         add_ignore(command, request.ignored);
         command.add_flag("--json", request.json, "prints one JSON object");
         command.add_flag("--watch", request.watch, "packs again after every change of a source");
         command.add_flag("-q,--quiet", request.quiet, "does not list the files written");
     },
     [](Arguments& given) { return run_pack(given.packing); }},
    {"unpack", "Writes a screen source from slot files",
     "  vcckit unpack e_vcc.slt                           one language, to standard output\n"
     "  vcckit unpack e_vcc.slt g_vcc.slt -o vcc.toml     both languages in one source",
     [](CLI::App& command, Arguments& given) {
         require(command, "FILE", given.files, "FILE.slt",
                 "slot file, and that of the second language; toggle files beside them are read, too")
             ->expected(1, 2);
         command.add_option("-o,--output", given.output, "source to write (default: standard output)")
             ->type_name("FILE.toml");
         command.add_flag("--force", given.force, "replaces a source that says something else");
     },
     [](Arguments& given) { return run_unpack(given.files, given.output, given.force); }},
    {"check", "Reads a whole installation as the program would and reports every fault",
     "  vcckit check veldor                               every fault in it\n"
     "  vcckit check veldor --ignore VK302                except files that only a module reads\n"
     "  vcckit check veldor --json | jq '.faults[].file'",
     [](CLI::App& command, Arguments& given) {
         CheckRequest& request = given.checking;
         require_installation(command, request.folder);
         add_ignore(command, request.ignored);
         command.add_flag("--json", request.json, "prints one JSON object");
         command.add_flag("--watch", request.watch, "checks again after every change of a file");
     },
     [](Arguments& given) { return run_check(given.checking); }},
    {"render", "Renders a screen into a PNG file, without a display",
     "  vcckit render veldor --screen menu -o menu.png    exactly as the program shows it\n"
     "  vcckit render veldor --screen options --language de --row 5 --hover 58 -o depth.png\n"
     "  vcckit render veldor --screen help --hover 5 -o help.png",
     [](CLI::App& command, Arguments& given) {
         RenderRequest& request = given.request;
         require_installation(command, given.rendered);
         require(command, "--screen", given.screen, "SCREEN",
                 "help: the page of a menu slot; message: the page for a slot without help")
             ->check(CLI::IsMember({"menu", "options", "help", "message"}));
         add_language(command, given.language, "English or German");
         command.add_option("--row", request.row, "options: number of the option whose values to show")
             ->type_name("N")
             ->check(CLI::IsMember({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 11}));
         command.add_option("--module", request.module, "options: 0 HQ, 1 Factory, 2 Battle, 3 control centre")
             ->type_name("M")
             ->check(CLI::IsMember({0, 1, 2, 3}));
         add_slot(command, "--hover", request.hover, "slot under the pointer; help: the slot whose page to show");
         add_slot(command, "--pressed", request.pressed, "menu, options: slot to show pressed");
         command.add_option("--depth", request.depth, "bits per pixel")
             ->type_name("BITS")
             ->check(CLI::IsMember({15, 16, 24, 32}));
         require(command, "-o,--output", given.picture, "FILE.png", "PNG file to write; - for standard output");
     },
     [](Arguments& given) {
         given.request.language = given.language == "de" ? 1 : 0;
         given.request.screen = screens.at(given.screen);
         return run_render(given.rendered, given.request, given.picture);
     }},
    {"convert", "Converts pictures, sounds and films of other formats to PCX, WAV and AVI",
     "  vcckit convert menu.png -o veldor/images          alpha becomes the transparent colour\n"
     "  vcckit convert --loop theme.ogg -o veldor/sounds/theme00.wav\n"
     "  vcckit convert intro.mp4 -o veldor/images/VELDOR_Intro.avi",
     [](CLI::App& command, Arguments& given) {
         ConvertRequest& request = given.conversion;
         require(command, "INPUT", given.converted, "FILE", "pictures, sounds and films of any format");
         command.add_option("-o,--output", request.output, "file or folder to write (default: beside the input)")
             ->type_name("FILE|DIR");
         command.add_option("--bits", request.bits, "pictures: bits per pixel (default: 24)")
             ->type_name("BITS")
             ->check(CLI::IsMember({8, 24}));
         command.add_flag("--loop", request.loop, "sounds: refuses one whose end does not run into its beginning");
     },
     [](Arguments& given) { return run_convert(given.converted, given.conversion); }},
    {"explain", "Explains the code of a fault, with an example",
     "  vcckit explain VK117\n"
     "  vcckit explain                                    lists all codes",
     [](CLI::App& command, Arguments& given) {
         command.add_option("CODE", given.codes, "codes of faults")->type_name("CODE");
         command.add_flag("--markdown", given.markdown, "prints the table of docs/faults.md");
     },
     [](Arguments& given) { return run_explain(given.codes, given.markdown); }},
    {"schema", "Prints the JSON schema of screen sources, for editors", "  vcckit schema > screen.schema.json",
     [](CLI::App& command, Arguments& given) {
         command.add_flag("--fields", given.fields, "prints the table of record fields of docs/formats.md");
     },
     [](Arguments& given) { return run_schema(given.fields); }},
    {"play", "Visits every slot in the real program on a virtual display and saves pictures",
     "  vcckit play veldor                                both languages; pictures in the folder played\n"
     "  vcckit play veldor --language de -o pictures",
     [](CLI::App& command, Arguments& given) {
         PlayRequest& request = given.play;
         require_installation(command, request.folder);
         command.add_option("-o,--output", request.pictures, "folder for the pictures (default: played)")
             ->type_name("DIR");
         add_language(command, request.language, "English or German (default: both)");
         command.add_flag("--films", request.films, "shows the films at the start, too");
     },
     [](Arguments& given) { return run_play(given.play); }},
    {"edit", "Edits screens in a browser, exactly as the program shows them",
     "  vcckit edit veldor                                opens the page\n"
     "  vcckit edit game --screens screens --no-browser   prints its address, and waits",
     [](CLI::App& command, Arguments& given) {
         EditorRequest& request = given.edit;
         require_installation(command, request.folder);
         command.add_option("--screens", request.screens, "folder of the sources (default: screens in or beside DIR)")
             ->type_name("DIR");
         command.add_option("--port", request.port, "port of 127.0.0.1 (default: a free one)")
             ->type_name("N")
             ->check(CLI::Range(0, 65535).description("0 to 65535"));
         command.add_flag("--no-browser{false}", request.browser, "does not open the page");
     },
     [](Arguments& given) { return run_edit(given.edit); }},
    {"export", "Makes a zip for players, without log and personal settings",
     "  vcckit export game -o lantern.zip                 for Linux\n"
     "  vcckit export game --windows veldor_win64 -o lantern_windows.zip",
     [](CLI::App& command, Arguments& given) {
         ExportRequest& request = given.exporting;
         require_installation(command, request.folder);
         command.add_option("--windows", request.windows, "for Windows, with the program of this folder")
             ->type_name("DIR");
         require(command, "-o,--output", request.output, "FILE.zip",
                 "zip to write; its name is that of the folder in it");
     },
     [](Arguments& given) { return run_export(given.exporting); }},
    {"show", "Prints a file of an installation as readable text",
     "  vcckit show veldor/images/menu.pcx\n"
     "  vcckit show veldor/tools/language/english/e_vcc.slt",
     [](CLI::App& command, Arguments& given) {
         require(command, "FILE", given.shown, "FILE",
                 "slot, toggle, window, buffer, sound, message, help, settings, PCX, WAV or AVI file");
     },
     [](Arguments& given) { return run_show(given.shown); }},
};

std::string unknown_word(const std::string& kind, const std::string& word, const std::string& nearest) {
    return "\"" + word + "\" is no " + kind + (nearest.empty() ? "" : "; did you mean " + nearest + "?");
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
    if (words.empty() || words[0].starts_with('-'))
        return unknown_option(app, "option", words.first(words.empty() ? 0 : 1));
    if (std::ranges::find(commands, words[0], &CommandRow::name) == std::end(commands))
        return unknown_word("command", words[0], nearest_word(words[0], commands, &CommandRow::name));
    return unknown_option(*app.get_subcommand(words[0]), "option of " + words[0], words.subspan(1));
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
    for (const CommandRow& row : commands) {
        CLI::App& command = *app.add_subcommand(row.name, row.purpose);
        command.footer(std::string("Examples:\n") + row.examples)->callback([&run, &row] { run = row.run; });
        row.describe(command, given);
    }
    const std::vector<std::string> words = with_help_as_option(command_line(argc, argv));
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
