// The configuration file on disk. The graphics library would write it in place, which loses everything if the program
// is killed or the disk is full at that moment, and it drops blanks and comments. So changes are merged into the file's
// own text, and the file is replaced in one step.
#include "settings/config_file.h"

#include "core/files.h"
#include "core/handles.h"
#include "core/installation.h"
#include "core/log.h"
#include "platform/files.h"
#include "platform/latin1.h"
#include "settings/config_text.h"

#include <allegro.h>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace vcc {

namespace {

constexpr const char* temporary_suffix = ".new";

/// Copies the names from one of the library's listing functions, and frees its own.
template <typename List>
std::vector<std::string> listed(List list) {
    const char** names = nullptr;
    const int count = list(&names);
    std::vector<std::string> copies(names, names + (names != nullptr ? std::max(count, 0) : 0));
    free_config_entries(&names);
    return copies;
}

std::vector<std::string> keys_of(const char* section) {
    return listed([=](const char*** names) { return list_config_entries(section, names); });
}

std::string without_brackets(std::string_view section) {
    if (section.starts_with('['))
        section.remove_prefix(1);
    if (section.ends_with(']'))
        section.remove_suffix(1);
    return std::string(section);
}

ConfigValues held_values() {
    ConfigValues values;
    for (const std::string& section : listed(list_config_sections))
        for (const std::string& key : keys_of(section.c_str()))
            values.emplace(std::pair{without_brackets(section), key},
                           get_config_string(section.c_str(), key.c_str(), ""));
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

/// The library reads and writes its files as UTF-8.
std::vector<ConfigChange> as_utf8(std::vector<ConfigChange> changes) {
    for (ConfigChange& change : changes) {
        change.section = platform::utf8_from_latin1(change.section);
        change.key = platform::utf8_from_latin1(change.key);
        if (change.value)
            change.value = platform::utf8_from_latin1(*change.value);
    }
    return changes;
}

// The values on which file and library last agreed (nothing until the file is taken over) and the file's text then.
// Only what the library has changed since is written.
std::optional<ConfigValues> agreed_values;
std::string agreed_text;
bool library_changed = false; ///< it may hold more

std::string file_name() {
    return platform::resolve_path(path::settings);
}

/// Whether the library holds the shared file's values. A module may leave another file selected: that one lacks a
/// section of ours, and its values must not go into our file.
bool is_shared_file(const ConfigValues& held) {
    return agreed_values && std::ranges::all_of(*agreed_values, [&](const auto& entry) {
               const std::string& section = entry.first.first;
               const auto first = held.lower_bound({section, {}});
               return first != held.end() && first->first.first == section;
           });
}

/// Loads `text` into the library, without a file that it could damage. The library first writes its changes into its
/// current file in place; it knows that file by a relative name, which leads nowhere from another folder.
void hold(const std::string& text) {
    const platform::FolderVisit elsewhere(platform::folder_of_program(file_name()));
    set_config_data(text.c_str(), static_cast<int>(text.size()));
}

/// Has the library read the file, which has this text.
void take_over(const std::string& text) {
    if (const std::string apart = with_sections_apart(text); apart == text)
        set_config_file(file_name().c_str());
    else
        hold(platform::latin1_from_utf8(apart)); // the file itself changes with the next value
    agreed_values = held_values();
    agreed_text = text;
    library_changed = false;
}

/// Merges the library's changes into the file, which other programs may have written meanwhile, and reads it again.
/// A file that has gone is written again. After a failure they stay in memory for the next time. False, with nothing to
/// merge, if the library holds another file's values.
bool merge_changes() {
    const ConfigValues held = agreed_values ? held_values() : ConfigValues();
    if (!is_shared_file(held))
        return false;
    const auto file = read_file(path::settings);
    const bool unreadable = !file && platform::file_exists(file_name()); // replacing it would lose its contents
    const std::string before = file ? *file : agreed_text;
    const std::vector<ConfigChange> changes = as_utf8(changes_between(*agreed_values, held));
    const std::string after = changes.empty() ? before : with_sections_apart(apply_changes(before, changes));
    if ((file ? after == *file : after.empty()) || (!unreadable && replace_text(file_name(), after))) {
        hold("\n");
        take_over(after);
    } else {
        static bool reported = false;
        if (!std::exchange(reported, true))
            write_log(format_text("Cannot write %s", path::settings));
        hold(apply_changes("", changes_between({}, held)));
    }
    return true;
}

} // namespace

void set_config_value(const std::string& section, const std::string& key, const std::string& value) {
    const char* const held = get_config_string(section.c_str(), key.c_str(), nullptr);
    if (held && held == value) // setting it again would still have the library write the file
        return;
    set_config_string(section.c_str(), key.c_str(), value.c_str());
    library_changed = true;
}

void flush_settings() {
    const bool has_work = library_changed || !agreed_values || read_file(path::settings).value_or("") != agreed_text;
    if (has_work && !merge_changes())
        flush_config_file();
}

void select_config_file() {
    if (merge_changes())
        return;
    std::remove((file_name() + temporary_suffix).c_str()); // of an interrupted write
    take_over(read_file(path::settings).value_or(""));
}

bool config_flag(const char* section, const char* key) {
    if (const char* const value = get_config_string(section, key, nullptr))
        return std::string_view(value).starts_with("yes");
    // The library returns null for an empty value, too; its list of keys has only those that exist.
    return std::ranges::none_of(keys_of(section),
                                [&](const std::string& name) { return platform::same_but_for_case(name, key); });
}

} // namespace vcc
