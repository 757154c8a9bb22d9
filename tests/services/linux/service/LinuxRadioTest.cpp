#include "services/linux/service/LinuxRadio.h"

#include <gtest/gtest.h>

TEST(LinuxRadio, InterfaceWithoutASwitchIsAlwaysOn)
{
    RadioSwitches switches([](std::uint32_t) {});
    std::string log;
    LinuxRadio radio(switches, "no-such-card", [&log](const std::string& text) { log += text; });
    EXPECT_FALSE(radio.position().isSoftBlocked);
    EXPECT_FALSE(radio.position().isHardBlocked);
    EXPECT_TRUE(radio.set(true));
    EXPECT_TRUE(log.empty());
    EXPECT_FALSE(radio.set(false));
    EXPECT_EQ(log, "the radio has no switch");
}
