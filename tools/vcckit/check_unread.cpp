// Files that lie beside those of the control centre, and that nothing of it reads.
#include "check.h"

#include "core/installation.h"
#include "platform/files.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

namespace vcc::kit {

namespace {

namespace fs = std::filesystem;

/// One name for one file, whatever way it is written.
std::string plain_name(std::string_view name) {
    std::string plain = fs::path(with_slashes(name)).lexically_normal().generic_string();
    std::ranges::transform(plain, plain.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
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
    add(std::string(path::pointer_folder) + path::pointer_file);
    for (const LanguageFiles& language : installation.by_language)
        for (const ScreenFiles& screen : language.screens) {
            add(screen.slot_file);
            add(screen.toggle_file);
        }
    return names;
}

} // namespace

void check_unread(Installation& installation, Faults& faults) {
    constexpr std::size_t most_named = 3;
    const std::set<std::string> known = names_of_files(installation);
    std::map<std::string, std::vector<std::string>> unread; ///< names by folder
    for (const char* top : {"tools", "images", "sounds", "help", "fonts"}) {
        const std::string folder = platform::resolve_path(top);
        std::error_code error;
        for (fs::recursive_directory_iterator each(folder, fs::directory_options::skip_permission_denied, error), end;
             !error && each != end; each.increment(error)) {
            std::error_code ignored;
            const std::string name = each->path().generic_string();
            if (each->is_regular_file(ignored) && !known.contains(plain_name(name)))
                unread[each->path().parent_path().generic_string()].push_back(each->path().filename().string());
        }
    }
    for (auto& [folder, names] : unread) {
        std::ranges::sort(names);
        if (names.size() <= most_named) {
            for (const std::string& name : names)
                faults.push_back({FaultCode::file_unread, folder + "/" + name, 0, -1, "", "nothing reads this file",
                                  "name it where it is wanted, or take it away; --ignore VK302 if a module reads it"});
            continue;
        }
        std::string list;
        for (std::size_t i = 0; i < most_named; ++i)
            list += names[i] + ", ";
        faults.push_back({FaultCode::file_unread, folder, 0, -1, "",
                          "nothing reads " + std::to_string(names.size()) + " of its files: " + list + "...",
                          "take them away; --ignore VK302 if a module reads them"});
    }
}

} // namespace vcc::kit
