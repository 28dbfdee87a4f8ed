#include "screen/slot.h"

#include "core/files.h"
#include "core/log.h"
#include "core/text.h"
#include "screen/status_line.h"

#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <utility>

namespace vcc {

namespace {

// Records are used as they are in the file.
static_assert(std::endian::native == std::endian::little);

/// The records of a file that has been read. Failures are logged; `none` completes the message if there are no records,
/// `no_room` tells that they cannot be held.
std::vector<Slot> take_records(const std::string& path, const Result<std::string>& bytes, std::string_view none,
                               void (*no_room)()) {
    Result<std::vector<Slot>> records = bytes ? read_slot_file(*bytes) : Failure{bytes.reason()};
    if (records && !records->empty())
        return std::move(*records);
    write_log(format_text("%s: %s", path.c_str(), records ? "has no records" : records.reason().c_str()));
    if (!bytes)
        show_status("Fehler beim oeffnen der Datei:", path);
    else if (records)
        show_status("Datei ja!", none);
    else
        no_room();
    return {};
}

} // namespace

Result<std::vector<Slot>> read_slot_file(std::string_view bytes) {
    std::int32_t count = 0;
    if (bytes.size() < sizeof count)
        return std::vector<Slot>();
    std::memcpy(&count, bytes.data(), sizeof count);
    bytes.remove_prefix(sizeof count);
    if (count < 0 || count > slot_limit)
        return Failure{format_text("%d records announced, 0 to %d are possible", count, slot_limit)};
    const std::size_t size = static_cast<std::size_t>(count) * sizeof(Slot);
    if (bytes.size() < size)
        return Failure{format_text("%d records announced, but the file ends after %d", count,
                                   static_cast<int>(bytes.size() / sizeof(Slot)))};
    std::vector<Slot> records(static_cast<std::size_t>(count));
    if (size > 0)
        std::memcpy(records.data(), bytes.data(), size);
    return records;
}

int load_slots(const std::string& path, SlotSet& set) {
    set.file = path;
    const auto bytes = read_file(path);
    set.slots = take_records(path, bytes, " Slots nein!", [] { show_status("Fehler beim allocieren", " des Slots!"); });
    return bytes ? set.slot_count() : 1;
}

int load_toggles(const std::string& slot_path, SlotSet& set) {
    const std::string path = replace_extension(slot_path, ".tgl");
    const auto bytes = read_file(path);
    set.toggles.clear();
    if (bytes.reason() != missing_file) // a set without toggles has no such file
        set.toggles = take_records(path, bytes, " Toggles nein!",
                                   [] { std::fputs("Fehler beim allocieren der toggles\n", stdout); });
    return set.toggle_count();
}

int load_slot_set(const std::string& path, SlotSet& set) {
    const int slots = load_slots(path, set);
    return slots + load_toggles(path, set);
}

} // namespace vcc
