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
    FolderLock(FolderLock&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FolderLock& operator=(FolderLock&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    explicit FolderLock(int descriptor) : descriptor_(descriptor) {}
    int descriptor_;
};

} // namespace vcc::kit::edit
