// Slot files and toggle files: a count and that many records.
#pragma once

#include "core/result.h"
#include "screen/slot.h"

#include <string>
#include <string_view>
#include <vector>

namespace vcc {

/// The records of a slot or toggle file in memory. Fails if the file is shorter than its count announces or has more
/// than 200 records; a file too short for a count has none. Ignores what follows the records.
Result<std::vector<Slot>> read_slot_file(std::string_view bytes);

/// Loads the set's slots. Returns their number; 0 if the file has none or is rejected, 1 if it cannot be opened (no
/// record is then loaded). Messages go to the status line; a file that is rejected or cannot be opened is also logged.
int load_slots(const std::string& path, SlotSet& set);

/// Loads the toggles of a slot file from their own file. Returns their number, 0 in every other case.
int load_toggles(const std::string& slot_path, SlotSet& set);

/// Loads both; returns the sum of the two results.
int load_slot_set(const std::string& path, SlotSet& set);

} // namespace vcc
