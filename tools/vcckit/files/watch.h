// Notices when files change.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vcc::kit {

/// Time of the last change and size of every file.
using Snapshot = std::map<std::string, std::pair<std::int64_t, std::uintmax_t>>;

/// Watches files, and folders with all that is in them, from its construction on; looks five times per second. Logs and
/// half-written files do not count.
class Watch {
public:
    explicit Watch(std::vector<std::string> paths);

    /// Waits for a change and until it is quiet again, because a file that is written comes in several parts. Returns
    /// what has changed since the last call; nothing after stop(), which may come from another thread.
    std::set<std::string> wait();
    void stop();

private:
    std::vector<std::string> paths_;
    Snapshot seen_;
    std::mutex mutex_;
    std::condition_variable stopping_;
    bool stopped_ = false;
};

/// Runs `work` and returns its exit status; with `watch` it runs again after each change of a file, until the process
/// ends.
int run_work(bool watch, const std::vector<std::string>& paths, const std::function<int()>& work);

} // namespace vcc::kit
