#include "platform/x_library.h"

namespace vcc::platform {

namespace {

bool request_refused;

int note_refusal(Display*, XErrorEvent*) {
    request_refused = true;
    return 0;
}

} // namespace

const GFX_DRIVER* library_driver(int id) {
    for (const _DRIVER_INFO* row = _xwin_gfx_driver_list; row->driver; ++row)
        if (row->id == id)
            return static_cast<const GFX_DRIVER*>(row->driver);
    return nullptr;
}

void register_driver(GFX_DRIVER& driver) {
    _unix_register_gfx_driver(driver.id, &driver, TRUE, TRUE);
}

RequestTrap::RequestTrap() {
    XSync(_xwin.display, False); // errors of earlier requests do not count
    request_refused = false;
    before_ = XSetErrorHandler(note_refusal);
}

RequestTrap::~RequestTrap() {
    XSync(_xwin.display, False);
    XSetErrorHandler(before_);
}

bool RequestTrap::refused() const {
    XSync(_xwin.display, False);
    return request_refused;
}

} // namespace vcc::platform
