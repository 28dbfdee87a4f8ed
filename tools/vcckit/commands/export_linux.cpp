// The command export: an installation as a zip for players.
#include "vcckit/commands/commands.h"

#include "vcckit/check/config_walk.h"
#include "vcckit/files/new_file.h"
#include "vcckit/files/run_program.h"
#include "vcckit/files/temporary_folder.h"
#include "vcckit/source/packed_screen.h"

#include "core/files.h"
#include "core/installation.h"
#include "platform/files.h"
#include "settings/config_text.h"
#include "settings/settings.h"

#include <cstdio>
#include <filesystem>
#include <functional>

namespace vcc::kit {

namespace {

namespace fs = std::filesystem;

bool is_for_windows(const fs::path& file) {
    return file.extension() == ".exe" || file.extension() == ".dll";
}

bool is_for_linux(const fs::path& file) {
    return file == "vcc" || file.extension() == ".so";
}

/// What playing leaves in an installation: log, pictures of help pages, older settings; and files that are not
/// finished.
bool is_left_behind(const fs::path& file) {
    const bool setting = file.parent_path() == fs::path(path::settings).parent_path() && file.stem() == "vcc" &&
                         file.extension() != ".cfg";
    return file.parent_path() == path::log_folder || file == path::help_picture || setting ||
           file.extension() == ".new";
}

/// The settings that a player gets: what the program itself writes has its default again.
std::string settings_for_players(const std::string& text) {
    ConfigValues values;
    Faults not_told; // vcckit check reports them
    walk_config(path::settings, text, not_told, [&](const ConfigEntry& entry) {
        if (!entry.key.empty())
            values.emplace(std::pair(entry.section, entry.key), entry.value);
    });
    std::vector<ConfigChange> changes;
    for (const SettingRow& row : rows::all) {
        const std::string section(row.section), key(row.key);
        const auto standard = values.find({section, key + "_default"});
        if (!row.has(rows::loaded) || !row.has(rows::saved) || !values.contains({section, key}))
            continue;
        if (standard != values.end())
            changes.push_back({section, key, standard->second});
        else if (row.kind == SettingKind::text) // the player's name and address
            changes.push_back({section, key, std::string(row.text)});
    }
    return apply_changes(text, changes);
}

/// Links the files below a folder that are wanted and not in the stage yet. Empty, or why it failed.
std::string link_files(const fs::path& folder, const fs::path& stage,
                       const std::function<bool(const fs::path& name)>& wanted) {
    std::error_code error;
    for (fs::recursive_directory_iterator each(folder, error), end; !error && each != end; each.increment(error)) {
        const fs::path name = each->path().lexically_relative(folder), target = stage / name;
        if (each->is_directory(error)) {
            fs::create_directories(target, error);
            continue;
        }
        if (!wanted(name) || fs::exists(target, error))
            continue;
        fs::create_directories(target.parent_path(), error);
        fs::create_symlink(each->path(), target, error);
    }
    return error ? "cannot read " + folder.string() + ": " + error.message() : "";
}

/// Puts the settings for players in place of the link to others. Empty, or why it failed.
std::string clean_settings(const fs::path& stage) {
    const std::string file = platform::resolve_path((stage / path::settings).string());
    const auto text = read_file(file);
    std::error_code error;
    return text && fs::remove(file, error) ? write_whole_file(file, settings_for_players(*text)) : "";
}

/// Empty, or why the zip could not be made of the folder's content.
std::string write_zip(const fs::path& stage, const fs::path& output) {
    NewFile zip(output.string());
    if (!zip.stream())
        return zip.reason();
    const platform::FolderVisit visit(stage.string());
    bool written = true;
    const auto status = run_program({"zip", "-qrX", "-", "."}, false, [&](std::string_view piece) {
        written = zip.write(piece);
        return written && !interrupted();
    });
    if (!status)
        return "cannot start zip: install the package of this name";
    if (!written || (status == 0 && !zip.commit()))
        return zip.reason();
    return status == 0 ? "" : "zip has failed";
}

std::string fault_of(const ExportRequest& request) {
    const fs::path folder = request.folder;
    if (!is_installation(request.folder))
        return request.folder + " is not an installation";
    if (request.windows.empty() && !fs::exists(folder / "vcc"))
        return request.folder + " has no program: put a copy of vcc there";
    if (!request.windows.empty() && !fs::exists(fs::path(request.windows) / "vcc.exe"))
        return request.windows + " has no vcc.exe: give the folder of the program for Windows";
    return {};
}

} // namespace

int run_export(const ExportRequest& request) {
    const InterruptionGuard guard;
    std::error_code error;
    const fs::path folder = fs::absolute(request.folder, error), output = fs::absolute(request.output, error);
    std::string fault = fault_of(request);
    TemporaryFolder temporary;
    if (fault.empty())
        fault = temporary.make();
    const fs::path stage = temporary.path() / output.stem();
    const bool windows = !request.windows.empty();
    if (fault.empty())
        fault = link_files(folder, stage, [&](const fs::path& name) {
            return !is_left_behind(name) && (windows ? !is_for_linux(name) : !is_for_windows(name));
        });
    if (fault.empty() && windows)
        fault = link_files(fs::absolute(request.windows, error), stage, [](const fs::path& name) {
            return is_for_windows(name) && !name.has_parent_path() && name.stem() != "vcckit";
        });
    if (fault.empty())
        fault = clean_settings(stage);
    if (fault.empty())
        fault = write_zip(temporary.path(), output);
    if (!fault.empty())
        return complain(fault);
    std::printf("wrote %s\n", request.output.c_str());
    return exit_clean;
}

} // namespace vcc::kit
