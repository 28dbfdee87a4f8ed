// The command new: a folder of sources from which "make" builds an installation.
#include "vcckit/commands/commands.h"
#include "vcckit/files/embedded_files.h"
#include "vcckit/files/new_file.h"
#include "vcckit/files/temporary_folder.h"
#include "vcckit/source/packed_screen.h"
#include "vcckit/text/lines.h"

#include "core/files.h"
#include "core/installation.h"
#include "platform/files.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <optional>

namespace vcc::kit {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t theme_name_limit = 20; ///< characters

/// Of the modules, by their numbers.
constexpr const char* module_entries[] = {
    "uint8_t hq(uint8_t fullscreen, int32_t)",
    "uint8_t factory(int32_t, uint8_t fullscreen, int32_t, int32_t, int32_t)",
    "uint8_t battle(uint8_t fullscreen, int32_t)",
};

bool can_be_copied(const fs::path& folder) {
    return std::ranges::all_of(std::array{path::sound_setup, path::settings, path::buffer_list}, [&](const char* file) {
        return platform::file_exists(platform::name_of(folder / file));
    });
}

/// Beside the tool, installed or in the build folder.
std::optional<fs::path> built_in_installation() {
    const fs::path tool = platform::system_path(platform::program_path()).parent_path();
    std::error_code error;
    for (const char* place : {"../lib/games/veldor", "../../veldor"})
        if (can_be_copied(tool / place))
            return fs::canonical(tool / place, error);
    return std::nullopt;
}

/// "lantern-night" is "Lantern night".
std::string title_of(const std::string& name) {
    std::string title = name;
    std::ranges::replace_if(
        title, [](char c) { return c == '-' || c == '_'; }, ' ');
    title.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(title.front())));
    return title;
}

void fill_in(std::string& text, const std::string& mark, const std::string& value) {
    for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + value.size()))
        text.replace(at, mark.size(), value);
}

/// The effects of the built-in installation, and one theme.
std::string own_sound_setup(const std::string& built_in, const std::string& title) {
    std::string setup = built_in.substr(0, built_in.find("+190"));
    return setup + "+190\n\xA7" + title.substr(0, theme_name_limit) + "\n-theme00.wav\n";
}

/// The built-in settings, with the only theme for every module.
std::string own_settings(const std::string& built_in) {
    std::string settings;
    for (const std::string_view each : lines_of(built_in)) {
        const std::string line(each), key = line.substr(0, line.find(' '));
        if (key.ends_with("_theme") || key.ends_with("_theme_default"))
            settings += key + " = 0\n";
        else
            settings += (key == "number_of_themes" ? key + " = 1" : line) + "\n";
    }
    return settings;
}

bool is_plain(const std::string& name) {
    return !name.empty() && std::isalpha(static_cast<unsigned char>(name.front())) != 0 &&
           std::ranges::all_of(
               name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-' || c == '_'; });
}

/// Checks the folder's name and the installation to build on.
std::string fault_of(const NewRequest& request, const fs::path& folder, const std::optional<fs::path>& base) {
    std::error_code error;
    if (!is_plain(platform::name_of(folder.filename())))
        return request.name + ": a name consists of letters, digits, - and _, and begins with a letter";
    if (fs::exists(folder, error) && !fs::is_empty(folder, error))
        return request.name + ": exists already";
    if (!base)
        return "the built-in installation is not beside this tool: give its folder with --base";
    if (!can_be_copied(*base))
        return base->string() + ": is not an installation: it has no " + path::sound_setup + ", no " +
               path::buffer_list + " or no " + path::settings;
    if (!fs::exists(*base / "vcc", error) && !fs::exists(*base / "vcc.exe", error))
        return base->string() + ": has no program vcc";
    return {};
}

using Files = std::vector<std::pair<std::string, std::string>>; ///< names and bytes

Result<Files> files_of(const NewRequest& request, const std::string& title, const fs::path& base) {
    Files files;
    const auto module = std::ranges::find(module_names, request.module) - module_names.begin();
    const std::string entry = request.module.empty() ? "" : module_entries[module];
    for (const EmbeddedFile& file : template_files()) {
        std::string name(file.path), bytes(file.bytes);
        if (name == "module.cpp.in" || name == "veldor_module.h") {
            if (entry.empty())
                continue;
            name = "modules/" + (name == "module.cpp.in" ? request.module + ".cpp" : name);
        }
        if (name == "gitignore")
            name = ".gitignore";
        if (!name.ends_with(".png") && !name.ends_with(".flac")) {
            fill_in(bytes, "@TITLE@", title);
            fill_in(bytes, "@TOOL@", platform::program_path());
            fill_in(bytes, "@BASE@", platform::name_of(base));
            fill_in(bytes, "@MODULE@", request.module);
            fill_in(bytes, "@ENTRY@", entry);
        }
        files.emplace_back(std::move(name), std::move(bytes));
    }
    const auto read = [&base](const std::string& name) { return read_file(platform::name_of(base / name)); };
    const auto windows_of = [&](const LanguageRow& row) { return read(language_file_name(row, path::text_windows)); };
    const auto sounds = read(path::sound_setup), settings = read(path::settings);
    if (!sounds || !settings)
        return Failure{"cannot read the sound set-up and the settings in " + platform::name_of(base)};
    // Text windows that are the same in all languages, as one source.
    const auto windows = windows_of(languages.front());
    if (windows && windows_of(languages.back()).value_or("") == *windows)
        files.emplace_back(std::string("screens/") + path::text_windows, *windows);
    files.emplace_back("screens/screen.schema.json", screen_schema());
    files.emplace_back(std::string("files/") + path::sound_setup, own_sound_setup(*sounds, title));
    files.emplace_back(std::string("files/") + path::settings, own_settings(*settings));
    return files;
}

/// Puts a folder of files in place: whole, or not at all. The reason of a failure.
std::string write_folder(const fs::path& folder, const Files& files) {
    const TemporaryFolder unfinished(platform::system_path(platform::name_of(folder) + ".new"));
    std::error_code error;
    fs::remove_all(unfinished.path(), error);
    for (const auto& [name, bytes] : files) {
        const fs::path path = unfinished.path() / name;
        fs::create_directories(path.parent_path(), error);
        if (error)
            return "cannot make " + platform::name_of(path.parent_path()) + ": " + error.message();
        if (std::string reason = write_whole_file(platform::name_of(path), bytes); !reason.empty())
            return reason;
    }
    fs::rename(unfinished.path(), folder, error);
    return error ? "cannot make " + platform::name_of(folder) + ": " + error.message() : "";
}

} // namespace

int run_new(const NewRequest& request) {
    std::error_code error;
    const fs::path folder = fs::absolute(platform::system_path(request.name), error).lexically_normal();
    const auto base = request.base.empty()
                          ? built_in_installation()
                          : std::optional(fs::absolute(platform::system_path(request.base), error).lexically_normal());
    if (const std::string fault = fault_of(request, folder, base); !fault.empty())
        return complain(fault);
    const auto files = files_of(request, title_of(platform::name_of(folder.filename())), *base);
    if (const std::string reason = files ? write_folder(folder, *files) : files.reason(); !reason.empty())
        return complain(reason);
    std::printf("%s: made from %s\n\n"
                "  cd %s\n"
                "  make          puts the installation together in game/\n"
                "  make check    reads it as the program would\n"
                "  make play     starts it\n",
                request.name.c_str(), base->string().c_str(), request.name.c_str());
    return exit_clean;
}

} // namespace vcc::kit
