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

#include <algorithm>
#include <cstdio>

namespace vcc {

namespace {

constexpr const char* temporary_suffix = ".new";

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

/// The library reads and writes its files as UTF-8, whatever it holds.
std::vector<ConfigChange> as_utf8(std::vector<ConfigChange> changes) {
    for (ConfigChange& change : changes) {
        change.section = platform::utf8_from_latin1(change.section);
        change.key = platform::utf8_from_latin1(change.key);
        if (change.value)
            change.value = platform::utf8_from_latin1(*change.value);
    }
    return changes;
}

/// Guards the shared file. Owns the values on which the file and the library last agreed: what the library holds
/// beside them is to be written, and nothing else is.
class SharedFile {
public:
    /// Makes the library hold the file as it is on the disk.
    void take_over();

    /// Merges what the library changed into the file, beside what other programs may have written there meanwhile, and
    /// takes it over again. When that fails, the values live on in memory, and the next write tries again. False while
    /// the library does not hold this file's values: there is nothing to write then.
    bool write();

private:
    bool is_held(const ConfigValues& held) const;
    bool merge(const std::vector<ConfigChange>& changes) const;
    void hold(const std::string& text) const;
    void report_failure();

    std::string name() const { return platform::resolve_path(path::settings); }

    std::optional<ConfigValues> agreed_; ///< nothing before the file is taken over
    bool reported_ = false;
};

/// A module may leave another file selected. It lacks a section that ours had; its values are none of our file's.
bool SharedFile::is_held(const ConfigValues& held) const {
    return agreed_ && std::ranges::all_of(*agreed_, [&](const auto& entry) {
               const std::string& section = entry.first.first;
               const auto first = held.lower_bound({section, {}});
               return first != held.end() && first->first.first == section;
           });
}

void SharedFile::take_over() {
    const std::string text = read_file(name()).value_or("");
    const std::string apart = with_sections_apart(text);
    if (apart == text || replace_text(name(), apart)) {
        set_config_file(name().c_str());
    } else {
        report_failure();
        hold(platform::latin1_from_utf8(apart));
    }
    agreed_ = held_values();
}

bool SharedFile::write() {
    const ConfigValues held = agreed_ ? held_values() : ConfigValues();
    if (!is_held(held))
        return false;
    if (merge(as_utf8(changes_between(*agreed_, held)))) {
        hold("\n");
        take_over();
    } else {
        report_failure();
        hold(apply_changes("", changes_between({}, held)));
    }
    return true;
}

bool SharedFile::merge(const std::vector<ConfigChange>& changes) const {
    if (changes.empty())
        return true;
    const auto file = read_file(name());
    if (!file && platform::file_exists(name()))
        return false; // not readable: replacing it would lose what is in it
    const std::string before = file ? *file : "";
    const std::string after = apply_changes(before, changes);
    return after == before || replace_text(name(), after);
}

/// Makes the library hold `text`, without a file that it could damage. It would write its changes into the file that it
/// has first, in place; it knows that file by its relative name, so there is nothing to write when it does so from
/// elsewhere.
void SharedFile::hold(const std::string& text) const {
    const platform::FolderVisit elsewhere(platform::folder_of_program(name()));
    set_config_data(text.c_str(), static_cast<int>(text.size()));
}

void SharedFile::report_failure() {
    if (!reported_)
        write_log(format_text("Cannot write %s", path::settings));
    reported_ = true;
}

SharedFile shared_file;

} // namespace

void flush_settings() {
    if (!shared_file.write())
        flush_config_file();
}

void select_config_file() {
    if (shared_file.write())
        return;
    std::remove((platform::resolve_path(path::settings) + temporary_suffix).c_str()); // of an interrupted write
    shared_file.take_over();
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
