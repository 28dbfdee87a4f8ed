/* A game module that only records its calls. It stays until no file module_hold is there, and returns the number in
 * module_result.txt (without one, the mode that it was given). */
#include "module_entries.h"

#include <unistd.h>

static uint8_t stay(uint8_t fullscreen) {
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
