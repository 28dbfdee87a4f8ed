#include "display/pointer.h"

#include "core/alert.h"
#include "core/installation.h"
#include "core/mouse_buttons.h"
#include "display/picture.h"

namespace vcc {

namespace {

constexpr int hot_spot_x = 6, hot_spot_y = 1;

} // namespace

bool load_mouse_pointer(const std::string& directory, const std::string& file) {
    BitmapPtr picture = load_picture(directory + file).value_or(nullptr);
    if (!picture)
        return false;
    // The old picture must live until this call has replaced it as the sprite.
    set_mouse_sprite(picture.get());
    set_mouse_sprite_focus(hot_spot_x, hot_spot_y);
    pointer_picture = std::move(picture);
    return true;
}

void install_mouse_and_pointer() {
    install_mouse();
    watch_mouse_buttons();
    if (load_mouse_pointer(path::pointer_folder, path::pointer_file))
        return;
    alert_and_log("VCC: Error loading mousepointer!");
    release_pointer();
}

void release_pointer() {
    if (!pointer_picture)
        return;
    set_mouse_sprite(nullptr);
    pointer_picture.reset();
}

} // namespace vcc
