#include "x11/shared_image.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include <sys/ipc.h>
#include <sys/shm.h>

namespace vcc::platform {

namespace {

constexpr int size_of_all = 2 << 20; ///< bytes, about
constexpr int strips = 8;            ///< in all rows

} // namespace

PixelFormat display_format() {
    PixelFormat format{0, static_cast<std::uint32_t>(_xwin.visual->red_mask),
                       static_cast<std::uint32_t>(_xwin.visual->green_mask),
                       static_cast<std::uint32_t>(_xwin.visual->blue_mask)};
    const int order = std::endian::native == std::endian::little ? LSBFirst : MSBFirst;
    if (_xwin.visual->c_class != TrueColor || ImageByteOrder(_xwin.display) != order)
        return format;
    int count = 0;
    XPixmapFormatValues* const formats = XListPixmapFormats(_xwin.display, &count);
    for (int i = 0; i < count; ++i)
        if (formats[i].depth == _xwin.window_depth)
            format.bytes = formats[i].bits_per_pixel / 8;
    if (formats)
        XFree(formats);
    return format;
}

std::unique_ptr<SharedRows> SharedRows::create(int width, int most) {
    std::unique_ptr<SharedRows> rows(new SharedRows);
    const int pitch = width * display_format().bytes;
    const int count = std::clamp(size_of_all / pitch, strips, std::max(most, strips));
    rows->image_ =
        XShmCreateImage(_xwin.display, _xwin.visual, static_cast<unsigned>(_xwin.window_depth), ZPixmap, nullptr,
                        &rows->segment_, static_cast<unsigned>(width), static_cast<unsigned>(count));
    if (!rows->image_)
        return nullptr;
    const auto bytes = static_cast<std::size_t>(rows->image_->bytes_per_line) * static_cast<std::size_t>(count);
    return rows->attach(bytes) ? std::move(rows) : nullptr;
}

bool SharedRows::attach(std::size_t bytes) {
    segment_.shmid = ::shmget(IPC_PRIVATE, bytes, IPC_CREAT | 0600);
    if (segment_.shmid == -1)
        return false;
    void* const address = ::shmat(segment_.shmid, nullptr, 0);
    if (reinterpret_cast<std::intptr_t>(address) != -1) {
        image_->data = segment_.shmaddr = static_cast<char*>(address);
        segment_.readOnly = True;
        const RequestTrap trap;
        attached_ = XShmAttach(_xwin.display, &segment_) != 0 && !trap.refused();
    }
    ::shmctl(segment_.shmid, IPC_RMID, nullptr); // freed when the last process detaches
    return attached_;
}

SharedRows::~SharedRows() {
    if (attached_)
        XShmDetach(_xwin.display, &segment_);
    if (segment_.shmaddr)
        ::shmdt(segment_.shmaddr);
    if (image_) {
        image_->data = nullptr;
        XDestroyImage(image_);
    }
}

int SharedRows::longest_strip() const {
    return image_->height / strips;
}

PixelRows SharedRows::next(const Area& strip) {
    const int count = strip.y2 - strip.y1;
    if (free_ + count > image_->height) {
        // Events and replies tell how far the server has come; often that is enough.
        if (XLastKnownRequestProcessed(_xwin.display) < last_request_)
            XSync(_xwin.display, False);
        free_ = 0;
    }
    first_ = free_;
    free_ += count;
    const std::ptrdiff_t pitch = image_->bytes_per_line;
    return {reinterpret_cast<std::uint8_t*>(image_->data) + (first_ - strip.y1) * pitch, pitch};
}

void SharedRows::show(const Area& strip) {
    last_request_ = XNextRequest(_xwin.display);
    XShmPutImage(_xwin.display, _xwin.window, _xwin.gc, image_, strip.x1, first_, strip.x1, strip.y1,
                 static_cast<unsigned>(strip.x2 - strip.x1), static_cast<unsigned>(strip.y2 - strip.y1), False);
}

} // namespace vcc::platform
