#include "display/pictures_ahead.h"

#include "core/files.h"
#include "platform/files.h"

#include <algorithm>
#include <array>
#include <condition_variable>
#include <deque>
#include <filesystem>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <utility>

namespace vcc {

namespace {

constexpr std::size_t waiting_limit = 16u << 20; ///< bytes

/// The earliest time for a file that cannot be had.
std::filesystem::file_time_type changed_at(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::last_write_time(platform::system_path(path), ignored);
}

struct Entry {
    std::string path;                          ///< as take_picture() gets it
    std::string absolute;                      ///< saving changes the working folder for a moment
    bool taken = false, done = false;          ///< by a thread
    std::filesystem::file_time_type changed{}; ///< before it was read
    std::optional<UnpackedPicture> picture{};
};
using Entries = std::deque<std::shared_ptr<Entry>>;

class Reader {
public:
    explicit Reader(Entries entries) : entries_(std::move(entries)) {}
    ~Reader() {
        const std::lock_guard lock(mutex_);
        entries_.clear(); // nothing is left to read
        changed_.notify_all();
    }

    /// Throws std::system_error when there is no thread.
    void start() {
        for (std::jthread& thread : threads_)
            thread = std::jthread(&Reader::run, this);
    }

    /// As take_picture().
    std::optional<UnpackedPicture> take(std::string_view path) {
        std::unique_lock lock(mutex_);
        const auto entry = std::ranges::find(entries_, path, &Entry::path);
        if (entry == entries_.end())
            return std::nullopt;
        entries_.erase(entries_.begin(), entry);
        changed_.notify_all();
        changed_.wait(lock, [this] { return entries_.front()->done; });
        const std::shared_ptr<Entry> first = entries_.front();
        entries_.pop_front();
        changed_.notify_all();
        return changed_at(first->absolute) == first->changed ? std::move(first->picture) : std::nullopt;
    }

private:
    void run() {
        std::unique_lock lock(mutex_);
        for (;;) {
            changed_.wait(lock, [this] { return has_room(); });
            const auto next = std::ranges::find(entries_, false, &Entry::taken);
            if (next == entries_.end())
                return;
            const std::shared_ptr<Entry> entry = *next; // take() may drop it meanwhile
            entry->taken = true;
            entry->changed = changed_at(entry->absolute);
            lock.unlock();
            std::optional<UnpackedPicture> picture = read(entry->absolute);
            lock.lock();
            entry->picture = std::move(picture);
            entry->done = true;
            changed_.notify_all();
        }
    }

    static std::optional<UnpackedPicture> read(const std::string& path) {
        try {
            if (const auto file = read_file(path, picture_file_limit))
                return unpack_picture({reinterpret_cast<const std::uint8_t*>(file->data()), file->size()});
        } catch (const std::bad_alloc&) { // the caller of take_picture() tries again, and reports a failure
        }
        return std::nullopt;
    }

    bool has_room() const {
        std::size_t waiting = 0;
        for (const auto& entry : entries_)
            waiting += entry->picture ? entry->picture->size() : 0;
        return waiting < waiting_limit;
    }

    std::mutex mutex_; ///< guards the entries
    std::condition_variable changed_;
    Entries entries_;
    std::array<std::jthread, 2> threads_; ///< last, so that they end before the members that they use
};

Reader* reader = nullptr; // not ended by exit(): in a process that a module forks, its threads do not exist

} // namespace

void read_pictures_ahead(const std::vector<std::string>& paths) {
    stop_reading_ahead();
    Entries entries;
    for (const std::string& path : paths)
        entries.push_back(std::make_shared<Entry>(Entry{path, platform::whole_name(platform::resolve_path(path))}));
    reader = new Reader(std::move(entries));
    try {
        reader->start();
    } catch (const std::system_error&) { // without a thread, pictures are read when they are needed
        stop_reading_ahead();
    }
}

std::optional<UnpackedPicture> take_picture(std::string_view path) {
    return reader ? reader->take(path) : std::nullopt;
}

void stop_reading_ahead() {
    delete std::exchange(reader, nullptr);
}

} // namespace vcc
