#include "vcckit/faults/source_place.h"

#include <algorithm>
#include <utility>

namespace vcc::kit {

const Place& RecordPlaces::of(std::string_view names) const {
    while (!names.empty()) {
        const std::size_t comma = names.find(", ");
        const auto field = field_number(names.substr(0, comma));
        if (field && fields[*field].line > 0)
            return fields[*field];
        names.remove_prefix(comma == std::string_view::npos ? names.size() : comma + 2);
    }
    return whole;
}

Fault source_fault(FaultCode code, const Place& place, std::string where, std::string_view field, std::string problem,
                   std::string advice, std::string nearest) {
    Fault fault{code, "", place.line, -1, std::string(field), std::move(problem), std::move(advice)};
    fault.column = std::max(1, place.column);
    fault.width = place.width;
    fault.where = std::move(where);
    fault.nearest = std::move(nearest);
    return fault;
}

Faults each_once(const Faults& faults) {
    Faults once;
    for (const Fault& fault : faults)
        if (std::ranges::none_of(once, [&](const Fault& other) {
                return fault.code == other.code && fault.line == other.line && fault.column == other.column &&
                       fault.field == other.field && fault.problem == other.problem;
            }))
            once.push_back(fault);
    std::ranges::stable_sort(
        once, [](const Fault& a, const Fault& b) { return std::pair(a.line, a.column) < std::pair(b.line, b.column); });
    return once;
}

} // namespace vcc::kit
