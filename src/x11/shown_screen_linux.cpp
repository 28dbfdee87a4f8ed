#include "x11/shown_screen.h"

#include "x11/x_library.h"

#include <algorithm>

namespace vcc::platform {

Size ShownScreen::picture() const {
    return {_xwin.screen_width, _xwin.screen_height};
}

bool ShownScreen::open(Size window) {
    open_ = true;
    place_ = whole_picture();
    // Without a background the window does not flash while its size changes.
    XSetWindowBackgroundPixmap(_xwin.display, _xwin.window, None);
    return lay_out(window);
}

void ShownScreen::close() {
    open_ = false;
    rows_.reset();
    changed_.clear();
    uncovered_.clear();
}

void ShownScreen::give_back_window() {
    XMoveWindow(_xwin.display, _xwin.window, 0, 0);
    XSetWindowBackground(_xwin.display, _xwin.window, BlackPixel(_xwin.display, _xwin.screen));
}

bool ShownScreen::lay_out(Size window) {
    const Size own = picture();
    window_ = window;
    place_ = place_picture(window, own, fit_);
    bool possible = true;
    if (place_.size() == own) {
        rows_.reset();
    } else if (!rows_ || scaled_ != place_.size()) {
        scaled_ = place_.size();
        rows_ = SharedRows::create(scaled_.width, scaled_.height);
        possible = rows_ != nullptr;
        if (possible)
            scaler_ = Scaler(own, scaled_, display_format());
        else
            place_ = centred(own, {0, 0, window.width, window.height});
    }
    move_and_resize(_xwin.window, place_);
    changed_.clear();
    uncovered_.clear();
    if (is_scaled())
        shown_.reset(own, _xwin.ximage->bits_per_pixel / 8);
    changed(whole_picture());
    return possible;
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
    if (!changed_.empty() || !uncovered_.empty())
        show_changes();
    else if (open_ && reminder_.due())
        show_whole();
}

void ShownScreen::show_changes() {
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

void ShownScreen::show_whole() {
    if (is_scaled())
        show(whole_shown());
    else
        redraw_(0, 0, picture().width, picture().height);
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
