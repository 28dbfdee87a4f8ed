// Every kind of fault that the tool reports, with a code that never changes its meaning; the table of them is
// fault_table.inc.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace vcc::kit {

enum class FaultCode {
#define FAULT(number, name, title, explanation, example) name = (number),
#include "vcckit/faults/fault_table.inc"
#undef FAULT
};

struct FaultRow {
    FaultCode code;
    std::string_view title;       ///< what is wrong, without details
    std::string_view explanation; ///< why it matters and what to do, in one or two sentences
    std::string_view example;     ///< something with this fault
};

/// By code.
inline constexpr FaultRow fault_rows[] = {
#define FAULT(number, name, title, explanation, example) {FaultCode::name, title, explanation, example},
#include "vcckit/faults/fault_table.inc"
#undef FAULT
};
static_assert(std::ranges::adjacent_find(fault_rows, std::ranges::greater_equal(), &FaultRow::code) ==
                  std::ranges::end(fault_rows),
              "the table is by code");

/// "VK012"
std::string code_text(FaultCode code);

/// Said of a word that is no code.
std::string no_such_fault(std::string_view code);

/// The row of a code as reported, in any letter case; null if there is none.
const FaultRow* find_fault_row(std::string_view code);

} // namespace vcc::kit
