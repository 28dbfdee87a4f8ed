// Where in a screen source the parts of a record are written.
#pragma once

#include "fields.h"
#include "report.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit {

/// Line and column count from 1, columns in characters; line 0 is nowhere, width 0 reaches to the end of the line.
struct Place {
    int line = 0, column = 0, width = 0;
};

struct RecordPlaces {
    std::string where; ///< "slot 3"
    Place whole;       ///< its heading
    std::array<Place, field_count> fields{};

    /// The place of the first of some field names ("src_x, box_width") that is written somewhere, else the heading.
    const Place& of(std::string_view names) const;
};

/// The places of one language, by record numbers; records that fill gaps are nowhere.
struct ScreenPlaces {
    std::vector<RecordPlaces> slots, toggles;
};

/// A mistake in a source; its file is filled in by whoever knows it.
Fault source_fault(FaultCode code, const Place& place, std::string where, std::string_view field, std::string problem,
                   std::string advice = {}, std::string nearest = {});

/// By line and column, each once: most mistakes are met once a language, and those of a style once a record.
Faults each_once(const Faults& faults);

} // namespace vcc::kit
