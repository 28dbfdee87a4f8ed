// The virtual display is Xvfb; pointer and keys come from its XTEST extension.
#include "vcckit/play/virtual_desktop.h"

#include <chrono>
#include <fstream>
#include <thread>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace vcc::kit {

namespace {

constexpr int shown_width = 800, shown_height = 600;
constexpr int start_limit_ms = 10'000;
constexpr std::chrono::milliseconds key_time{30}, button_time{80};

/// Discards sound: the machine may have no card.
constexpr const char* silent_setup =
    "</usr/share/alsa/alsa.conf>\npcm.!default { type null }\nctl.!default { type null }\n";

/// The first line from a pipe; empty if none arrives in time.
std::string read_line(int from) {
    std::string line;
    pollfd waiting{from, POLLIN, 0};
    while (::poll(&waiting, 1, start_limit_ms) > 0) {
        char c = 0;
        if (::read(from, &c, 1) != 1 || c == '\n')
            break;
        line += c;
    }
    return line;
}

/// Windows may vanish while they are queried.
int ignore_error(Display*, XErrorEvent*) {
    return 0;
}

} // namespace

VirtualDesktop::VirtualDesktop(Child server, std::string name, Display* display)
    : server_(std::move(server)), name_(std::move(name)), display_(display, XCloseDisplay) {}

bool VirtualDesktop::start(const std::string& folder, const std::string& program,
                           const std::vector<std::string>& arguments, const std::string& output) {
    std::vector<std::string> words{program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const std::string card = output + ".alsa";
    std::ofstream(card) << silent_setup;
    program_ = spawn(std::move(words), [&] {
        const int out = ::open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        return out >= 0 && ::dup2(out, STDOUT_FILENO) >= 0 && ::dup2(out, STDERR_FILENO) >= 0 &&
               ::chdir(folder.c_str()) == 0 && ::setenv("DISPLAY", name_.c_str(), 1) == 0 &&
               ::setenv("ALSA_CONFIG_PATH", card.c_str(), 1) == 0;
    });
    return program_.error() == 0;
}

/// The program's window is the newest that is large enough.
std::optional<VirtualDesktop::Place> VirtualDesktop::place() {
    Window root = None, parent = None, *children = nullptr;
    unsigned count = 0;
    std::optional<Place> found;
    if (XQueryTree(display_.get(), DefaultRootWindow(display_.get()), &root, &parent, &children, &count) == 0)
        return found;
    for (unsigned i = 0; i < count; ++i) {
        XWindowAttributes window{};
        if (XGetWindowAttributes(display_.get(), children[i], &window) != 0 && window.map_state == IsViewable &&
            window.width >= shown_width && window.height >= shown_height)
            found = {children[i], (window.width - shown_width) / 2, (window.height - shown_height) / 2};
    }
    if (children != nullptr)
        XFree(children);
    if (found && found->window != focused_) { // because there is no window manager
        focused_ = found->window;
        XSetInputFocus(display_.get(), focused_, RevertToPointerRoot, CurrentTime);
    }
    return found;
}

RgbPicture VirtualDesktop::look() {
    const auto where = place();
    if (!where)
        return {};
    XImage* const image =
        XGetImage(display_.get(), where->window, where->x, where->y, shown_width, shown_height, AllPlanes, ZPixmap);
    if (image == nullptr)
        return {};
    RgbPicture picture{shown_width, shown_height,
                       std::vector<std::uint8_t>(std::size_t{shown_width} * shown_height * 3)};
    std::uint8_t* part = picture.rgb.data();
    // 32 bits of a pixel, the lowest byte first: the form of a server of 24 bits on this machine
    for (int y = 0; y < shown_height && image->bits_per_pixel == 32; ++y) {
        const char* pixel = image->data + std::ptrdiff_t{y} * image->bytes_per_line;
        for (int x = 0; x < shown_width; ++x, pixel += 4)
            for (const int at : {2, 1, 0})
                *part++ = static_cast<std::uint8_t>(pixel[at]);
    }
    XDestroyImage(image);
    return picture;
}

void VirtualDesktop::move(int x, int y) {
    const auto where = place();
    int root_x = 0, root_y = 0;
    Window child = None;
    if (!where || XTranslateCoordinates(display_.get(), where->window, DefaultRootWindow(display_.get()), where->x + x,
                                        where->y + y, &root_x, &root_y, &child) == 0)
        return;
    XTestFakeMotionEvent(display_.get(), -1, root_x, root_y, CurrentTime);
    XSync(display_.get(), False);
}

void VirtualDesktop::click(int button) {
    for (const Bool pressed : {True, False}) {
        XTestFakeButtonEvent(display_.get(), static_cast<unsigned>(button), pressed, CurrentTime);
        XSync(display_.get(), False);
        std::this_thread::sleep_for(button_time);
    }
}

void VirtualDesktop::press_key(const char* name) {
    const KeyCode code = XKeysymToKeycode(display_.get(), XStringToKeysym(name));
    for (const Bool pressed : {True, False}) {
        XTestFakeKeyEvent(display_.get(), code, pressed, CurrentTime);
        XSync(display_.get(), False);
        std::this_thread::sleep_for(key_time);
    }
}

Result<std::unique_ptr<VirtualDesktop>> VirtualDesktop::open() {
    Pipe number;
    const std::string end = std::to_string(number.ends[1]);
    Child server = spawn({"Xvfb", "-displayfd", end, "-screen", "0", "1024x768x24", "-nolisten", "tcp"}, [&] {
        const int nowhere = ::open("/dev/null", O_WRONLY);
        return ::fcntl(number.ends[1], F_SETFD, 0) == 0 && nowhere >= 0 && ::dup2(nowhere, STDOUT_FILENO) >= 0 &&
               ::dup2(nowhere, STDERR_FILENO) >= 0;
    });
    number.close_writing();
    const std::string answer = read_line(number.ends[0]);
    const std::string name = ":" + answer;
    Display* const display = answer.empty() ? nullptr : XOpenDisplay(name.c_str());
    if (display == nullptr)
        return Failure{server.error() != 0 ? "Xvfb is not installed: install the package xvfb" : "Xvfb does not start"};
    XSetErrorHandler(ignore_error);
    int major = 0, minor = 0, event = 0, error = 0;
    auto desktop = std::make_unique<VirtualDesktop>(std::move(server), name, display);
    if (XTestQueryExtension(display, &event, &error, &major, &minor) == 0)
        return Failure{"Xvfb has no XTEST extension"};
    return desktop;
}

} // namespace vcc::kit
