#include "vcckit/check/source_check.h"

#include "vcckit/check/check.h"
#include "vcckit/faults/silence.h"
#include "vcckit/text/nearest.h"

#include "platform/files.h"

#include <algorithm>
#include <filesystem>

namespace vcc::kit {

namespace fs = std::filesystem;

namespace {

constexpr const char *slots = "records.slt", *toggles = "records.tgl"; ///< stand for files while they are checked

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

/// The places of a packed record; null if the source does not describe it.
const RecordPlaces* places_of(const Fault& fault, const ScreenPlaces& places) {
    const auto& records = fault.file.ends_with(".tgl") ? places.toggles : places.slots;
    const auto record = static_cast<std::size_t>(std::max(fault.record, 0));
    return record < records.size() && records[record].whole.line > 0 ? &records[record] : nullptr;
}

/// Moves a fault from a record to its place in the source.
Fault at_source(const Fault& fault, const ScreenPlaces& places) {
    const RecordPlaces* const at = places_of(fault, places);
    return source_fault(fault.code, at ? at->of(fault.field) : Place{1, 1, 0}, at ? at->where : "", fault.field,
                        fault.problem, fault.advice);
}

/// Whether the source itself says that both languages have the same text: it writes it for each of them.
bool is_meant(const Fault& fault, const ScreenSource& source) {
    const RecordPlaces *one = places_of(fault, source.places[0]), *other = places_of(fault, source.places[1]);
    return fault.code == FaultCode::text_untranslated && one && other && one->of("text") != other->of("text");
}

Faults faults_of_records(const ScreenSource& source, bool fonts) {
    Installation nothing; // other files are not read
    nothing.fonts = fonts;
    Faults faults, untranslated;
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
    if (!source.screen.language)
        check_translation_of(screens[0], screens[1], untranslated);
    for (const Fault& fault : untranslated)
        if (!is_meant(fault, source))
            faults.push_back(at_source(fault, source.places[1]));
    return faults;
}

ScreenSource read_source(const std::string& file, std::string_view text, bool fonts) {
    ScreenSource source = read_screen_source(text, measure_of_fonts(fonts));
    if (source.screen.name.empty())
        source.screen.name = platform::name_of(platform::system_path(file).stem());
    return source;
}

void trace_to_source(const std::string& file, const Installation& installation, Faults& faults) {
    const auto& text = installation.text_file(file);
    if (!text)
        return;
    const ScreenSource source = read_source(file, *text, installation.fonts);
    const auto* const row = std::ranges::find(screen_files, source.screen.name, &ScreenFile::name);
    if (row == screen_files.end() || !source.faults.empty())
        return;
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const ScreenFiles& packed = screen_of(installation.by_language[i], row->kind);
        const ScreenRecords& records = source.screen.records[i];
        if (source.screen.describes(i) && (records.slots != packed.set.slots || records.toggles != packed.set.toggles))
            return; // it is changed, and not packed yet
        std::erase_if(faults,
                      [&](const Fault& fault) { return fault.file == packed.slot_file && is_meant(fault, source); });
    }
    for (std::size_t i = 0; i < languages.size(); ++i)
        for (Fault& fault : faults) {
            const ScreenFiles& packed = screen_of(installation.by_language[i], row->kind);
            const bool here = fault.file == packed.slot_file || fault.file == packed.toggle_file;
            if (!here || !source.screen.describes(i) || fault.record < 0 || !places_of(fault, source.places[i]))
                continue;
            Fault traced = at_source(fault, source.places[i]);
            traced.file = file;
            traced.record = fault.record;
            traced.fatal = fault.fatal;
            fault = std::move(traced);
        }
}

void check_name(const ScreenSource& source, Faults& faults) {
    if (std::ranges::find(screen_files, source.screen.name, &ScreenFile::name) != screen_files.end())
        return;
    const Place place = source.name_place.line > 0 ? source.name_place : Place{1, 1, 0};
    faults.push_back(source_fault(FaultCode::unread_screen_name, place, "", "name",
                                  "the program reads no screen \"" + source.screen.name + "\"",
                                  "it reads vcc, vcc_options, vcc_options_info and mess; --any-name packs others",
                                  nearest_word(source.screen.name, screen_files, &ScreenFile::name)));
}

} // namespace

void trace_to_sources(const Installation& installation, Faults& faults) {
    std::error_code error;
    for (const char* folder : {"screens", "../screens"})
        for (fs::directory_iterator file(folder, error), end; !error && file != end; file.increment(error))
            if (file->path().extension() == ".toml")
                trace_to_source(std::string(folder) + "/" + platform::name_of(file->path().filename()), installation,
                                faults);
}

SourceCheck check_source(const std::string& file, std::string_view text, const SourceRules& rules) {
    ScreenSource source = read_source(file, text, rules.fonts);
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
