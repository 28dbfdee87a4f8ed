// Shows the library's screen in a window at any size. The caller holds the display's lock.
#pragma once

#include "x11/changed_parts.h"
#include "x11/picture_place.h"
#include "x11/reminder.h"
#include "x11/scaler.h"
#include "x11/shared_image.h"

#include <atomic>
#include <memory>
#include <vector>

namespace vcc::platform {

class ShownScreen {
public:
    using Redraw = void (*)(int x, int y, int width, int height);

    /// `redraw` is the library's function that shows a part of its screen at its own size.
    ShownScreen(Fit fit, Redraw redraw) : fit_(fit), redraw_(redraw) {}

    /// Shows a new screen of the library in a window of this size.
    void open(Size window);
    void close();
    bool is_open() const { return open_; }

    /// Adapts to a new size of the window. Without memory for a picture of that size it is shown at its own.
    void lay_out(Size window);
    /// From any thread: whether that memory has ever been missing.
    bool lacks_memory() const { return lacks_memory_; }
    Size window() const { return window_; }
    Size picture() const;
    /// The picture in the window.
    const Area& place() const { return place_; }

    /// Notes a changed part of the library's screen.
    void changed(const Area& area);
    /// Notes a part of the shown picture that must be shown again.
    void uncovered(const Area& area);
    /// Shows what was noted, and a while after the last change the whole picture again.
    void present();

private:
    bool is_scaled() const { return rows_ != nullptr; }
    Area whole_picture() const { return {0, 0, picture().width, picture().height}; }
    Area whole_shown() const { return {0, 0, place_.size().width, place_.size().height}; }
    void show(const Area& area);
    PixelRows picture_rows() const;

    Fit fit_;
    Redraw redraw_;
    bool open_ = false;
    std::atomic<bool> lacks_memory_ = false;
    Size window_;
    Area place_;
    std::unique_ptr<SharedRows> rows_; ///< null: the picture is shown at its own size
    Scaler scaler_;
    ShownPicture shown_;
    std::vector<Area> changed_;   ///< of the library's screen
    std::vector<Area> uncovered_; ///< of the shown picture
    Reminder reminder_;
};

} // namespace vcc::platform
