/* What a game module of Veldor exports. A module is a shared library beside the control centre: hq.so, factory.so or
 * battle.so
 * (.dll on Windows), with one entry of C linkage named like the library. docs/modules.md tells what it may rely on and
 * what it must leave behind.
 *
 * fullscreen              0: the display is a window; 0xFF: it is full screen
 * version                 version of the control centre times 100: 128 is 1.2.8
 * mode_range              display modes that the machine offers: 1 full screen only, 2 window only, 3 both
 * screen_mode_range       the setting of that name: the same codes, -1 not yet probed
 * bitmap_depth            colour depth: 0 32-bit, 1 24-bit, 2 16-bit, 3 15-bit
 *
 * Every entry returns the display mode that it leaves behind, in the form of `fullscreen`. */
#ifndef VELDOR_MODULE_H
#define VELDOR_MODULE_H

#include <stdint.h>

#if defined(_WIN32)
#define VELDOR_EXPORT __declspec(dllexport)
#else
#define VELDOR_EXPORT __attribute__((visibility("default")))
#endif

#define VELDOR_WINDOW ((uint8_t)0)
#define VELDOR_FULL_SCREEN ((uint8_t)0xFF)

#ifdef __cplusplus
extern "C" {
#endif

typedef uint8_t veldor_hq_entry(uint8_t fullscreen, int32_t version);
typedef uint8_t veldor_factory_entry(int32_t mode_range, uint8_t fullscreen, int32_t screen_mode_range,
                                     int32_t bitmap_depth, int32_t version);
typedef uint8_t veldor_battle_entry(uint8_t fullscreen, int32_t version);

VELDOR_EXPORT uint8_t hq(uint8_t fullscreen, int32_t version);
VELDOR_EXPORT uint8_t factory(int32_t mode_range, uint8_t fullscreen, int32_t screen_mode_range, int32_t bitmap_depth,
                              int32_t version);
VELDOR_EXPORT uint8_t battle(uint8_t fullscreen, int32_t version);

#ifdef __cplusplus
}
#endif

#endif
