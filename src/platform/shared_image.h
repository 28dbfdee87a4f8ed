// Pictures in memory that the display server reads by itself. The caller holds the display's lock.
#pragma once

#include "platform/picture_place.h"
#include "platform/scaler.h"
#include "platform/x_library.h"

#include <memory>

namespace vcc::platform {

/// How the display holds its pixels; `bytes` is 0 when they are not in the order of this machine.
PixelFormat display_format();

enum class SharedMemory {
    works,
    absent, ///< the server does not offer it
    refused ///< it does, but cannot read this process's memory: it runs in another container or for another user
};

/// Whether the display server can read memory of this process: tries it, in well below a millisecond.
SharedMemory shared_memory();

/// Rows of a picture on their way to the display server, which reads them here. They are used in turn, strip after
/// strip: memory for a whole picture of today's screens would be slow to get and to go through.
class SharedRows {
public:
    /// Rows of `width` pixels, at most `most`. Null when there is no memory to share.
    static std::unique_ptr<SharedRows> create(int width, int most);
    ~SharedRows();
    SharedRows(const SharedRows&) = delete;
    SharedRows& operator=(const SharedRows&) = delete;

    /// How many rows a strip can have.
    int longest_strip() const;

    /// Memory for a strip of the picture, addressed by the picture's own coordinates; only the strip's rows are there.
    /// Waits until the server has read what was in it.
    PixelRows next(const Area& strip);

    /// Asks the server to show the strip that next() has given out last.
    void show(const Area& strip);

private:
    SharedRows() = default;
    bool attach(std::size_t bytes);

    XImage* image_ = nullptr;
    XShmSegmentInfo segment_{};
    bool attached_ = false;
    int first_ = 0, free_ = 0; ///< rows: of the last strip, and behind it
    unsigned long last_request_ = 0;
};

} // namespace vcc::platform
