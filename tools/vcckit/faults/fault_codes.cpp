#include "vcckit/faults/fault_codes.h"

#include <charconv>
#include <cstdio>

namespace vcc::kit {

std::string code_text(FaultCode code) {
    char text[8] = {};
    std::snprintf(text, sizeof text, "VK%03d", static_cast<int>(code));
    return text;
}

std::string no_such_fault(std::string_view code) {
    return "there is no fault " + std::string(code) + "; \"vcckit explain\" lists the codes";
}

const FaultRow* find_fault_row(std::string_view code) {
    constexpr std::size_t length = 5;
    if (code.size() != length || (code[0] | 0x20) != 'v' || (code[1] | 0x20) != 'k')
        return nullptr;
    int number = 0;
    const char* const end = code.data() + code.size();
    if (std::from_chars(code.data() + 2, end, number).ptr != end)
        return nullptr;
    const auto* const found = std::ranges::find(fault_rows, FaultCode{number}, &FaultRow::code);
    return found == std::ranges::end(fault_rows) ? nullptr : found;
}

} // namespace vcc::kit
