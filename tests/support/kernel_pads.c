/* Loaded before a program's own libraries: the folder VELDOR_PADS stands for /dev/input, and its files js0, js1 ... for
 * gamepads as the kernel shows them. Such a file holds what the pad does (see gamepad.py): who opens it hears that, and
 * what changes. When nothing is in it any more, the pad has gone. */
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <linux/joystick.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

#define NEXT(name) ((__typeof__(&name))dlsym(RTLD_NEXT, #name))
enum { most_files = 1024, most_axes = 8, most_buttons = 12, untold = SHRT_MIN };

static struct pad {
    struct { /* as gamepad.py writes it */
        unsigned char axes, buttons;
        short value[most_axes + most_buttons];
    } state;
    short told[most_axes + most_buttons];
}* pads[most_files]; /* that are open, by descriptor */

static const char* place(const char* path, char* buffer) {
    const char* folder = getenv("VELDOR_PADS");
    if (!folder || strncmp(path, "/dev/input/", 11) != 0)
        return path;
    snprintf(buffer, PATH_MAX, "%s/%s", folder, path + 11);
    return buffer;
}

static struct pad* pad_of(int file) {
    struct pad* pad = file >= 0 && file < most_files ? pads[file] : NULL;
    if (pad && pread(file, &pad->state, sizeof pad->state, 0) == 0)
        errno = ENODEV;
    return pad;
}

int open(const char* path, int flags, ...) {
    char buffer[PATH_MAX];
    va_list more;
    va_start(more, flags);
    const int mode = va_arg(more, int);
    va_end(more);
    const char* name = place(path, buffer);
    const int file = NEXT(open)(name, flags, mode);
    if (name != path && file >= 0 && file < most_files) {
        pads[file] = malloc(sizeof *pads[file]);
        for (int i = 0; i < most_axes + most_buttons; ++i)
            pads[file]->told[i] = untold;
    }
    return file;
}

int close(int file) {
    if (file >= 0 && file < most_files) {
        free(pads[file]);
        pads[file] = NULL;
    }
    return NEXT(close)(file);
}

ssize_t read(int file, void* bytes, size_t size) {
    errno = 0;
    struct pad* pad = pad_of(file);
    if (!pad)
        return NEXT(read)(file, bytes, size);
    if (errno != 0)
        return -1;
    for (int i = 0; i < most_axes + most_buttons; ++i) {
        const int is_axis = i < most_axes, number = is_axis ? i : i - most_axes;
        const short value = pad->state.value[i];
        if (number >= (is_axis ? pad->state.axes : pad->state.buttons) || value == pad->told[i])
            continue;
        const int type = (is_axis ? JS_EVENT_AXIS : JS_EVENT_BUTTON) | (pad->told[i] == untold ? JS_EVENT_INIT : 0);
        *(struct js_event*)bytes = (struct js_event){0, value, (unsigned char)type, (unsigned char)number};
        pad->told[i] = value;
        return sizeof(struct js_event);
    }
    errno = EAGAIN;
    return -1;
}

int ioctl(int file, unsigned long request, ...) {
    va_list more;
    va_start(more, request);
    void* answer = va_arg(more, void*);
    va_end(more);
    const struct pad* pad = pad_of(file);
    if (!pad)
        return NEXT(ioctl)(file, request, answer);
    if (request == JSIOCGVERSION)
        *(unsigned*)answer = JS_VERSION;
    else if (request == JSIOCGAXES)
        *(unsigned char*)answer = pad->state.axes;
    else if (request == JSIOCGBUTTONS)
        *(unsigned char*)answer = pad->state.buttons;
    else
        return -1;
    return 0;
}

int stat(const char* path, struct stat* result) {
    char buffer[PATH_MAX];
    return NEXT(stat)(place(path, buffer), result);
}

int access(const char* path, int mode) {
    char buffer[PATH_MAX];
    return NEXT(access)(place(path, buffer), mode);
}
