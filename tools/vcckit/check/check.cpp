#include "vcckit/check/check.h"

namespace vcc::kit {

namespace {

constexpr Check all_checks[] = {
    {"settings", read_settings},
    {"fonts", read_fonts},
    {"messages", read_messages},
    {"text windows", read_windows},
    {"graphic buffers", read_buffers},
    {"sounds and music", read_sounds},
    {"screens", read_screens},
    {"pictures, films and other files", check_program_files},
    {"records", check_records},
    {"fixed slots", check_fixed_slots},
    {"value entries", check_values},
    {"overlaps", check_overlaps},
    {"help pages", check_help},
    {"texts that the program writes", check_program_texts},
    {"texts of the screens", check_screen_texts},
    {"languages", check_languages},
    {"encodings", check_encoding},
    {"files that nothing reads", check_unread},
};

} // namespace

std::span<const Check> checks() {
    return all_checks;
}

Faults check_installation(Installation& installation, const std::function<void(std::string_view subject)>& progress) {
    Faults faults;
    for (const Check& check : all_checks) {
        if (progress)
            progress(check.subject);
        check.run(installation, faults);
    }
    trace_to_sources(installation, faults);
    return merged(std::move(faults));
}

} // namespace vcc::kit
