// What the command line can do. Every command returns the exit status.
#pragma once

#include "render.h"

#include <string>
#include <vector>

namespace vcc::kit {

inline constexpr int exit_clean = 0, exit_faults = 1, exit_unusable = 2;

struct PackRequest {
    std::vector<std::string> sources;
    std::string installation;
    std::vector<std::string> ignored; ///< codes of faults
    bool any_name = false, json = false, quiet = false, watch = false;
};

/// Makes the slot and toggle files of screen sources: of all of them, or, when one has a fault, of none.
int run_pack(const PackRequest& request);

/// Writes the source of a slot file, or of one in each language; to standard output without a name.
int run_unpack(const std::vector<std::string>& files, const std::string& output);

struct CheckRequest {
    std::string folder;
    std::vector<std::string> ignored; ///< codes of faults
    bool json = false, watch = false;
};

/// Checks an installation and writes the faults to standard output, as text or as JSON.
int run_check(const CheckRequest& request);

/// Says what a code stands for; without a code, lists them all. `markdown`: as the table of docs/faults.md.
int run_explain(const std::vector<std::string>& codes, bool markdown);

/// Prints the JSON schema of screen sources, for editors; or the table of fields in docs/formats.md.
int run_schema(bool fields);

/// Renders a screen of an installation into a PNG file.
int run_render(const std::string& folder, const RenderRequest& request, const std::string& output);

struct PlayRequest {
    std::string folder;   ///< of the installation
    std::string pictures; ///< folder
    std::string language; ///< code; empty: every one
    bool films = false;   ///< the films of the start are shown
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

struct NewRequest {
    std::string name;   ///< folder to make
    std::string module; ///< hq, factory, battle or none
    std::string base;   ///< installation to build on; empty: the one that belongs to the tool
};

/// Makes a folder of sources that an installation can be put together from.
int run_new(const NewRequest& request);

struct ConvertRequest {
    std::string output; ///< file, folder, or empty: beside the source
    int bits = 24;      ///< of a pixel: 8 or 24
    bool loop = false;  ///< sounds must run into themselves
};

/// Makes PCX, WAV and AVI files from what other programs write.
int run_convert(const std::vector<std::string>& sources, const ConvertRequest& request);

/// Prints a file of an installation readably.
int run_show(const std::string& file);

} // namespace vcc::kit
