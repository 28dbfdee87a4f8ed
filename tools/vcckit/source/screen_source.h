// Screen sources: one readable file per screen, with the texts of all languages side by side.
#pragma once

#include "vcckit/faults/report.h"
#include "vcckit/faults/source_place.h"
#include "vcckit/record/slot_bytes.h"
#include "vcckit/source/alignment.h"

#include "core/installation.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vcc::kit {

struct Screen {
    std::string name;                    ///< of the files; empty if the source has none
    std::optional<std::size_t> language; ///< the only one that it describes; the records of the others are the same
    std::array<ScreenRecords, languages.size()> records;

    bool describes(std::size_t which) const { return !language || *language == which; }
};

struct ScreenSource {
    Screen screen;
    std::array<ScreenPlaces, languages.size()> places;
    Place name_place; ///< of `name`; line 0 without one
    Faults faults;    ///< mistakes by line, without a file; when there is one, the screen must not be used
};

/// Whether this can be a screen's name: a file name without folder and extension.
bool is_screen_name(std::string_view name);

/// Builds the records that a source describes. docs/formats.md describes sources. Without a usable measure a source
/// that aligns texts has mistakes.
ScreenSource read_screen_source(std::string_view text, const TextMeasure& measure = {});

} // namespace vcc::kit
