// One editor for a folder.
#pragma once

#include "core/result.h"

#include <string>
#include <utility>

namespace vcc::kit::edit {

/// Held as long as it lives, and no longer than the process; it leaves nothing in the folder.
class FolderLock {
public:
    /// Fails when another process holds the folder, with its number where that is to be found out. A folder that cannot
    /// be locked at all (some network drives) counts as held.
    static Result<FolderLock> take(const std::string& folder);

    ~FolderLock();
    FolderLock(FolderLock&& other) noexcept
        : folder_(std::move(other.folder_)), descriptor_(std::exchange(other.descriptor_, -1)) {}
    FolderLock& operator=(FolderLock&& other) noexcept {
        std::swap(folder_, other.folder_);
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    const std::string& folder() const { return folder_; }
    /// Whether the folder has still its name.
    bool is_in_place() const;

    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    FolderLock(std::string folder, int descriptor) : folder_(std::move(folder)), descriptor_(descriptor) {}

    std::string folder_;
    int descriptor_;
};

} // namespace vcc::kit::edit
