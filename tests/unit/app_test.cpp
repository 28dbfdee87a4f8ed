// Start-up rules that need no machine.
#include "app/hq_address.h"
#include "app/startup.h"

#include <gtest/gtest.h>

namespace vcc {
namespace {

TEST(HqAddress, TakesSevenToFifteenCharactersWithThreeDotsAfterTheFirst) {
    for (const char* address : {"1.2.3.4", "192.168.0.10", "255.255.255.255", "1a.2b.3c.4d", "10.0.0.1\n", ".1.2.3.4"})
        EXPECT_TRUE(looks_like_ip_address(address)) << address;
    for (const char* text : {"", "1.2.3", "1.2.34", "1.2.345.", "1.2.3.4.5", "192.168.100.1000", "no address"})
        EXPECT_FALSE(looks_like_ip_address(text)) << text;
}

TEST(HqAddress, IsWantedByOneSpelling) {
    for (const char* argument : {"/N", "/NET", "/N 192.168.0.1 and more"})
        EXPECT_TRUE(wants_clipboard_address(argument)) << argument;
    for (const char* argument : {"", "/n", "-N", "N", "x/N"})
        EXPECT_FALSE(wants_clipboard_address(argument)) << argument;
}

TEST(VersionString, SplitsTheNumber) {
    for (const auto& [number, text] : {std::pair(128, "1.2.8"), {1205, "12.0.5"}, {7, "0.0.7"}})
        EXPECT_EQ(version_string(number), text);
}

} // namespace
} // namespace vcc
