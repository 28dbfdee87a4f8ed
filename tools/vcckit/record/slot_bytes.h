// Slot and toggle files as bytes: a count and that many records.
#pragma once

#include "screen/slot.h"

#include <string>
#include <string_view>
#include <vector>

namespace vcc::kit {

/// A screen in one language: the contents of its two files.
struct ScreenRecords {
    std::vector<Slot> slots;
    std::vector<Slot> toggles;
    bool has_toggle_file = false; ///< a toggle file may exist without records

    bool operator==(const ScreenRecords&) const = default;
};

std::string slot_file_bytes(const std::vector<Slot>& records);

/// What the program's reader takes of a file, and what is wrong with it: what that reader reports, and what it ignores
/// (a file without a count, bytes after the last record).
struct CheckedRecords {
    std::vector<Slot> records;
    std::string fault; ///< empty if nothing is wrong
};
CheckedRecords check_slot_file(std::string_view bytes);

} // namespace vcc::kit
