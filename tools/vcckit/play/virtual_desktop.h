// A virtual display with a program on it, which gets real pointer and key events.
#pragma once

#include "vcckit/draw/rgb_picture.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vcc::kit {

class VirtualDesktop {
public:
    /// 1024 x 768 pixels of 24 bits. Null with the reason in `fault`.
    static std::unique_ptr<VirtualDesktop> open(std::string& fault);

    virtual ~VirtualDesktop() = default;

    /// Starts a program in a folder, without sound; its output goes to the file `output`. It ends with the desktop at
    /// the latest.
    virtual bool start(const std::string& folder, const std::string& program, const std::vector<std::string>& arguments,
                       const std::string& output) = 0;
    virtual bool running() = 0;

    /// The program's exit status, or 128 plus the number of the signal that ended it; nothing while it runs.
    virtual std::optional<int> exit_status() = 0;

    /// The inner 800 x 600 pixels of the program's window; an empty picture without a window.
    virtual RgbPicture look() = 0;

    // Positions in that picture; buttons 1 left, 3 right; keys by their names in the X library ("Escape").
    virtual void move(int x, int y) = 0;
    virtual void click(int button) = 0;
    virtual void press_key(const char* name) = 0;
};

} // namespace vcc::kit
