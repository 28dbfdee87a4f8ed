// Gamepads: their sticks and buttons type keys, so whatever reads the keyboard gets them, too.
#pragma once

#include "core/geometry.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace vcc {

/// Marks a library key number as typed by a gamepad; the keyboard's modifiers do not apply to it.
inline constexpr int by_gamepad = 0x100;

// Keys that no keyboard has; the library's numbers end below.
inline constexpr int key_clear_field = 0x80, key_step_back = 0x81, key_step_forward = 0x82;

/// The latest key or click came from a gamepad that is still plugged in.
inline std::atomic<bool> gamepad_used = false;

/// Turns gamepads on or off; while they are off, nothing looks for them.
void listen_to_gamepads(bool wanted);

/// Types what was pressed since the last call, unless another program has the focus. Checks once a second for gamepads
/// plugged in or removed; without one, that is all. True if there is one: it ends no wait.
bool poll_gamepads();

/// Ignores what is held now, because something else has reacted to it already.
void forget_gamepads();

/// Removes gamepads from the library, as modules expect; the next poll brings them back.
void release_gamepads();

struct PadReading {
    std::uint32_t buttons = 0;     ///< one bit each
    std::array<Point, 2> sticks{}; ///< -128 to 128
};

struct PadKey {
    int character = 0, library_key = 0;
    bool operator==(const PadKey&) const = default;
};

struct PadWay;

/// What gamepads have held, and what they type next.
class PadTyping {
public:
    /// The keys that these readings type: one for each newly pressed button and newly pushed stick; the latest stick to
    /// be pushed repeats. Pure except for its memory.
    std::vector<PadKey> keys(std::span<const PadReading> pads, std::uint32_t now_ms);

    /// Types nothing for what the next readings hold.
    void forget();

private:
    struct Pad {
        std::uint32_t buttons = 0;
        std::array<const PadWay*, 2> ways{};
    };
    struct Repeat {
        std::size_t pad, stick;
        std::uint32_t since_ms, wait_ms;
    };

    std::vector<Pad> held_;
    std::optional<Repeat> repeat_;
};

} // namespace vcc
