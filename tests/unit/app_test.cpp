// Start-up rules that need no machine.
#include "app/session.h"

#include <gtest/gtest.h>

namespace vcc {
namespace {

TEST(HqAddress, TakesSevenToFifteenCharactersWithThreeDotsInside) {
    for (const char* address : {"1.2.3.4", "255.255.255.255", ".1.2.3.4"})
        EXPECT_TRUE(looks_like_ip_address(address)) << address;
    for (const char* text : {"", "1...2", "1.2.34", "1.2.345.", "1.2.3.4.5", "192.168.100.1000"})
        EXPECT_FALSE(looks_like_ip_address(text)) << text;
}

} // namespace
} // namespace vcc
