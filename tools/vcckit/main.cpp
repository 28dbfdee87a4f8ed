// vcckit: the tool for the people who make or change an installation.
#include "commands.h"
#include "screen_source.h"
#include "unpack.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <string>

namespace {

namespace fs = std::filesystem;
using namespace vcc::kit;

void complain(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
}

std::optional<std::string> read_bytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in || fs::is_directory(path)) {
        complain("vcckit: cannot read " + path.string());
        return std::nullopt;
    }
    return std::string{std::istreambuf_iterator<char>(in), {}};
}

bool write_bytes(const fs::path& path, const std::string& bytes) {
    std::error_code error;
    if (path.has_parent_path())
        fs::create_directories(path.parent_path(), error);
    std::ofstream out(path, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (out.flush())
        return true;
    complain("vcckit: cannot write " + path.string());
    return false;
}

bool write_screen(const Screen& screen, const fs::path& installation) {
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const ScreenRecords& records = screen.records[i];
        const fs::path stem = installation / "tools" / "language" / languages[i].folder /
                              (std::string(languages[i].prefix) + screen.name);
        fs::path slots = stem, toggles = stem;
        slots += ".slt";
        toggles += ".tgl";
        if (!write_bytes(slots, slot_file_bytes(records.slots)))
            return false;
        std::error_code ignored;
        if (!records.has_toggle_file)
            fs::remove(toggles, ignored);
        else if (!write_bytes(toggles, slot_file_bytes(records.toggles)))
            return false;
    }
    return true;
}

const std::map<std::string, RenderedScreen> screen_words{{"menu", RenderedScreen::menu},
                                                         {"options", RenderedScreen::options},
                                                         {"help", RenderedScreen::help},
                                                         {"message", RenderedScreen::message}};

int pack(const std::vector<std::string>& sources, const std::string& installation) {
    int status = exit_clean;
    for (const std::string& source : sources) {
        const auto text = read_bytes(source);
        if (!text)
            return exit_unusable;
        ScreenSource read = read_screen_source(*text);
        for (const SourceFault& fault : read.faults)
            complain(source + ":" + std::to_string(fault.line) + ": " + fault.text);
        if (!read.faults.empty()) {
            status = exit_faults;
            continue;
        }
        if (read.screen.name.empty())
            read.screen.name = fs::path(source).stem().string();
        if (!write_screen(read.screen, installation))
            return exit_unusable;
    }
    return status;
}

bool read_records(const fs::path& path, std::vector<vcc::Slot>& records) {
    const auto bytes = read_bytes(path);
    if (!bytes)
        return false;
    std::string fault;
    records = records_of(*bytes, fault);
    if (!fault.empty())
        complain(path.string() + ": not a slot file: " + fault);
    return fault.empty();
}

std::string screen_name(const fs::path& slot_file) {
    std::string name = slot_file.stem().string();
    for (const LanguageRow& language : languages)
        if (name.starts_with(language.prefix))
            return name.substr(language.prefix.size());
    return name;
}

/// One file stands for both languages.
int unpack(const std::vector<std::string>& files, const std::string& output) {
    Screen screen;
    screen.name = screen_name(files.front());
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const fs::path slots = files[std::min(i, files.size() - 1)];
        fs::path toggles = slots;
        toggles.replace_extension(".tgl");
        ScreenRecords& records = screen.records[i];
        records.has_toggle_file = fs::exists(toggles);
        if (!read_records(slots, records.slots) || (records.has_toggle_file && !read_records(toggles, records.toggles)))
            return exit_unusable;
    }
    if (const std::string difference = difference_of_structure(screen); !difference.empty()) {
        complain("vcckit: " + difference + ": unpack each file by itself");
        return exit_unusable;
    }
    const std::string source = write_screen_source(screen);
    if (output.empty())
        return std::fwrite(source.data(), 1, source.size(), stdout) == source.size() ? exit_clean : exit_unusable;
    return write_bytes(output, source) ? exit_clean : exit_unusable;
}

} // namespace

// The set-up of the command line throws only on a mistake of ours.
int main(int argc, char** argv) { // NOLINT(bugprone-exception-escape)
    CLI::App app{"Makes, unmakes, checks and shows the files of a Veldor installation."};
    app.require_subcommand(1);
    app.footer(
        "Examples:\n"
        "  vcckit pack screens/menu.toml -o veldor\n"
        "  vcckit unpack veldor/tools/language/english/e_vcc.slt -o vcc.toml\n"
        "  vcckit unpack e_vcc.slt g_vcc.slt -o vcc.toml     both languages in one source\n"
        "  vcckit check veldor                               everything that is wrong with an installation\n"
        "  vcckit check veldor --json | jq '.faults[].file'\n"
        "  vcckit render veldor --screen menu -o menu.png    the very picture that the program shows\n"
        "  vcckit render veldor --screen options --language de --row 5 --hover 58 -o depth.png\n"
        "  vcckit render veldor --screen help --hover 5 -o help.png\n"
        "  vcckit show veldor/images/menu.pcx                any file of an installation, readably\n\n"
        "Exit status: 0 done or clean, 1 mistakes in a source or faults in an installation, 2 a file that cannot be\n"
        "read or written, or an installation with which the program does not reach its menu.");

    std::vector<std::string> sources;
    std::string installation;
    CLI::App& pack_command = *app.add_subcommand("pack", "Makes slot and toggle files from screen sources");
    pack_command.add_option("SOURCE", sources, "screen sources (TOML)")->required();
    pack_command.add_option("-o,--output", installation, "folder of the installation")->required();

    std::vector<std::string> files;
    std::string output;
    CLI::App& unpack_command = *app.add_subcommand("unpack", "Writes a screen source from slot files");
    unpack_command
        .add_option("FILE", files,
                    "slot file, and that of the second language; toggle files beside them are read as well")
        ->required()
        ->expected(1, 2);
    unpack_command.add_option("-o,--output", output, "source to write; standard output without it");

    std::string checked;
    bool json = false;
    CLI::App& check_command =
        *app.add_subcommand("check", "Reads a whole installation as the program would and reports every fault");
    check_command.add_option("DIR", checked, "folder of the installation")->required();
    check_command.add_flag("--json", json, "one JSON object for machines");

    RenderRequest request;
    std::string rendered, picture, language = "en";
    CLI::App& render_command = *app.add_subcommand("render", "Draws a screen into a PNG file, without a display");
    render_command.add_option("DIR", rendered, "folder of the installation")->required();
    render_command.add_option("--screen", request.screen, "menu, options, help (of a menu slot) or message (no help)")
        ->required()
        ->transform(CLI::Transformer(screen_words));
    render_command.add_option("--language", language, "en or de")->check(CLI::IsMember({"en", "de"}));
    render_command.add_option("--row", request.row, "options: number of the option whose values are shown");
    render_command.add_option("--module", request.module, "options: 0 HQ, 1 Factory, 2 Battle, 3 control centre")
        ->check(CLI::Range(0, 3));
    render_command.add_option("--hover", request.hover, "slot under the pointer; help: the slot that it is about")
        ->check(CLI::Range(0, 199));
    render_command.add_option("--depth", request.depth, "bits of a pixel")->check(CLI::IsMember({15, 16, 24, 32}));
    render_command.add_option("-o,--output", picture, "PNG file to write")->required();

    std::string shown;
    CLI::App& show_command = *app.add_subcommand("show", "Prints a file of an installation readably");
    show_command
        .add_option("FILE", shown, "slot, toggle, window, buffer, sound, message, help, settings, PCX, WAV or AVI file")
        ->required();

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? exit_clean : exit_unusable;
    }
    if (check_command.parsed())
        return run_check(checked, json);
    request.language = language == "de" ? 1 : 0;
    if (render_command.parsed())
        return run_render(rendered, request, picture);
    if (show_command.parsed())
        return run_show(shown);
    return pack_command.parsed() ? pack(sources, installation) : unpack(files, output);
}
