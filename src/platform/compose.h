// Which accents the keyboard can put together.
#pragma once

#include <string>

namespace vcc::platform {

/// As long as it lives, a keyboard that is opened reads its dead keys and compose sequences from a list of ours: the
/// system's has thousands that our texts cannot show, and takes 20 ms to read. A list of the player's own comes first;
/// without the file nothing changes.
class ComposeList {
public:
    explicit ComposeList(const std::string& path);
    ~ComposeList();
    ComposeList(const ComposeList&) = delete;
    ComposeList& operator=(const ComposeList&) = delete;

private:
    bool ours_ = false;
};

} // namespace vcc::platform
