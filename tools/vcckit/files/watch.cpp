#include "vcckit/files/watch.h"

#include "platform/files.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <thread>

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

} // namespace

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

void watch(const std::vector<std::string>& paths, const std::function<void()>& work) {
    constexpr std::chrono::milliseconds pause{250};
    for (;;) {
        const Snapshot before = snapshot_of(paths);
        work();
        std::fprintf(stderr, "vcckit: waiting for a change; Ctrl+C ends\n");
        std::fflush(stdout);
        while (snapshot_of(paths) == before)
            std::this_thread::sleep_for(pause);
    }
}

} // namespace vcc::kit
