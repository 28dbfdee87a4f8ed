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

std::string fault_of_slot_file(std::string_view bytes, const Result<std::vector<Slot>>& records) {
    constexpr std::size_t count_size = 4;
    if (bytes.size() < count_size)
        return bytes.empty() ? "is empty" : "is too short for a record count";
    const std::size_t used = records ? count_size + records->size() * sizeof(Slot) : bytes.size();
    return bytes.size() == used ? records.reason()
                                : "has " + std::to_string(bytes.size() - used) + " bytes after its last record";
}

} // namespace vcc::kit
