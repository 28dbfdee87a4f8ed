// A virtual display with a program on it, which gets real pointer and key events.
#pragma once

#include "vcckit/draw/rgb_picture.h"
#include "vcckit/files/child.h"

#include "core/result.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

struct _XDisplay; // of the X library, whose header has macros like None; NOLINT(bugprone-reserved-identifier)

namespace vcc::kit {

class VirtualDesktop {
public:
    /// 1024 x 768 pixels of 24 bits.
    static Result<std::unique_ptr<VirtualDesktop>> open();

    VirtualDesktop(Child server, std::string name, _XDisplay* display);

    /// Starts a program in a folder, without sound; its output goes to the file `output`. It ends with the desktop at
    /// the latest.
    bool start(const std::string& folder, const std::string& program, const std::vector<std::string>& arguments,
               const std::string& output);
    bool running() { return program_.running(); }

    /// The program's exit status, or 128 plus the number of the signal that ended it; nothing while it runs.
    std::optional<int> exit_status() { return program_.status(); }

    /// The inner 800 x 600 pixels of the program's window; an empty picture without a window.
    RgbPicture look();

    // Positions in that picture; buttons 1 left, 3 right; keys by their names in the X library ("Escape").
    void move(int x, int y);
    void click(int button);
    void press_key(const char* name);

private:
    struct Place {
        unsigned long window;
        int x, y; ///< of the picture in the window
    };
    std::optional<Place> place();

    Child server_;
    std::string name_;
    std::unique_ptr<_XDisplay, int (*)(_XDisplay*)> display_;
    Child program_; // ends before the display
    unsigned long focused_ = 0;
};

} // namespace vcc::kit
