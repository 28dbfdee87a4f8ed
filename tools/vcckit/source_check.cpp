#include "source_check.h"

#include "check.h"
#include "nearest.h"
#include "silence.h"

#include "platform/files.h"

#include <algorithm>
#include <filesystem>

namespace vcc::kit {

namespace {

constexpr const char *slots = "slots", *toggles = "toggles"; ///< stand for files while records are checked

ScreenFiles files_of(const Screen& screen, std::size_t language) {
    ScreenFiles files;
    const auto* const row = std::ranges::find(screen_files, screen.name, &ScreenFile::name);
    // On other screens, as on help pages, numbers and actions mean what their module says.
    files.kind = row == screen_files.end() ? ScreenKind::message : row->kind;
    files.slot_file = slots;
    files.toggle_file = toggles;
    files.set = {screen.records[language].slots, screen.records[language].toggles};
    return files;
}

/// Moves a fault from a record to its place in the source.
Fault at_source(const Fault& fault, const ScreenPlaces& places) {
    const auto& records = fault.file == toggles ? places.toggles : places.slots;
    const auto record = static_cast<std::size_t>(std::max(fault.record, 0));
    if (record >= records.size())
        return source_fault(fault.code, {1, 1, 0}, "", fault.field, fault.problem, fault.advice);
    const RecordPlaces& at = records[record];
    return source_fault(fault.code, at.of(fault.field), at.where, fault.field, fault.problem, fault.advice);
}

Faults faults_of_records(const ScreenSource& source, bool fonts) {
    Installation nothing; // other files are not read
    nothing.fonts = fonts;
    Faults faults;
    std::array<ScreenFiles, languages.size()> screens;
    for (std::size_t i = 0; i < languages.size(); ++i) {
        screens[i] = files_of(source.screen, i);
        Faults found;
        check_records_of(nothing, nothing.by_language[i], screens[i], found);
        if (fonts)
            check_overlaps_of(screens[i], found);
        for (const Fault& fault : found)
            faults.push_back(at_source(fault, source.places[i]));
    }
    Faults found;
    check_translation_of(screens[0], screens[1], found);
    for (const Fault& fault : found)
        faults.push_back(at_source(fault, source.places[1]));
    return faults;
}

void check_name(const ScreenSource& source, Faults& faults) {
    std::vector<std::string> known;
    known.reserve(screen_files.size());
    for (const ScreenFile& row : screen_files)
        known.emplace_back(row.name);
    if (std::ranges::find(known, source.screen.name) != known.end())
        return;
    const Place place = source.name_place.line > 0 ? source.name_place : Place{1, 1, 0};
    faults.push_back(source_fault(FaultCode::unread_screen_name, place, "", "name",
                                  "the program reads no screen \"" + source.screen.name + "\"",
                                  "it reads vcc, vcc_options, vcc_options_info and mess; --any-name packs others",
                                  nearest_word(source.screen.name, known)));
}

} // namespace

SourceCheck check_source(const std::string& file, std::string_view text, const SourceRules& rules) {
    ScreenSource source = read_screen_source(text, rules.fonts ? measure_of_loaded_fonts() : TextMeasure{});
    if (source.screen.name.empty())
        source.screen.name = platform::name_of(platform::system_path(file).stem());
    Faults faults = std::move(source.faults);
    const bool readable = faults.empty();
    const auto silences = silences_of(text, faults);
    if (faults.empty()) {
        if (!rules.any_name)
            check_name(source, faults);
        for (Fault& fault : faults_of_records(source, rules.fonts))
            faults.push_back(std::move(fault));
    }
    std::erase_if(
        faults, [&](const Fault& fault) { return rules.ignored.contains(fault.code) || is_silenced(fault, silences); });
    faults = each_once(faults);
    for (Fault& fault : faults)
        fault.file = file;
    return {std::move(source.screen), std::move(faults), readable};
}

} // namespace vcc::kit
