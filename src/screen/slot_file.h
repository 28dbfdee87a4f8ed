// Slot files and toggle files: a count and that many records.
#pragma once

#include "core/result.h"
#include "screen/slot.h"

#include <string>
#include <string_view>
#include <vector>

namespace vcc {

/// Records of a slot or toggle file in memory. Fails when the file is shorter than its count announces or has more than
/// 200 records; a file that is too short for a count has none. What follows the records is passed over.
Result<std::vector<Slot>> read_slot_file(std::string_view bytes);

/// Loads the set's slots: their number, 0 when the file holds none or is rejected, 1 when it cannot be opened (no
/// record is then loaded). Messages go to the status line; a file that is rejected or cannot be
/// opened also gets a log line.
int load_slots(const std::string& path, SlotSet& set);

/// Loads the toggles from the file that belongs to a slot file: their number, 0 in every other case.
int load_toggles(const std::string& slot_path, SlotSet& set);

/// Both; returns the sum of their results, as load_slots() and load_toggles() give it.
int load_slot_set(const std::string& path, SlotSet& set);

} // namespace vcc
