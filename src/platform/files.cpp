#include "platform/files.h"

#include "platform/latin1.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace vcc::platform {

namespace fs = std::filesystem;

namespace {

bool exists(const std::string& name) {
    std::error_code error;
    return fs::exists(system_path(name), error);
}

/// A folder's entry with that name in any letter case; of several the first in byte order. Empty if there is none.
std::string entry_like(const std::string& folder, std::string_view wanted) {
    std::string found;
    std::error_code error;
    for (fs::directory_iterator entry(system_path(folder.empty() ? "." : folder), error), end; !error && entry != end;
         entry.increment(error)) {
        std::string name = name_of(entry->path().filename());
        if (same_but_for_case(name, wanted) && (found.empty() || name < found))
            found = std::move(name);
    }
    return found;
}

} // namespace

std::string resolve_path(std::string_view name) {
    std::string written(name);
    std::replace(written.begin(), written.end(), '\\', '/');
    if (written.empty() || exists(written))
        return written;

    std::string resolved;
    for (std::size_t begin = 0; begin < written.size();) {
        const std::size_t slash = std::min(written.find('/', begin), written.size());
        std::string component = written.substr(begin, slash - begin);
        if (!component.empty() && !exists(resolved + component)) {
            if (std::string entry = entry_like(resolved, component); !entry.empty())
                component = std::move(entry);
            else if (slash != written.size())
                return written;
        }
        resolved.append(component).append(written, slash, 1);
        begin = slash + 1;
    }
    return resolved;
}

bool file_exists(std::string_view name) {
    std::error_code error;
    return fs::is_regular_file(system_path(resolve_path(name)), error);
}

std::string whole_name(const std::string& name) {
    std::error_code error;
    const fs::path whole = fs::absolute(system_path(name), error);
    return error ? name : name_of(whole);
}

std::string folder_of_program(std::string_view path) {
    const auto ends_folder = [](char c) { return c == '\\' || c == '/'; };
    const std::size_t last = path.find_last_of("\\/:");
    if (last == std::string_view::npos || path[last] == ':')
        return {};
    // The root of a drive keeps its separator; without it, the name means the drive's current folder.
    const bool root = last == 0 || ends_folder(path[last - 1]) || path[last - 1] == ':';
    return std::string(path.substr(0, root ? last + 1 : last));
}

void enter_folder(const std::string& folder) {
    std::error_code ignored;
    fs::current_path(system_path(folder), ignored);
}

} // namespace vcc::platform
