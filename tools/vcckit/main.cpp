// vcckit: the tool for people who make or change an installation. This is its command line.
#include "vcckit/commands/commands.h"
#include "vcckit/files/run_program.h"
#include "vcckit/text/nearest.h"

#include "core/installation.h"
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

/// An option or, if its name has no hyphens, an argument.
template <class Value>
CLI::Option* add(CLI::App& command, const char* name, Value& value, const char* type, const char* help) {
    return command.add_option(name, value, help)->type_name(type);
}

template <class Value>
CLI::Option* require(CLI::App& command, const char* name, Value& value, const char* type, const char* help) {
    return add(command, name, value, type, help)->required();
}

void require_installation(CLI::App& command, std::string& folder) {
    require(command, "DIR", folder, "DIR", "folder of the installation");
}

void add_language(CLI::App& command, std::string& code, const char* help) {
    add(command, "--language", code, "CODE", help)->check(CLI::IsMember({"en", "de"}));
}

void add_slot(CLI::App& command, const char* name, std::optional<int>& slot, const char* help) {
    add(command, name, slot, "SLOT", help)->check(CLI::Range(0, 199).description("0 to 199"));
}

void add_ignore(CLI::App& command, std::vector<std::string>& codes) {
    add(command, "--ignore", codes, "CODE", "code of a fault to ignore, or several separated by commas")
        ->take_all()
        ->expected(1);
}

using Run = int (*)(); ///< gives the exit status

/// A command. `describe` says what the command line may give it, and returns what it does with that.
struct CommandRow {
    const char *name, *purpose, *examples;
    Run (*describe)(CLI::App& command);
};
constexpr CommandRow commands[] = {
    {"new", "Makes a folder of sources for an installation of your own",
     "  vcckit new lantern                                screens, a picture, a theme, a Makefile\n"
     "  vcckit new lantern --module hq                    with the source of a game module",
     [](CLI::App& command) -> Run {
         static NewRequest request;
         require(command, "NAME", request.name, "NAME", "folder to create; its name becomes the title");
         add(command, "--module", request.module, "MODULE", "source of a game module")
             ->check(CLI::IsMember(vcc::module_names));
         add(command, "--base", request.base, "DIR", "installation to build on (default: the built-in one)");
         return [] { return run_new(request); };
     }},
    {"pack", "Makes slot and toggle files from screen sources",
     "  vcckit pack vcc.toml -o veldor                    writes e_vcc.slt, e_vcc.tgl, g_vcc.slt, g_vcc.tgl\n"
     "  vcckit pack screens/*.toml -o veldor",
     [](CLI::App& command) -> Run {
         static PackRequest request;
         require(command, "SOURCE", request.sources, "FILE.toml", "screen sources");
         require(command, "-o,--output", request.installation, "DIR", "folder of the installation");
         command.add_flag("--any-name", request.any_name, "packs screens that the program does not read, too");
         add_ignore(command, request.ignored);
         command.add_flag("--json", request.json, "prints one JSON object");
         command.add_flag("--watch", request.watch, "packs again after every change of a source");
         command.add_flag("-q,--quiet", request.quiet, "does not list the files written");
         return [] { return run_pack(request); };
     }},
    {"unpack", "Writes a screen source from slot files",
     "  vcckit unpack e_vcc.slt                           one language, to standard output\n"
     "  vcckit unpack e_vcc.slt g_vcc.slt -o vcc.toml     both languages in one source",
     [](CLI::App& command) -> Run {
         static std::vector<std::string> files;
         static std::string output;
         static bool force = false;
         require(command, "FILE", files, "FILE.slt",
                 "slot file, and that of the second language; toggle files beside them are read, too")
             ->expected(1, 2);
         add(command, "-o,--output", output, "FILE.toml", "source to write (default: standard output)");
         command.add_flag("--force", force, "replaces a source that says something else");
         return [] { return run_unpack(files, output, force); };
     }},
    {"check", "Reads a whole installation as the program would and reports every fault",
     "  vcckit check veldor                               every fault in it\n"
     "  vcckit check veldor --ignore VK302                except files that only a module reads\n"
     "  vcckit check veldor --json | jq '.faults[].file'",
     [](CLI::App& command) -> Run {
         static CheckRequest request;
         require_installation(command, request.folder);
         add_ignore(command, request.ignored);
         command.add_flag("--json", request.json, "prints one JSON object");
         command.add_flag("--watch", request.watch, "checks again after every change of a file");
         return [] { return run_check(request); };
     }},
    {"render", "Renders a screen into a PNG file, without a display",
     "  vcckit render veldor --screen menu -o menu.png    exactly as the program shows it\n"
     "  vcckit render veldor --screen options --language de --row 5 --hover 58 -o depth.png\n"
     "  vcckit render veldor --screen help --hover 5 -o help.png",
     [](CLI::App& command) -> Run {
         static RenderRequest request;
         static std::string folder, picture, screen, language = "en";
         require_installation(command, folder);
         require(command, "--screen", screen, "SCREEN",
                 "help: the page of a menu slot; message: the page for a slot without help")
             ->check(CLI::IsMember({"menu", "options", "help", "message"}));
         add_language(command, language, "English or German");
         add(command, "--row", request.row, "N", "options: number of the option whose values to show")
             ->check(CLI::IsMember({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 11}));
         add(command, "--module", request.module, "M", "options: 0 HQ, 1 Factory, 2 Battle, 3 control centre")
             ->check(CLI::IsMember({0, 1, 2, 3}));
         add_slot(command, "--hover", request.hover, "slot under the pointer; help: the slot whose page to show");
         add_slot(command, "--pressed", request.pressed, "menu, options: slot to show pressed");
         add(command, "--depth", request.depth, "BITS", "bits per pixel")->check(CLI::IsMember({15, 16, 24, 32}));
         require(command, "-o,--output", picture, "FILE.png", "PNG file to write; - for standard output");
         return [] {
             request.language = language == "de" ? 1 : 0;
             request.screen = screens.at(screen);
             return run_render(folder, request, picture);
         };
     }},
    {"convert", "Converts pictures, sounds and films of other formats to PCX, WAV and AVI",
     "  vcckit convert menu.png -o veldor/images          alpha becomes the transparent colour\n"
     "  vcckit convert --loop theme.ogg -o veldor/sounds/theme00.wav\n"
     "  vcckit convert intro.mp4 -o veldor/images/VELDOR_Intro.avi",
     [](CLI::App& command) -> Run {
         static ConvertRequest request;
         static std::vector<std::string> sources;
         require(command, "INPUT", sources, "FILE", "pictures, sounds and films of any format");
         add(command, "-o,--output", request.output, "FILE|DIR", "file or folder to write (default: beside the input)");
         add(command, "--bits", request.bits, "BITS", "pictures: bits per pixel (default: 24)")
             ->check(CLI::IsMember({8, 24}));
         command.add_flag("--loop", request.loop, "sounds: refuses one whose end does not run into its beginning");
         return [] { return run_convert(sources, request); };
     }},
    {"explain", "Explains the code of a fault, with an example",
     "  vcckit explain VK117\n"
     "  vcckit explain                                    lists all codes",
     [](CLI::App& command) -> Run {
         static std::vector<std::string> codes;
         static bool markdown = false;
         add(command, "CODE", codes, "CODE", "codes of faults");
         command.add_flag("--markdown", markdown, "prints the table of docs/faults.md");
         return [] { return run_explain(codes, markdown); };
     }},
    {"schema", "Prints the JSON schema of screen sources, for editors", "  vcckit schema > screen.schema.json",
     [](CLI::App& command) -> Run {
         static bool fields = false;
         command.add_flag("--fields", fields, "prints the table of record fields of docs/formats.md");
         return [] { return run_schema(fields); };
     }},
    {"play", "Visits every slot in the real program on a virtual display and saves pictures",
     "  vcckit play veldor                                both languages; pictures in the folder played\n"
     "  vcckit play veldor --language de -o pictures",
     [](CLI::App& command) -> Run {
         static PlayRequest request;
         require_installation(command, request.folder);
         add(command, "-o,--output", request.pictures, "DIR", "folder for the pictures (default: played)");
         add_language(command, request.language, "English or German (default: both)");
         command.add_flag("--films", request.films, "shows the films at the start, too");
         return [] { return run_play(request); };
     }},
    {"edit", "Edits screens in a browser, exactly as the program shows them",
     "  vcckit edit veldor                                opens the page\n"
     "  vcckit edit game --screens screens --no-browser   prints its address, and waits",
     [](CLI::App& command) -> Run {
         static EditorRequest request;
         require_installation(command, request.folder);
         add(command, "--screens", request.screens, "DIR", "folder of the sources (default: screens in or beside DIR)");
         add(command, "--port", request.port, "N", "port of 127.0.0.1 (default: a free one)")
             ->check(CLI::Range(0, 65535).description("0 to 65535"));
         command.add_flag("--no-browser{false}", request.browser, "does not open the page");
         return [] { return run_edit(request); };
     }},
    {"export", "Makes a zip for players, without log and personal settings",
     "  vcckit export game -o lantern.zip                 for Linux\n"
     "  vcckit export game --windows veldor_win64 -o lantern_windows.zip",
     [](CLI::App& command) -> Run {
         static ExportRequest request;
         require_installation(command, request.folder);
         add(command, "--windows", request.windows, "DIR", "for Windows, with the program of this folder");
         require(command, "-o,--output", request.output, "FILE.zip",
                 "zip to write; its name is that of the folder in it");
         return [] { return run_export(request); };
     }},
    {"show", "Prints a file of an installation as readable text",
     "  vcckit show veldor/images/menu.pcx\n"
     "  vcckit show veldor/tools/language/english/e_vcc.slt",
     [](CLI::App& command) -> Run {
         static std::string file;
         require(command, "FILE", file, "FILE",
                 "slot, toggle, window, buffer, sound, message, help, settings, PCX, WAV or AVI file");
         return [] { return run_show(file); };
     }},
};

std::string unknown_word(const std::string& kind, const std::string& word, const std::string& nearest) {
    return "\"" + word + "\" is no " + kind + (nearest.empty() ? "" : "; did you mean " + nearest + "?");
}

/// Names an unknown option among words, and the nearest known one; empty if all are known.
std::string unknown_option(const CLI::App& app, const std::string& kind, std::span<const std::string> words) {
    std::vector<std::string> known;
    for (const CLI::Option* option : app.get_options())
        std::ranges::copy(option_names(*option), std::back_inserter(known));
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
    Run run = nullptr;
    for (const CommandRow& row : commands) {
        CLI::App& command = *app.add_subcommand(row.name, row.purpose);
        command.footer(std::string("Examples:\n") + row.examples);
        command.callback([&run, chosen = row.describe(command)] { run = chosen; });
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
    return after_output(run());
}
