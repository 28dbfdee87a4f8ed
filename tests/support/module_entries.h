/* The entries of a game module: each writes down how it was called, one line in module_calls.txt, and stays. */
#include "veldor_module.h"

#include <stdio.h>

static uint8_t stay(uint8_t fullscreen);

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
    return stay(fullscreen);
}

uint8_t factory(int32_t mode_range, uint8_t fullscreen, int32_t screen_mode_range, int32_t bitmap_depth,
                int32_t version) {
    RECORD("factory %d %d %d %d %d\n", mode_range, fullscreen, screen_mode_range, bitmap_depth, version);
    return stay(fullscreen);
}

uint8_t battle(uint8_t fullscreen, int32_t version) {
    RECORD("battle %d %d\n", fullscreen, version);
    return stay(fullscreen);
}
