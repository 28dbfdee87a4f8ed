// Places of a record's parts in a screen source.
#pragma once

#include "vcckit/faults/report.h"
#include "vcckit/record/fields.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit {

/// Line and column count from 1, columns in characters; line 0: nowhere; width 0: to the end of the line.
struct Place {
    int line = 0, column = 0, width = 0;

    bool operator==(const Place&) const = default;
};

struct RecordPlaces {
    std::string where; ///< "slot 3"
    Place whole;       ///< its heading
    std::array<Place, field_count> fields{};

    /// The place of the first of these field names ("src_x, box_width") that is written, else the heading.
    const Place& of(std::string_view names) const;
};

/// The places of one language, by record numbers; records that fill gaps are nowhere.
struct ScreenPlaces {
    std::vector<RecordPlaces> slots, toggles;
};

/// A mistake in a source; the caller fills in the file.
Fault source_fault(FaultCode code, const Place& place, std::string where, std::string_view field, std::string problem,
                   std::string advice = {}, std::string nearest = {});

/// By line and column, without repetitions: most mistakes occur once per language, those of a style once per record.
Faults each_once(const Faults& faults);

} // namespace vcc::kit
