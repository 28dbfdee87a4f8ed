#include "vcckit/source/unpack.h"

#include "vcckit/record/fields.h"
#include "vcckit/source/record_lines.h"
#include "vcckit/source/short_source.h"
#include "vcckit/text/latin1.h"

namespace vcc::kit {

namespace {

void write_records(std::string& out, const Screen& screen, RecordSet kind, const char* heading) {
    const std::size_t count = (screen.records[0].*kind).size();
    for (std::size_t index = 0; index < count; ++index) {
        const Versions versions = record_at(screen, kind, index);
        if (is_gap(versions) && index + 1 < count)
            continue;
        Lines lines = changes(versions, everywhere(empty_slot()));
        std::string copy;
        if (kind == &ScreenRecords::toggles && index < screen.records[0].slots.size()) {
            const Versions slot = record_at(screen, &ScreenRecords::slots, index);
            // Gaps are not described, so they cannot be copied.
            Lines shorter = changes(versions, slot);
            if (!is_gap(slot) && shorter.size() < lines.size()) {
                lines = std::move(shorter);
                copy = "copy = " + std::to_string(index) + "\n";
            }
        }
        out += std::string("\n[[") + heading + "]]\nindex = " + std::to_string(index) + "\n" + copy + text_of(lines);
    }
}

std::string heading_of(const Screen& screen) {
    std::string out;
    if (!screen.name.empty())
        out += "name = " + *quoted_text(screen.name) + "\n";
    if (screen.language)
        out += "language = " + *quoted_text(languages[*screen.language].code) + "\n";
    const ScreenRecords& first = screen.records[0];
    if (first.has_toggle_file && first.toggles.empty())
        out += "toggle_count = 0\n";
    return out;
}

} // namespace

std::string difference_of_structure(const Screen& screen) {
    const ScreenRecords& first = screen.records[0];
    for (const ScreenRecords& other : screen.records) {
        if (other.slots.size() != first.slots.size())
            return "the languages have " + std::to_string(first.slots.size()) + " and " +
                   std::to_string(other.slots.size()) + " slots";
        if (other.toggles.size() != first.toggles.size() || other.has_toggle_file != first.has_toggle_file)
            return "the languages have " + std::to_string(first.toggles.size()) + " and " +
                   std::to_string(other.toggles.size()) + " toggle records, or one has no toggle file";
    }
    return {};
}

bool describes(std::string_view source, const Screen& screen, const TextMeasure& measure) {
    const ScreenSource read = read_screen_source(source, measure);
    if (!read.faults.empty() || (read.screen.language && read.screen.language != screen.language))
        return false;
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const ScreenRecords &a = read.screen.records[i], &b = screen.records[i];
        if (!screen.describes(i))
            continue;
        if (slot_file_bytes(a.slots) != slot_file_bytes(b.slots) || a.has_toggle_file != b.has_toggle_file ||
            slot_file_bytes(a.toggles) != slot_file_bytes(b.toggles))
            return false;
    }
    return true;
}

std::string write_screen_source(const Screen& screen) {
    const std::string heading = heading_of(screen);
    std::string source = heading + short_source(screen);
    if (describes(source, screen))
        return source;
    source = heading; // one table per record, without styles and repetitions, describes any record
    write_records(source, screen, &ScreenRecords::slots, "slot");
    write_records(source, screen, &ScreenRecords::toggles, "toggle");
    return source;
}

} // namespace vcc::kit
