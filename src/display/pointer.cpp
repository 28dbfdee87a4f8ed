#include "display/pointer.h"

#include "core/alert.h"
#include "core/installation.h"
#include "core/mouse_buttons.h"
#include "display/picture.h"

namespace vcc {

constexpr int hot_spot_x = 6, hot_spot_y = 1;

void load_mouse_pointer(std::string_view shown_failure, std::string_view logged_failure) {
    BitmapPtr picture = load_picture(path::pointer).value_or(nullptr);
    if (!picture) {
        alert_and_log(shown_failure, logged_failure);
        picture = std::move(pointer_picture); // after a module the library's own has taken its place
    }
    if (!picture)
        return;
    // The old picture must live until this call has replaced it as the sprite.
    set_mouse_sprite(picture.get());
    set_mouse_sprite_focus(hot_spot_x, hot_spot_y);
    pointer_picture = std::move(picture);
}

void install_mouse_and_pointer() {
    install_mouse();
    watch_mouse_buttons();
    release_pointer(); // it may be of another depth
    load_mouse_pointer("VCC: Error loading mousepointer!", "VCC: Error loading mousepointer!");
}

void release_pointer() {
    if (!pointer_picture)
        return;
    set_mouse_sprite(nullptr);
    pointer_picture.reset();
}

} // namespace vcc
