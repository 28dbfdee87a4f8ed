// Pictures in memory shared with the display server. The caller holds the display's lock.
#pragma once

#include "x11/picture_place.h"
#include "x11/scaler.h"
#include "x11/x_library.h"

#include <memory>

namespace vcc::platform {

/// How the display stores its pixels; `bytes` is 0 if their byte order is not this machine's.
PixelFormat display_format();

/// Shared rows through which a picture reaches the display server, strip by strip. Memory for a whole picture of a
/// large monitor would be slow to allocate and to go through.
class SharedRows {
public:
    /// Rows of `width` pixels, at most `most`. Null without memory, or if the server cannot read this process's memory:
    /// it runs in another container or for another user.
    static std::unique_ptr<SharedRows> create(int width, int most);
    ~SharedRows();
    SharedRows& operator=(SharedRows&&) = delete;

    /// Largest number of rows of a strip.
    int longest_strip() const;

    /// Memory for a strip of the picture, addressed by the picture's coordinates; only the strip's rows exist. Waits
    /// until the server has read their former contents.
    PixelRows next(const Area& strip);

    /// Asks the server to show the strip of the latest next().
    void show(const Area& strip);

private:
    SharedRows() = default;
    bool attach(std::size_t bytes);

    XImage* image_ = nullptr;
    XShmSegmentInfo segment_{};
    bool attached_ = false;    ///< in the server, too
    int first_ = 0, free_ = 0; ///< row of the latest strip, and the row after it
    unsigned long last_request_ = 0;
};

} // namespace vcc::platform
