// One editor for a folder.
#pragma once

#include <string>

namespace vcc::kit::edit {

/// Held as long as it lives, and no longer than the process; it leaves nothing in the folder.
class FolderLock {
public:
    /// Throws Refused when another process holds the folder, with its number where that is to be found out. A folder
    /// that cannot be locked at all (some network drives) counts as held.
    explicit FolderLock(const std::string& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    const std::string& folder() const { return folder_; }
    /// Whether the folder has still its name.
    bool is_in_place() const;

private:
    std::string folder_;
    int descriptor_;
};

} // namespace vcc::kit::edit
