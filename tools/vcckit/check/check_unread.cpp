// Files of an installation that the control centre does not read.
#include "vcckit/check/check.h"

#include "core/files.h"
#include "core/installation.h"
#include "core/log.h"
#include "platform/files.h"
#include "platform/latin1.h"
#include "platform/shared_library.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

namespace vcc::kit {

namespace {

namespace fs = std::filesystem;

/// The same name for a file however it is written.
std::string plain_name(std::string_view name) {
    std::string plain = fs::path(with_slashes(name)).lexically_normal().generic_string();
    std::ranges::transform(plain, plain.begin(), platform::lower_letter);
    return plain;
}

std::set<std::string> names_of_files(const Installation& installation) {
    std::set<std::string> names;
    const auto add = [&](std::string_view name) { names.insert(plain_name(name)); };
    for (const std::string& name : installation.named)
        add(name);
    for (const auto& [name, text] : installation.text_files)
        add(name);
    for (const char* background : path::backgrounds)
        add(background);
    for (const Film& film : films)
        add(film.path);
    add(path::pointer);
    for (const LanguageFiles& language : installation.by_language)
        for (const ScreenFiles& screen : language.screens) {
            add(screen.slot_file);
            add(screen.toggle_file);
        }
    return names;
}

/// The bytes of the game modules: a file that they name may be read by a module.
std::string bytes_of_modules() {
    constexpr std::size_t size_limit = 256u << 20;
    std::string bytes;
    for (const char* module : module_names)
        bytes += read_file(platform::module_file_name(module), size_limit).value_or("");
    return bytes;
}

} // namespace

void check_unread(Installation& installation, Faults& faults) {
    constexpr std::size_t most_named = 3; // one by one; more of them share a line
    const std::set<std::string> known = names_of_files(installation);
    const std::string modules = bytes_of_modules();
    std::map<std::string, std::vector<std::string>> unread; ///< names by folder
    for (const char* top : {"tools", "images", "sounds", "help", "fonts"}) {
        const std::string folder = platform::resolve_path(top);
        std::error_code error;
        for (fs::recursive_directory_iterator each(folder, fs::directory_options::skip_permission_denied, error), end;
             !error && each != end; each.increment(error)) {
            std::error_code ignored;
            const std::string name = each->path().generic_string();
            const std::string bare = each->path().filename().string();
            if (each->is_regular_file(ignored) && !known.contains(plain_name(name)) &&
                modules.find(bare) == std::string::npos)
                unread[each->path().parent_path().generic_string()].push_back(bare);
        }
    }
    for (auto& [folder, names] : unread) {
        std::ranges::sort(names);
        if (names.size() <= most_named) {
            for (const std::string& name : names)
                Reporter{faults, format_text("%s/%s", folder.c_str(), name.c_str())}(
                    FaultCode::file_unread, "", "nothing reads this file",
                    "refer to it where it is used, or remove it");
            continue;
        }
        std::string list;
        for (std::size_t i = 0; i < most_named; ++i)
            list += names[i] + ", ";
        faults.push_back({FaultCode::file_unread, folder, 0, -1, "",
                          "nothing reads " + std::to_string(names.size()) + " of its files: " + list + "...",
                          "refer to them where they are used, or remove them"});
    }
}

} // namespace vcc::kit
