// Whole records: made, copied, taken away, renumbered, and groups written out one by one.
#pragma once

#include "vcckit/edit/source_edit.h"

#include "core/result.h"

#include <string>

namespace vcc::kit::edit {

// The text after the operation of that name.
Result<std::string> create_record(const std::string& text, const Operation& operation);
Result<std::string> copy_record(const std::string& text, const Operation& operation);
Result<std::string> remove_record(const std::string& text, const Address& address, const EditRules& rules);
Result<std::string> renumber_record(const std::string& text, const Operation& operation, const EditRules& rules);
Result<std::string> split_group(const std::string& text, const Address& address);

} // namespace vcc::kit::edit
