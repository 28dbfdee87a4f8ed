#include "vcckit/faults/fault_codes.h"

#include "core/log.h"
#include "platform/latin1.h"

namespace vcc::kit {

std::string code_text(FaultCode code) {
    return format_text("VK%03d", static_cast<int>(code));
}

std::string no_such_fault(std::string_view code) {
    return "there is no fault " + std::string(code) + "; \"vcckit explain\" lists the codes";
}

const FaultRow* find_fault_row(std::string_view code) {
    const auto* const found = std::ranges::find_if(
        fault_rows, [code](const FaultRow& row) { return platform::same_but_for_case(code_text(row.code), code); });
    return found == std::ranges::end(fault_rows) ? nullptr : found;
}

} // namespace vcc::kit
