#include "vcckit/serve/changes.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <map>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace vcc::kit::edit {

namespace fs = std::filesystem;

namespace {

constexpr int quiet_ms = 30;         ///< a file that is written comes in several parts
constexpr std::size_t most = 10'000; ///< folders
constexpr std::uint32_t wanted = IN_CLOSE_WRITE | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ONLYDIR;

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0)
            ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return number_; }

private:
    int number_;
};

bool counts(const fs::path& path) {
    const fs::path ending = path.extension();
    return ending != ".new" && ending != ".tmp" && path.string().find("data/logfiles") == std::string::npos;
}

} // namespace

struct Changes::Parts {
    std::vector<std::string> folders;
    std::function<void(const std::set<std::string>&)> tell;
    Descriptor events{::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)}, end{::eventfd(0, EFD_CLOEXEC)};
    std::map<int, fs::path> watched;

    void watch(const fs::path& folder);
    void take(std::set<std::string>& changed);
};

Changes::Changes(std::vector<std::string> folders, std::function<void(const std::set<std::string>&)> tell)
    : parts_(std::make_unique<Parts>()) {
    parts_->folders = std::move(folders);
    parts_->tell = std::move(tell);
    for (const std::string& folder : parts_->folders)
        parts_->watch(folder);
}

Changes::~Changes() = default;

void Changes::Parts::watch(const fs::path& folder) {
    const auto add = [this](const fs::path& path) {
        if (watched.size() == most)
            return;
        if (const int number = ::inotify_add_watch(events.get(), path.c_str(), wanted); number >= 0)
            watched[number] = path;
    };
    add(folder);
    std::error_code error;
    for (fs::recursive_directory_iterator each(folder, fs::directory_options::skip_permission_denied, error), end_of;
         !error && each != end_of; each.increment(error))
        if (std::error_code ignored; each->is_directory(ignored))
            add(each->path());
}

void Changes::Parts::take(std::set<std::string>& changed) {
    alignas(inotify_event) std::array<char, 1 << 16> buffer;
    for (ssize_t size = 0; (size = ::read(events.get(), buffer.data(), buffer.size())) > 0;) {
        for (const char* at = buffer.data(); at < buffer.data() + size;) {
            const auto* const event = reinterpret_cast<const inotify_event*>(at);
            at += sizeof *event + event->len;
            const auto folder = watched.find(event->wd);
            if (folder == watched.end() || event->len == 0)
                continue;
            const fs::path path = folder->second / event->name;
            if ((event->mask & IN_ISDIR) != 0 && (event->mask & (IN_CREATE | IN_MOVED_TO)) != 0)
                watch(path);
            if (counts(path))
                changed.insert(path.string());
        }
    }
}

void Changes::run() {
    std::set<std::string> changed;
    for (;;) {
        std::array<pollfd, 2> waits{{{parts_->events.get(), POLLIN, 0}, {parts_->end.get(), POLLIN, 0}}};
        const int ready = ::poll(waits.data(), waits.size(), changed.empty() ? -1 : quiet_ms);
        if (waits[1].revents != 0 || (ready < 0 && errno != EINTR) || parts_->events.get() < 0)
            return;
        if (ready > 0)
            parts_->take(changed);
        else if (ready == 0 && !changed.empty())
            parts_->tell(std::exchange(changed, {}));
    }
}

void Changes::stop() {
    const std::uint64_t one = 1;
    if (::write(parts_->end.get(), &one, sizeof one) < 0)
        return; // it is being stopped already
}

} // namespace vcc::kit::edit
