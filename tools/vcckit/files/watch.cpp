#include "vcckit/files/watch.h"

#include "platform/files.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <iterator>

namespace vcc::kit {

namespace {

namespace fs = std::filesystem;

void note(Snapshot& snapshot, const fs::path& path) {
    std::error_code error;
    if (const auto extension = path.extension(); extension == ".new" || extension == ".tmp")
        return;
    if (path.generic_u8string().find(u8"data/logfiles") != std::u8string::npos || !fs::is_regular_file(path, error))
        return;
    const auto time = fs::last_write_time(path, error).time_since_epoch().count();
    snapshot[platform::name_of(path)] = {static_cast<std::int64_t>(time), fs::file_size(path, error)};
}

Snapshot snapshot_of(const std::vector<std::string>& paths) {
    Snapshot snapshot;
    for (const std::string& name : paths) {
        const fs::path path = platform::system_path(name);
        std::error_code error;
        if (!fs::is_directory(path, error)) {
            note(snapshot, path);
            continue;
        }
        for (fs::recursive_directory_iterator each(path, fs::directory_options::skip_permission_denied, error), end;
             !error && each != end; each.increment(error))
            note(snapshot, each->path());
    }
    return snapshot;
}

} // namespace

Watch::Watch(std::vector<std::string> paths) : paths_(std::move(paths)), seen_(snapshot_of(paths_)) {}

std::set<std::string> Watch::wait() {
    constexpr std::chrono::milliseconds pause{200};
    std::set<std::string> changed;
    std::unique_lock held(mutex_);
    while (!stopping_.wait_for(held, pause, [this] { return stopped_; })) {
        Snapshot now = snapshot_of(paths_);
        if (now == seen_ && !changed.empty())
            return changed;
        std::vector<Snapshot::value_type> differing;
        std::ranges::set_symmetric_difference(now, seen_, std::back_inserter(differing));
        for (const auto& [name, state] : differing)
            changed.insert(name);
        seen_ = std::move(now);
    }
    return {};
}

void Watch::stop() {
    const std::lock_guard held(mutex_);
    stopped_ = true;
    stopping_.notify_one();
}

int run_work(bool watch, const std::vector<std::string>& paths, const std::function<int()>& work) {
    if (!watch)
        return work();
    for (Watch changes(paths);; changes.wait()) {
        work();
        std::fprintf(stderr, "vcckit: waiting for a change; Ctrl+C ends\n");
        std::fflush(stdout);
    }
}

} // namespace vcc::kit
