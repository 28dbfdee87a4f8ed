// What the command line can do. Every command returns the exit status.
#pragma once

#include "render.h"

#include <string>
#include <vector>

namespace vcc::kit {

inline constexpr int exit_clean = 0, exit_faults = 1, exit_unusable = 2;

/// Makes the slot and toggle files of screen sources. A source with mistakes writes nothing.
int run_pack(const std::vector<std::string>& sources, const std::string& installation);

/// Writes the source of a slot file, or of one in each language; to standard output without a name.
int run_unpack(const std::vector<std::string>& files, const std::string& output);

/// Checks an installation and writes the faults to standard output, as text or as JSON.
int run_check(const std::string& folder, bool json);

/// Renders a screen of an installation into a PNG file.
int run_render(const std::string& folder, const RenderRequest& request, const std::string& output);

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
