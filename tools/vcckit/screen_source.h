// Screen sources: one readable file a screen, with the texts of all languages side by side.
#pragma once

#include "slot_bytes.h"

#include "core/installation.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit {

/// A mistake in a source.
struct SourceFault {
    int line = 0; ///< counted from 1
    std::string text;

    bool operator==(const SourceFault&) const = default;
};

struct Screen {
    std::string name; ///< of the files; empty: the source does not say
    std::array<ScreenRecords, languages.size()> records;
};

struct ScreenSource {
    Screen screen;
    std::vector<SourceFault> faults; ///< when there is one, the screen must not be used
};

/// Whether a source may call a screen so: a file name without folder and extension.
bool is_screen_name(std::string_view name);

/// Builds the records that a source describes. docs/formats.md describes sources.
ScreenSource read_screen_source(std::string_view text);

} // namespace vcc::kit
