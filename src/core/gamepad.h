// Gamepads: their sticks and buttons type keys, so that whatever hears the keyboard hears them, too.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace vcc {

/// Added to the library's number of a key that a gamepad types. Modifiers of the keyboard do not count for it.
inline constexpr int by_gamepad = 0x100;

// Keys that no keyboard has; the library's numbers end below.
inline constexpr int key_clear_field = 0x80, key_step_back = 0x81, key_step_forward = 0x82;

/// The latest key or click came from a gamepad that is still there.
inline std::atomic<bool> gamepad_used = false;

/// The player is at another program: what gamepads do meanwhile is not meant for this one.
inline std::atomic<bool> gamepads_ignored = false;

/// From now on gamepads are heard or, if not `wanted`, never looked for.
void listen_to_gamepads(bool wanted);

/// Types what has been pressed since the latest call. Looks once a second whether a gamepad has come or gone, which is
/// all that happens without one.
void poll_gamepads();

/// What is held now counts as seen: something else has heard it.
void forget_gamepads();

/// Leaves the library without gamepads, as a module finds it; the next poll brings them back.
void release_gamepads();

struct StickReading {
    int x = 0, y = 0; ///< -128 to 128
};

struct PadReading {
    std::uint32_t buttons = 0; ///< one bit each
    std::array<StickReading, 2> sticks{};
};

struct PadKey {
    int character = 0, library_key = 0;
    bool operator==(const PadKey&) const = default;
};

/// What gamepads have held, and what they type next.
class PadTyping {
public:
    /// The keys for these readings: one for each new press of a button or way of a stick; the latest way that is held
    /// repeats. Pure except for its memory.
    std::vector<PadKey> keys(std::span<const PadReading> pads, std::uint32_t now_ms);

    /// What the next readings hold counts as seen.
    void forget();

private:
    enum class Way : std::uint8_t { none, up, down, left, right };
    struct Pad {
        std::uint32_t buttons = 0;
        std::array<Way, 2> ways{};
    };
    struct Repeat {
        std::size_t pad, stick;
        std::uint32_t since_ms, wait_ms;
    };

    static int strength(const StickReading& stick, Way way);
    static Way way_of(const StickReading& stick, Way before);
    static PadKey key_of(Way way);

    std::vector<Pad> held_;
    std::optional<Repeat> repeat_;
};

} // namespace vcc
