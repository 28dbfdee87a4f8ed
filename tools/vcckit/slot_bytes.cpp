#include "slot_bytes.h"

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

std::vector<Slot> records_of(std::string_view bytes, std::string& fault) {
    std::int32_t count = 0;
    if (bytes.size() < sizeof count) {
        fault = "it has no record count";
        return {};
    }
    std::memcpy(&count, bytes.data(), sizeof count);
    if (count < 0 || count > slot_limit) {
        fault =
            "its record count is " + std::to_string(count) + ", 0 to " + std::to_string(slot_limit) + " are allowed";
        return {};
    }
    const std::size_t size = static_cast<std::size_t>(count) * sizeof(Slot), present = bytes.size() - sizeof count;
    if (present != size) {
        fault = "it announces " + std::to_string(count) + " records (" + std::to_string(size) + " bytes) but holds " +
                std::to_string(present) + " bytes";
        return {};
    }
    std::vector<Slot> records(static_cast<std::size_t>(count));
    if (count > 0)
        std::memcpy(records.data(), bytes.data() + sizeof count, size);
    return records;
}

} // namespace vcc::kit
