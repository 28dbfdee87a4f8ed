// The commands of the tool. Each returns the exit status.
#pragma once

#include "vcckit/draw/render.h"
#include "vcckit/text/complain.h"

#include <span>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace vcc::kit {

struct PackRequest {
    std::vector<std::string> sources;
    std::string installation;
    std::vector<std::string> ignored; ///< codes of faults
    bool any_name = false, json = false, quiet = false, watch = false;
};

/// Makes the slot and toggle files of all screen sources, or of none if one has a fault.
int run_pack(const PackRequest& request);

/// Writes the source of one slot file, or of one per language; to standard output without a name. `force`: replaces a
/// file that says something else.
int run_unpack(std::vector<std::string> files, const std::string& output, bool force);

struct CheckRequest {
    std::string folder;
    std::vector<std::string> ignored; ///< codes of faults
    bool json = false, watch = false;
};

/// Checks an installation and prints the faults as text or JSON.
int run_check(const CheckRequest& request);

/// Explains codes; without a code, lists them all. `markdown`: the table of docs/faults.md.
int run_explain(const std::vector<std::string>& codes, bool markdown);

/// The JSON schema of screen sources, for editors. Other entries than those it names are refused.
std::string screen_schema();

/// Prints it, or the table of fields in docs/formats.md.
int run_schema(bool fields);

/// Renders a screen of an installation to a PNG file.
int run_render(const std::string& folder, const RenderRequest& request, const std::string& output);

struct PlayRequest {
    std::string folder;              ///< of the installation
    std::string pictures = "played"; ///< folder
    std::string language;            ///< code; empty: all
    bool films = false;              ///< show the films at the start
};

/// Visits every slot in the real program on a virtual display.
int run_play(const PlayRequest& request);

struct EditorRequest {
    std::string folder;  ///< of the installation
    std::string screens; ///< of the sources; empty: the usual place
    int port = 0;        ///< 0: a free one
    bool browser = true; ///< a browser opens the page
};

/// Serves the screen editor until it is asked to end.
int run_edit(const EditorRequest& request);

struct ExportRequest {
    std::string folder;  ///< of the installation
    std::string output;  ///< zip
    std::string windows; ///< folder of the program for Windows; empty: a zip for Linux
};

/// Makes a zip for players, without log and personal settings.
int run_export(const ExportRequest& request);

struct NewRequest {
    std::string name;   ///< folder to create
    std::string module; ///< hq, factory, battle or none
    std::string base;   ///< installation to build on; empty: the built-in one
};

/// Creates a folder of sources for an installation.
int run_new(const NewRequest& request);

struct ConvertRequest {
    std::string output; ///< file, folder, or empty: beside the source
    int bits = 24;      ///< per pixel: 8 or 24
    bool loop = false;  ///< sounds must loop without a seam
};

/// Converts files of other formats to PCX, WAV and AVI.
int run_convert(const std::vector<std::string>& sources, const ConvertRequest& request);

/// Prints a file of an installation as readable text.
int run_show(const std::string& file);

/// "--output" and "-o"; none of an argument.
std::vector<std::string> option_names(const CLI::Option& option);

/// A line "candidate TAB description" per candidate, whatever has been typed of the last word; then the kind of files
/// that fit: ":folders", ":files" (any) or ":files toml slt" (by extension). `words` are those after the tool's name;
/// the last one, which may be empty, is to be completed.
std::vector<std::string> completions(const CLI::App& app, std::span<const std::string> words);

} // namespace vcc::kit
