#include "vcckit/source/packed_screen.h"

#include "core/files.h"
#include "platform/files.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace vcc::kit {

namespace fs = std::filesystem;

namespace {

/// The reason begins with the file name.
std::string read_records(const std::string& path, std::vector<Slot>& records) {
    const auto bytes = read_file(path);
    if (!bytes)
        return path + " " + bytes.reason();
    CheckedRecords checked = check_slot_file(*bytes);
    records = std::move(checked.records);
    return checked.fault.empty() ? "" : path + " is not a slot file: " + checked.fault;
}

} // namespace

bool is_installation(const std::string& folder) {
    constexpr const char* signs[] = {path::language_choice, path::buffer_list, path::settings};
    return std::ranges::any_of(signs, [&](const char* sign) {
        return platform::file_exists(platform::name_of(platform::system_path(folder) / sign));
    });
}

std::string language_file_name(const LanguageRow& language, std::string_view name) {
    return "tools/language/" + std::string(language.folder) + "/" + std::string(language.prefix) + std::string(name);
}

std::string slot_file_name(const LanguageRow& language, std::string_view screen) {
    return language_file_name(language, std::string(screen) + ".slt");
}

std::string write_packed_screen(const Screen& screen, const std::string& installation, FileSet& files,
                                std::vector<std::string>& written) {
    for (std::size_t i = 0; i < languages.size(); ++i) {
        if (!screen.describes(i))
            continue;
        const auto& [slots, toggles, has_toggle_file] = screen.records[i];
        for (const auto& [ending, content] : {std::pair(".slt", &slots), std::pair(".tgl", &toggles)}) {
            const std::string name = language_file_name(languages[i], screen.name + ending);
            const std::string path = platform::name_of(platform::system_path(installation) / name);
            if (content == &toggles && !has_toggle_file) {
                files.remove(path);
                continue;
            }
            written.push_back(name);
            if (std::string reason = files.write(path, slot_file_bytes(*content)); !reason.empty())
                return reason;
        }
    }
    return {};
}

Result<ScreenRecords> read_packed_records(const std::string& slot_file) {
    const std::string toggle_file = platform::name_of(platform::system_path(slot_file).replace_extension(".tgl"));
    ScreenRecords records;
    records.has_toggle_file = platform::file_exists(toggle_file);
    std::string reason = read_records(slot_file, records.slots);
    if (reason.empty() && records.has_toggle_file)
        reason = read_records(toggle_file, records.toggles);
    if (!reason.empty())
        return Failure{std::move(reason)};
    return records;
}

Result<Screen> read_packed_screen(const std::string& installation, const std::string& name) {
    Screen screen;
    screen.name = name;
    for (std::size_t i = 0; i < languages.size(); ++i) {
        auto records = read_packed_records(
            platform::name_of(platform::system_path(installation) / slot_file_name(languages[i], name)));
        if (!records)
            return Failure{records.reason()};
        screen.records[i] = std::move(*records);
    }
    return screen;
}

} // namespace vcc::kit
