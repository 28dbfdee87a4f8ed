#include "vcckit/serve/stage.h"

#include "vcckit/edit/operation.h"
#include "vcckit/edit/unsaved.h"
#include "vcckit/record/slot_bytes.h"
#include "vcckit/source/packed_screen.h"

#include "core/files.h"
#include "platform/files.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <string_view>

#include <signal.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vcc::kit::edit {

namespace fs = std::filesystem;

namespace {

constexpr int depth_limit = 16;             ///< of folders in one another
constexpr std::size_t count_limit = 20'000; ///< of files and folders

constexpr std::string_view name_begins = "vcckit-edit-"; ///< the number of the process follows, and a dash

fs::path place_of_stages() {
    std::error_code error;
    const fs::path place = fs::temp_directory_path(error);
    return error ? fs::path("/tmp") : place;
}

/// Takes away what editors of the same user have left that were killed; or what this one has.
void remove_stages(bool own) {
    const fs::path place = place_of_stages();
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
        const bool over = own ? process == ::getpid() : ::kill(process, 0) != 0 && errno == ESRCH;
        if (ours && fault == std::errc{} && *rest == '-' && over)
            fs::remove_all(each->path(), error);
    }
}

} // namespace

Stage::Stage(fs::path installation) : installation_(std::move(installation)) {
    remove_stages(false);
    std::string name =
        (place_of_stages() / (std::string(name_begins) + std::to_string(::getpid()) + "-XXXXXX")).string();
    if (::mkdtemp(name.data()) == nullptr)
        throw Refused("cannot make the folder " + name + ": " + std::strerror(errno));
    folder_ = name;
    follow();
}

Stage::~Stage() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

void Stage::remove_own() {
    remove_stages(true);
}

void Stage::follow() {
    // Links that lead nowhere go.
    std::error_code error;
    for (fs::recursive_directory_iterator each(folder_, error), end; !error && each != end; each.increment(error)) {
        std::error_code ignored;
        if (each->is_symlink(ignored) && !fs::exists(each->path(), ignored))
            fs::remove(each->path(), ignored);
    }
    count_ = 0;
    left_out_.clear();
    link_below("", 0);
}

void Stage::link_below(const fs::path& name, int depth) {
    std::error_code error;
    fs::create_directory(folder_ / name, error);
    for (fs::directory_iterator each(installation_ / name, error), end; !error && each != end; each.increment(error)) {
        std::error_code ignored;
        const fs::path next = name / each->path().filename(), place = folder_ / next;
        if (depth == depth_limit || ++count_ > count_limit) {
            left_out_ =
                "the picture is made without all of the installation: " +
                (depth == depth_limit ? next.string() + " lies in more than " + std::to_string(depth_limit) + " folders"
                                      : "it has more than " + std::to_string(count_limit) + " files");
            return;
        }
        // A folder behind a link is one link, so that the stage ends; but those of the languages take our files.
        const bool is_own = next == "tools" || next == "tools/language" || next.parent_path() == "tools/language";
        if (each->is_directory(ignored) && (is_own || !each->is_symlink(ignored)))
            link_below(next, depth + 1);
        else if (!fs::exists(fs::symlink_status(place, ignored)) && !own_.contains(place.string()) &&
                 name != "data/logfiles") // what the program writes
            fs::create_symlink(each->path(), place, ignored);
    }
}

void Stage::begin_anew() {
    std::error_code ignored;
    for (const auto& [place, bytes] : own_)
        fs::remove(place, ignored);
    own_.clear();
    follow();
}

bool Stage::is_in_step(const fs::path& file) const {
    const fs::path place = folder_ / file.lexically_relative(installation_);
    const auto own = own_.find(place.string());
    std::error_code error;
    if (own == own_.end() || !own->second)
        return own != own_.end() && !fs::exists(file, error);
    const auto bytes = read_file(file.string());
    return bytes && *bytes == *own->second;
}

Result<bool> Stage::put_file(const std::string& name, std::optional<std::string> bytes) {
    const std::string place = platform::resolve_path((folder_ / name).string());
    const auto known = own_.find(place);
    if (bytes && known != own_.end() && known->second == bytes)
        return false;
    std::error_code error;
    std::string reason;
    if (bytes)
        reason = put_quickly(place, *bytes); // in the place of a link, not through it
    else if (fs::remove(place, error); error)
        reason = "cannot remove " + place + ": " + error.message();
    if (!reason.empty())
        return Failure{std::move(reason)};
    own_[place] = std::move(bytes);
    return true;
}

std::string Stage::put(const Screen& screen) {
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const ScreenRecords& records = screen.records[i];
        const std::string name = slot_file_name(languages[i], screen.name);
        const std::string toggles = fs::path(name).replace_extension(".tgl").string();
        std::string reason = put_file(name, slot_file_bytes(records.slots)).reason();
        if (reason.empty())
            reason = put_file(toggles,
                              records.has_toggle_file ? std::optional(slot_file_bytes(records.toggles)) : std::nullopt)
                         .reason();
        if (!reason.empty())
            return reason;
    }
    return {};
}

} // namespace vcc::kit::edit
