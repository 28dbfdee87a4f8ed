#include "x11/shown_screen.h"

#include "x11/x_library.h"

#include <algorithm>

namespace vcc::platform {

Size ShownScreen::picture() const {
    return {_xwin.screen_width, _xwin.screen_height};
}

void ShownScreen::open(Size window) {
    open_ = true;
    // Without a background the window does not flash while its size changes.
    XSetWindowBackgroundPixmap(_xwin.display, _xwin.window, None);
    lay_out(window);
}

void ShownScreen::close() {
    open_ = false;
    rows_.reset();
    changed_.clear();
    uncovered_.clear();
}

void ShownScreen::lay_out(Size window) {
    const Size own = picture(), before = place_.size();
    window_ = window;
    place_ = place_picture(window, own, fit_);
    if (place_.size() == own) {
        rows_.reset();
    } else if (const Size size = place_.size(); !rows_ || size != before) {
        rows_ = SharedRows::create(size.width, size.height);
        if (rows_) {
            scaler_ = Scaler(own, size, display_format());
        } else {
            lacks_memory_ = true;
            place_ = centred(own, {0, 0, window.width, window.height});
        }
    }
    move_and_resize(_xwin.window, place_);
    changed_.clear();
    uncovered_.clear();
    if (is_scaled())
        shown_.reset(own, _xwin.ximage->bits_per_pixel / 8);
    changed(whole_picture());
}

void ShownScreen::changed(const Area& area) {
    if (is_scaled()) {
        add_area(changed_, shared(area, whole_picture()));
    } else {
        redraw_(area.x1, area.y1, area.x2 - area.x1, area.y2 - area.y1);
        reminder_.drawn();
    }
}

void ShownScreen::uncovered(const Area& area) {
    if (is_scaled())
        add_area(uncovered_, shared(area, whole_shown()));
    else
        changed(area);
}

PixelRows ShownScreen::picture_rows() const {
    const XImage& image = *_xwin.ximage;
    return {reinterpret_cast<std::uint8_t*>(image.data) + image.xoffset +
                std::ptrdiff_t{_xwin.scroll_y} * image.bytes_per_line +
                std::ptrdiff_t{_xwin.scroll_x} * (image.bits_per_pixel / 8),
            image.bytes_per_line};
}

void ShownScreen::present() {
    if (changed_.empty() && uncovered_.empty()) {
        if (open_ && reminder_.due())
            is_scaled() ? show(whole_shown()) : redraw_(0, 0, picture().width, picture().height);
        return;
    }
    for (const Area& area : changed_)
        for (const Area& part : shown_.take_changes(picture_rows(), area))
            add_area(uncovered_, shown_area(part, place_.size(), picture()));
    for (const Area& area : uncovered_)
        show(area);
    if (!uncovered_.empty())
        reminder_.drawn();
    changed_.clear();
    uncovered_.clear();
}

void ShownScreen::show(const Area& area) {
    const int longest = rows_->longest_strip();
    for (int y = area.y1; y < area.y2; y += longest) {
        const Area strip{area.x1, y, area.x2, std::min(area.y2, y + longest)};
        scaler_.scale(picture_rows(), rows_->next(strip), strip);
        rows_->show(strip);
    }
}

} // namespace vcc::platform
