// Checking the whole stage behind the changes.
#include "vcckit/serve/session.h"

#include "vcckit/check/check.h"
#include "vcckit/source/packed_screen.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

namespace vcc::kit::edit {

using nlohmann::json;

namespace {

constexpr std::chrono::milliseconds quiet_time{300};
constexpr int most_interruptions = 10; ///< of a check by requests; then they wait

/// The slot whose looks a toggle record is, or -1.
int slot_of_toggle(const std::vector<Slot>& slots, int record) {
    const auto index = static_cast<std::size_t>(record);
    if (index < slots.size() && slots[index].toggle > 0)
        return record;
    const auto pressed = std::ranges::find(slots, record, &Slot::activated);
    return pressed == slots.end() ? -1 : static_cast<int>(pressed - slots.begin());
}

} // namespace

void Session::check_behind() {
    Lock held(mutex_);
    while (!stopped_) {
        if (changes_ == checked_) {
            news_.wait(held);
            continue;
        }
        const std::uint64_t seen = changes_;
        news_.wait_for(held, quiet_time, [&] { return stopped_ || changes_ != seen; });
        if (!stopped_ && changes_ == seen)
            check_once(held);
    }
}

/// Requests go first: a check that they wait for begins again later.
void Session::check_once(Lock& held) {
    for (int interruption = 0; !stopped_; ++interruption) {
        const std::uint64_t seen = changes_;
        Installation installation;
        Faults faults;
        const bool whole = std::ranges::all_of(checks(), [&](const Check& each) {
            const bool goes_on = waiting_ == 0 || interruption >= most_interruptions;
            if (goes_on)
                each.run(installation, faults);
            return goes_on;
        });
        if (whole) {
            json told = json::array();
            for (const Fault& fault : merged(std::move(faults)))
                if (json placed = checked_fault_json(fault); !placed.is_null())
                    told.push_back(std::move(placed));
            checked_ = seen;
            events_.tell_state("faults", text_of_json({{"faults", std::move(told)}}));
            return;
        }
        news_.wait_for(held, quiet_time, [&] { return stopped_; });
        if (changes_ != seen)
            return; // they begin a new wait
    }
}

/// A fault of a packed file, at the document and slot that it comes from; null when its source tells it.
json Session::checked_fault_json(const Fault& fault) {
    const std::filesystem::path file(fault.file);
    const bool toggles = file.extension() == ".tgl", slots = file.extension() == ".slt";
    for (const auto& [name, document] : workspace_.documents()) {
        const Reading& reading = read(document);
        if (std::ranges::find(document.installs, fault.file) != document.installs.end())
            return fault_json(fault, name, -1);
        for (std::size_t i = 0; i < languages.size() && (slots || toggles); ++i) {
            if (std::filesystem::path(slot_file_name(languages[i], reading.screen.name)).stem() != file.stem())
                continue;
            Fault placed = fault;
            const int slot = toggles && fault.record >= 0
                                 ? slot_of_toggle(reading.screen.records[i].slots, fault.record)
                                 : fault.record;
            for (const json& described : reading.description.slots)
                if (described["index"] == slot)
                    placed.line = described["line"];
            const bool told_already = std::ranges::any_of(reading.faults, [&](const Fault& told) {
                return told.code == fault.code && told.field == fault.field && slot_of_fault(told) == slot;
            });
            return told_already ? json() : fault_json(placed, name, slot);
        }
    }
    return fault_json(fault, "", -1);
}

} // namespace vcc::kit::edit
