// Start-up rules that need no machine.
#include "app/handoff.h"
#include "app/hq_address.h"

#include <gtest/gtest.h>

namespace vcc {
namespace {

TEST(HqAddress, TakesSevenToFifteenCharactersWithThreeDotsInside) {
    for (const char* address : {"1.2.3.4", "255.255.255.255", ".1.2.3.4"})
        EXPECT_TRUE(looks_like_ip_address(address)) << address;
    for (const char* text : {"", "1...2", "1.2.34", "1.2.345.", "1.2.3.4.5", "192.168.100.1000"})
        EXPECT_FALSE(looks_like_ip_address(text)) << text;
}

TEST(DisplayState, IsFullScreenForEveryNumberButZero) {
    EXPECT_EQ(display_state(0), windowed);
    for (std::uint8_t result : std::initializer_list<std::uint8_t>{1, 0x7F, 0xFF})
        EXPECT_EQ(display_state(result), full_screen);
}

} // namespace
} // namespace vcc
