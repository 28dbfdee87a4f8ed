// A picture in memory that the display server reads by itself. The caller holds the display's lock.
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

class SharedImage {
public:
    /// Null when there is no memory of that size to share.
    static std::unique_ptr<SharedImage> create(Size size);
    ~SharedImage();
    SharedImage(const SharedImage&) = delete;
    SharedImage& operator=(const SharedImage&) = delete;

    Size size() const { return {image_->width, image_->height}; }
    PixelRows rows() const { return {reinterpret_cast<std::uint8_t*>(image_->data), image_->bytes_per_line}; }

    /// Asks the server to show an area in the library's window.
    void show(const Area& area);

    /// Waits until the server has read what it was asked to show: the image may be changed then.
    void wait_until_shown() const;

private:
    SharedImage() = default;
    bool attach(std::size_t bytes);

    XImage* image_ = nullptr;
    XShmSegmentInfo segment_{};
    bool attached_ = false;
    unsigned long last_request_ = 0;
};

} // namespace vcc::platform
