// Telling when files of folders change.
#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace vcc::kit::edit {

/// Watches folders with all that is in them. Logs and half-written files do not count.
class Changes {
public:
    /// `tell` gets the paths that have changed, once it is quiet again; from the thread that runs.
    Changes(std::vector<std::string> folders, std::function<void(const std::set<std::string>&)> tell);
    ~Changes();
    Changes(const Changes&) = delete;
    Changes& operator=(const Changes&) = delete;

    /// Returns after stop(), or at once where the system does not tell.
    void run();
    void stop();

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace vcc::kit::edit
