// Slot and toggle files as bytes: a count and that many records.
#pragma once

#include "screen/slot.h"

#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit {

/// A screen in one language: what its two files hold.
struct ScreenRecords {
    std::vector<Slot> slots;
    std::vector<Slot> toggles;
    bool has_toggle_file = false; ///< a toggle file may exist and hold no record
};

std::string slot_file_bytes(const std::vector<Slot>& records);

/// The records, or an empty list and the reason in `fault`: too short, longer than its count says, more than 200.
std::vector<Slot> records_of(std::string_view bytes, std::string& fault);

} // namespace vcc::kit
