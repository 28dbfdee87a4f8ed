/* A game module that only writes down how it was called: one line a call in module_calls.txt. It stays until no file
 * module_hold is there, and returns the number in module_result.txt (without one, the mode that it was given). */
#include "veldor_module.h"

#include <stdio.h>
#include <unistd.h>

static uint8_t leave(uint8_t fullscreen) {
    int result = fullscreen;
    while (access("module_hold", F_OK) == 0)
        usleep(5000);
    FILE* file = fopen("module_result.txt", "r");
    if (file) {
        if (fscanf(file, "%d", &result) != 1)
            result = fullscreen;
        fclose(file);
    }
    return (uint8_t)result;
}

#define RECORD(...)                                                                                                    \
    do {                                                                                                               \
        FILE* file = fopen("module_calls.txt", "a");                                                                   \
        if (file) {                                                                                                    \
            fprintf(file, __VA_ARGS__);                                                                                \
            fclose(file);                                                                                              \
        }                                                                                                              \
    } while (0)

uint8_t hq(uint8_t fullscreen, int32_t version) {
    RECORD("hq %d %d\n", fullscreen, version);
    return leave(fullscreen);
}

uint8_t factory(int32_t mode_range, uint8_t fullscreen, int32_t screen_mode_range, int32_t bitmap_depth,
                int32_t version) {
    RECORD("factory %d %d %d %d %d\n", mode_range, fullscreen, screen_mode_range, bitmap_depth, version);
    return leave(fullscreen);
}

uint8_t battle(uint8_t fullscreen, int32_t version) {
    RECORD("battle %d %d\n", fullscreen, version);
    return leave(fullscreen);
}
