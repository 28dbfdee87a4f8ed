/* Loaded before Wine's own libraries: it places the pointer without grabbing it meanwhile. The end of the grab tells
 * Wine's desktop where the pointer was before, and a program then takes it to be there. */
#include <X11/Xlib.h>
#include <dlfcn.h>
#include <stddef.h>

int XGrabPointer(Display* display, Window window, Bool owner_events, unsigned mask, int pointer_mode, int keyboard_mode,
                 Window confine_to, Cursor cursor, Time time) {
    typedef int (*Grab)(Display*, Window, Bool, unsigned, int, int, Window, Cursor, Time);
    if (confine_to == None)
        return GrabSuccess;
    Grab grab = NULL;
    *(void**)&grab = dlsym(RTLD_NEXT, "XGrabPointer");
    return grab(display, window, owner_events, mask, pointer_mode, keyboard_mode, confine_to, cursor, time);
}
