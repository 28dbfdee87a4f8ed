/* Loaded before a program's own libraries: the folder VELDOR_PADS stands for /dev/input, and its pipes js0, js1 ... for
 * gamepads as the kernel shows them. What a pad holds is in the file beside its pipe (see gamepad.py); who opens it
 * first hears that, then what the test writes into the pipe. When the test has closed the pipe, the pad has gone. */
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <linux/joystick.h>
#include <limits.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

#define NEXT(name) ((__typeof__(&name))dlsym(RTLD_NEXT, #name))
enum { most_files = 1024 };

struct state { /* as gamepad.py writes it */
    unsigned char axes, buttons;
    short axis[8];
    unsigned char button[12];
} __attribute__((packed));

static char* names[most_files]; /* of open pads, by descriptor */

static const char* place(const char* path, char* buffer) {
    const char* folder = getenv("VELDOR_PADS");
    if (!folder || strncmp(path, "/dev/input/", 11) != 0)
        return path;
    snprintf(buffer, PATH_MAX, "%s/%s", folder, path + 11);
    return buffer;
}

static struct state state_of(const char* name) {
    char path[PATH_MAX];
    struct state state = {0};
    snprintf(path, sizeof path, "%s.state", name);
    const int file = NEXT(open)(path, O_RDONLY);
    if (file < 0 || NEXT(read)(file, &state, sizeof state) != sizeof state)
        abort();
    NEXT(close)(file);
    return state;
}

static void send(int pipe, int type, int number, int value) {
    const struct js_event event = {0, (short)value, (unsigned char)(type | JS_EVENT_INIT), (unsigned char)number};
    if (write(pipe, &event, sizeof event) != sizeof event)
        abort();
}

/* A new reader hears nothing of before, but how everything stands. */
static void begin(const char* name) {
    char old[4096];
    const int pipe = NEXT(open)(name, O_RDWR | O_NONBLOCK);
    while (NEXT(read)(pipe, old, sizeof old) > 0) {
    }
    const struct state state = state_of(name);
    for (int i = 0; i < state.buttons; ++i)
        send(pipe, JS_EVENT_BUTTON, i, state.button[i]);
    for (int i = 0; i < state.axes; ++i)
        send(pipe, JS_EVENT_AXIS, i, state.axis[i]);
    NEXT(close)(pipe);
}

int open(const char* path, int flags, ...) {
    char buffer[PATH_MAX];
    va_list more;
    va_start(more, flags);
    const int mode = va_arg(more, int);
    va_end(more);
    const char* name = place(path, buffer);
    struct stat node;
    const int pad = name != path && NEXT(stat)(name, &node) == 0 && S_ISFIFO(node.st_mode);
    if (pad)
        begin(name);
    const int file = NEXT(open)(name, flags, mode);
    if (pad && file >= 0 && file < most_files)
        names[file] = strdup(name);
    return file;
}

int close(int file) {
    if (file >= 0 && file < most_files) {
        free(names[file]);
        names[file] = NULL;
    }
    return NEXT(close)(file);
}

ssize_t read(int file, void* bytes, size_t size) {
    const ssize_t got = NEXT(read)(file, bytes, size);
    if (got != 0 || file < 0 || file >= most_files || !names[file])
        return got;
    errno = ENODEV;
    return -1;
}

int ioctl(int file, unsigned long request, ...) {
    va_list more;
    va_start(more, request);
    void* answer = va_arg(more, void*);
    va_end(more);
    if (file < 0 || file >= most_files || !names[file])
        return NEXT(ioctl)(file, request, answer);
    const struct state state = state_of(names[file]);
    if (request == JSIOCGVERSION)
        *(unsigned*)answer = JS_VERSION;
    else if (request == JSIOCGAXES)
        *(unsigned char*)answer = state.axes;
    else if (request == JSIOCGBUTTONS)
        *(unsigned char*)answer = state.buttons;
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
