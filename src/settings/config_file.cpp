// The configuration file on the disk. The graphics library would write it in place, which loses everything when the
// program is killed or the disk is full at that moment, and it drops blanks and comments that it does not understand.
// So the changes are put into the file's own text, and the file is replaced in one step.

#include "core/files.h"
#include "core/handles.h"
#include "core/installation.h"
#include "core/log.h"
#include "platform/files.h"
#include "platform/latin1.h"
#include "platform/letter_case.h"
#include "settings/config_text.h"
#include "settings/settings.h"

#include <cstdio>

namespace vcc {

namespace {

constexpr const char* config_name = path::settings;
constexpr const char* temporary_suffix = ".new";

/// What the library held when it and the file last agreed; nothing before the file is selected.
std::optional<ConfigValues> agreed;

/// The names that one of the library's listing functions hands out, freed at the end.
class NameList {
public:
    NameList() = default;
    ~NameList() { free_config_entries(&names_); }
    NameList(const NameList&) = delete;
    NameList& operator=(const NameList&) = delete;

    static NameList sections() {
        NameList list;
        list.count_ = list_config_sections(&list.names_);
        return list;
    }
    static NameList keys(const char* section) {
        NameList list;
        list.count_ = list_config_entries(section, &list.names_);
        return list;
    }
    std::span<const char* const> names() const {
        return {names_, names_ != nullptr && count_ > 0 ? static_cast<std::size_t>(count_) : 0};
    }

private:
    NameList(NameList&&) = default;
    const char** names_ = nullptr;
    int count_ = 0;
};

std::string without_brackets(std::string_view section) {
    if (section.starts_with('['))
        section.remove_prefix(1);
    if (section.ends_with(']'))
        section.remove_suffix(1);
    return std::string(section);
}

/// Everything that the library holds in sections.
ConfigValues held_values() {
    ConfigValues values;
    const NameList sections = NameList::sections();
    for (const char* const section : sections.names()) {
        const NameList keys = NameList::keys(section);
        for (const char* const key : keys.names())
            values.emplace(std::pair{without_brackets(section), key}, get_config_string(section, key, ""));
    }
    return values;
}

/// A module may leave another file selected. It lacks a section that ours had; its values are none of our file's.
bool is_of_another_file(const ConfigValues& held) {
    for (const auto& entry : *agreed) {
        const std::string& section = entry.first.first;
        const auto first = held.lower_bound({section, {}});
        if (first == held.end() || first->first.first != section)
            return true;
    }
    return false;
}

bool write_whole_file(const std::string& name, const std::string& bytes) {
    FilePtr file(std::fopen(name.c_str(), "wb"));
    if (!file)
        return false;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
    return std::fclose(file.release()) == 0 && written;
}

bool replace_text(const std::string& name, const std::string& text) {
    const std::string temporary = name + temporary_suffix;
    if (write_whole_file(temporary, text) && platform::replace_file(temporary, name))
        return true;
    std::remove(temporary.c_str());
    return false;
}

/// Puts changes into the file on the disk, beside what other programs may have written there meanwhile.
bool change_file(const std::string& name, std::vector<ConfigChange> changes) {
    if (changes.empty())
        return true;
    for (ConfigChange& change : changes) { // the library reads and writes its files as UTF-8, whatever it holds
        change.section = platform::utf8_from_latin1(change.section);
        change.key = platform::utf8_from_latin1(change.key);
        if (change.value)
            change.value = platform::utf8_from_latin1(*change.value);
    }
    const auto file = read_file(name);
    if (!file && platform::file_exists(name))
        return false; // not readable: replacing it would lose what is in it
    const std::string before = file ? *file : "";
    const std::string after = apply_changes(before, changes);
    if (after == before)
        return true;
    return replace_text(name, after);
}

/// Makes the library hold `text` instead of the file that it has. It would write its changes into the old file first,
/// in place; it knows that file by its relative name, so there is nothing to write when it does so from elsewhere.
void hold_text_instead(const std::string& name, const std::string& text) {
    const platform::FolderVisit elsewhere(platform::folder_of_program(name));
    set_config_data(text.c_str(), static_cast<int>(text.size()));
}

void report_failure() {
    static bool reported = false;
    if (!reported)
        write_log(format_text("Cannot write %s", config_name));
    reported = true;
}

void select(const std::string& name) {
    const std::string text = read_file(name).value_or("");
    const std::string apart = with_sections_apart(text);
    if (apart == text || replace_text(name, apart)) {
        set_config_file(name.c_str());
    } else {
        report_failure();
        hold_text_instead(name, platform::latin1_from_utf8(apart));
    }
    agreed = held_values();
}

} // namespace

void flush_settings() {
    const ConfigValues held = agreed ? held_values() : ConfigValues();
    if (!agreed || is_of_another_file(held)) {
        flush_config_file();
        return;
    }
    const std::string name = platform::resolve_path(config_name);
    if (change_file(name, changes_between(*agreed, held))) {
        hold_text_instead(name, "\n");
        select(name);
        return;
    }
    report_failure();
    // The values live on in memory, without a file that the library could damage; the next flush tries again.
    hold_text_instead(name, apply_changes("", changes_between({}, held)));
}

void select_config_file() {
    const std::string name = platform::resolve_path(config_name);
    if (agreed && !is_of_another_file(held_values())) {
        flush_settings();
        return;
    }
    std::remove((name + temporary_suffix).c_str()); // left by a write that was interrupted
    select(name);
}

bool config_flag(const char* section, const char* key) {
    if (const char* const value = get_config_string(section, key, nullptr))
        return std::string_view(value).starts_with("yes");
    // The library does not tell an empty value from a missing key, its list of keys does.
    const NameList keys = NameList::keys(section);
    for (const char* const name : keys.names())
        if (platform::same_but_for_case(name, key))
            return false;
    return true;
}

} // namespace vcc
