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

namespace vcc {

namespace {

constexpr const char* temporary_suffix = ".new";

/// Copies the names from one of the library's listing functions, and frees its own.
std::vector<std::string> taken(const char** names, int count) {
    std::vector<std::string> copies(names, names + (names != nullptr ? std::max(count, 0) : 0));
    free_config_entries(&names);
    return copies;
}

std::vector<std::string> sections() {
    const char** names = nullptr;
    const int count = list_config_sections(&names);
    return taken(names, count);
}

std::vector<std::string> keys_of(const char* section) {
    const char** names = nullptr;
    const int count = list_config_entries(section, &names);
    return taken(names, count);
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
    for (const std::string& section : sections())
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

/// Guards the shared file. Keeps the values on which file and library last agreed, and writes only what the library has
/// changed since.
class SharedFile {
public:
    void take_over();

    /// Merges the library's changes into the file, which other programs may have written meanwhile, and reads it again.
    /// After a failure they stay in memory for the next write. False, with nothing to write, if the library holds
    /// another file's values.
    bool write();

    void note_change() { changed_ = true; }

    /// Whether write() has something to do: a noted change, or a file that others have written.
    bool is_stale() const { return changed_ || !agreed_ || read_file(name()).value_or("") != text_; }

private:
    bool is_held(const ConfigValues& held) const;
    void take_over(const std::string& text);
    void hold(const std::string& text) const;
    void report_failure();

    std::string name() const { return platform::resolve_path(path::settings); }

    std::optional<ConfigValues> agreed_; ///< nothing until the file is taken over
    std::string text_;                   ///< of the file then
    bool changed_ = false;               ///< the library may hold more
    bool reported_ = false;
};

/// A module may leave another file selected: that one lacks a section of ours, and its values must not go into our
/// file.
bool SharedFile::is_held(const ConfigValues& held) const {
    return agreed_ && std::ranges::all_of(*agreed_, [&](const auto& entry) {
               const std::string& section = entry.first.first;
               const auto first = held.lower_bound({section, {}});
               return first != held.end() && first->first.first == section;
           });
}

void SharedFile::take_over() {
    take_over(read_file(name()).value_or(""));
}

void SharedFile::take_over(const std::string& text) {
    text_ = text;
    if (const std::string apart = with_sections_apart(text); apart == text)
        set_config_file(name().c_str());
    else
        hold(platform::latin1_from_utf8(apart)); // the file itself changes with the next value
    agreed_ = held_values();
    changed_ = false;
}

bool SharedFile::write() {
    const ConfigValues held = agreed_ ? held_values() : ConfigValues();
    if (!is_held(held))
        return false;
    const auto file = read_file(name());
    const bool unreadable = !file && platform::file_exists(name()); // replacing it would lose its contents
    const std::string before = file ? *file : "";
    const std::vector<ConfigChange> changes = as_utf8(changes_between(*agreed_, held));
    const std::string after = changes.empty() ? before : with_sections_apart(apply_changes(before, changes));
    if (after == before || (!unreadable && replace_text(name(), after))) {
        hold("\n");
        take_over(after);
    } else {
        report_failure();
        hold(apply_changes("", changes_between({}, held)));
    }
    return true;
}

/// Loads `text` into the library, without a file that it could damage. The library first writes its changes into its
/// current file in place; it knows that file by a relative name, which leads nowhere from another folder.
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

void set_config_value(const std::string& section, const std::string& key, const std::string& value) {
    const char* const held = get_config_string(section.c_str(), key.c_str(), nullptr);
    if (held && held == value) // setting it again would still have the library write the file
        return;
    set_config_string(section.c_str(), key.c_str(), value.c_str());
    shared_file.note_change();
}

void flush_settings() {
    if (shared_file.is_stale() && !shared_file.write())
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
    // The library returns null for an empty value, too; its list of keys has only those that exist.
    return std::ranges::none_of(keys_of(section),
                                [&](const std::string& name) { return platform::same_but_for_case(name, key); });
}

} // namespace vcc
