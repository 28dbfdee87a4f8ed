#include "vcckit/record/slot_bytes.h"

#include <cstring>

namespace vcc::kit {

std::string slot_file_bytes(const std::vector<Slot>& records) {
    const auto count = static_cast<std::int32_t>(records.size());
    std::string bytes(sizeof count + records.size() * sizeof(Slot), '\0');
    std::memcpy(bytes.data(), &count, sizeof count);
    if (!records.empty())
        std::memcpy(bytes.data() + sizeof count, records.data(), records.size() * sizeof(Slot));
    return bytes;
}

CheckedRecords check_slot_file(std::string_view bytes) {
    constexpr std::size_t count_size = 4;
    Result<std::vector<Slot>> read = read_slot_file(bytes);
    CheckedRecords checked{{}, read.reason()};
    const std::size_t used = read ? count_size + read->size() * sizeof(Slot) : bytes.size();
    if (bytes.size() < count_size)
        checked.fault = bytes.empty() ? "is empty" : "is too short for a record count";
    else if (bytes.size() != used)
        checked.fault = "has " + std::to_string(bytes.size() - used) + " bytes after its last record";
    checked.records = std::move(read).value_or({});
    return checked;
}

} // namespace vcc::kit
