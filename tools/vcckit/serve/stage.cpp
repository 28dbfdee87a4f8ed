#include "serve/stage.h"

#include "packed_screen.h"
#include "slot_bytes.h"

#include "platform/files.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>
#include <string_view>

#include <signal.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vcc::kit::edit {

namespace fs = std::filesystem;

namespace {

constexpr int depth_limit = 16; ///< of folders: one may be a link to one above it

std::string toggle_file_name(const std::string& slot_file) {
    return fs::path(slot_file).replace_extension(".tgl").string();
}

constexpr std::string_view name_begins = "vcckit-edit-"; ///< the number of the process follows, and a dash

/// Takes away what editors of the same user have left that were killed.
void remove_lost_stages(const fs::path& place) {
    std::error_code error;
    for (fs::directory_iterator each(place, error), end; !error && each != end; each.increment(error)) {
        const std::string name = each->path().filename().string();
        if (!name.starts_with(name_begins))
            continue;
        int process = 0;
        const auto [rest, fault] =
            std::from_chars(name.data() + name_begins.size(), name.data() + name.size(), process);
        struct stat status {};
        const bool ours =
            ::lstat(each->path().c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid();
        if (ours && fault == std::errc{} && *rest == '-' && ::kill(process, 0) != 0 && errno == ESRCH)
            fs::remove_all(each->path(), error);
    }
}

/// What the program writes.
bool is_log(const fs::path& name) {
    return name.parent_path() == "data/logfiles";
}

} // namespace

Result<std::unique_ptr<Stage>> Stage::make(const fs::path& installation) {
    std::error_code error;
    fs::path place = fs::temp_directory_path(error);
    if (error)
        place = "/tmp";
    remove_lost_stages(place);
    std::string name = (place / (std::string(name_begins) + std::to_string(::getpid()) + "-XXXXXX")).string();
    if (::mkdtemp(name.data()) == nullptr)
        return Failure{"cannot make the folder " + name + ": " + std::strerror(errno)};
    std::unique_ptr<Stage> stage(new Stage(installation));
    stage->folder_ = name;
    stage->follow();
    return stage;
}

Stage::~Stage() {
    std::error_code ignored;
    if (!folder_.empty())
        fs::remove_all(folder_, ignored);
}

void Stage::follow() {
    drop_lost(folder_);
    link_below(installation_, folder_, 0);
}

/// Takes away links that lead nowhere.
void Stage::drop_lost(const fs::path& folder) {
    std::error_code error;
    for (fs::recursive_directory_iterator each(folder, error), end; !error && each != end; each.increment(error)) {
        std::error_code ignored;
        if (each->is_symlink(ignored) && !fs::exists(each->path(), ignored))
            fs::remove(each->path(), ignored);
    }
}

void Stage::link_below(const fs::path& from, const fs::path& to, int depth) {
    std::error_code error;
    fs::create_directory(to, error);
    if (depth == depth_limit)
        return;
    for (fs::directory_iterator each(from, error), end; !error && each != end; each.increment(error)) {
        std::error_code ignored;
        const fs::path place = to / each->path().filename();
        if (each->is_directory(ignored))
            link_below(each->path(), place, depth + 1);
        else if (!fs::exists(fs::symlink_status(place, ignored)) && !removed_.contains(place.string()) &&
                 !is_log(place.lexically_relative(folder_)))
            fs::create_symlink(each->path(), place, ignored);
    }
}

std::string Stage::place_of(const std::string& name) const {
    return platform::resolve_path((folder_ / name).string());
}

Result<bool> Stage::put_file(const std::string& name, const std::string& bytes) {
    const std::string place = place_of(name);
    const auto known = own_.find(place);
    if (known != own_.end() && known->second == bytes)
        return false;
    std::error_code error;
    fs::create_directories(fs::path(place).parent_path(), error);
    // In one step, and in the place of a link, not through it. It need not reach the disk.
    const std::string temporary = place + ".new";
    std::ofstream(temporary, std::ios::binary) << bytes << std::flush;
    if (fs::file_size(temporary, error) == bytes.size() && !error)
        fs::rename(temporary, place, error);
    else if (!error)
        error = std::make_error_code(std::errc::no_space_on_device);
    if (error)
        return Failure{"cannot write " + place + ": " + error.message()};
    own_[place] = bytes;
    removed_.erase(place);
    return true;
}

Result<bool> Stage::remove_file(const std::string& name) {
    const std::string place = place_of(name);
    std::error_code error;
    own_.erase(place);
    removed_.insert(place);
    const bool was_there = fs::remove(place, error);
    if (error)
        return Failure{"cannot remove " + place + ": " + error.message()};
    return was_there;
}

Result<bool> Stage::put(const Screen& screen) {
    bool changed = false;
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const ScreenRecords& records = screen.records[i];
        const std::string name = slot_file_name(languages[i], screen.name);
        auto slots = put_file(name, slot_file_bytes(records.slots));
        if (!slots)
            return slots;
        auto toggles = records.has_toggle_file ? put_file(toggle_file_name(name), slot_file_bytes(records.toggles))
                                               : remove_file(toggle_file_name(name));
        if (!toggles)
            return toggles;
        changed = changed || *slots || *toggles;
    }
    return changed;
}

} // namespace vcc::kit::edit
