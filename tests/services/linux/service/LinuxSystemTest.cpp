#include "services/linux/service/LinuxSystem.h"

#include "tests/services/host/TestClient.h"

#include <gtest/gtest.h>

namespace {

class CountingListener final : public WirelessListener {
public:
    void interfacesChanged() override { ++changes; }
    void linkChanged(const LinkMessage&) override { }
    void linkRemoved(std::uint32_t) override { }
    void scanEnded(std::uint32_t, const std::vector<std::uint32_t>&) override { }
    void scanAborted(std::uint32_t) override { }
    void radiosChanged() override { }
    void regulatoryDomainChanged() override { }
    void eventsMissed() override { }

    int changes { 0 };
};

} // namespace

// The kernel knows none of these numbers, as it no longer knows that of nl80211 after the driver was unloaded.
TEST(LinuxSystem, FindsNl80211AgainAfterItWasLoadedAgain)
{
    std::vector<int> numbers { 0x7F00, 0x7F01, 0x7F01, -1, 0x7F02 };
    std::size_t found = 0;
    LinuxSystem system([](const std::string&) {}, [&] { return numbers[found++]; });
    CountingListener listener;
    int failures = 0;
    const auto read = [&] {
        const int before = failures;
        system.readInterfaces([&failures](const auto& interfaces) { failures += interfaces ? 0 : 1; });
        return pumpUntil([&] { return failures > before; });
    };
    system.start(listener);
    EXPECT_EQ(listener.changes, 1);
    EXPECT_TRUE(read());
    EXPECT_EQ(found, 2U);
    EXPECT_EQ(listener.changes, 2);
    EXPECT_TRUE(read()); // found under the same number: no endless loop
    EXPECT_EQ(found, 3U);
    EXPECT_EQ(listener.changes, 2);
    EXPECT_TRUE(read()); // it is not loaded at all
    system.repair();
    EXPECT_EQ(found, 5U);
    EXPECT_EQ(listener.changes, 3);
}
