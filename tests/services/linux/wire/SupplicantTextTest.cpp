#include "services/linux/wire/SupplicantText.h"

#include <gtest/gtest.h>

namespace {

SupplicantEventKind kindOf(const char* line)
{
    const auto event = supplicantEvent(line);
    EXPECT_TRUE(event) << line;
    return event ? event->kind : SupplicantEventKind::Other;
}

std::vector<std::uint8_t> ssidOf(const std::string& printed)
{
    return supplicantStatus("ssid=" + printed + "\n").ssid;
}

using NameBytes = std::vector<std::uint8_t>;

} // namespace

TEST(SupplicantEvent, IsKnownByItsFirstWord)
{
    EXPECT_EQ(kindOf("<3>CTRL-EVENT-CONNECTED - Connection to 02:00:00:00:a0:01 completed [id=0 id_str=]"),
        SupplicantEventKind::Connected);
    EXPECT_EQ(kindOf("<3>CTRL-EVENT-DISCONNECTED bssid=02:00:00:00:a0:01 reason=3"), SupplicantEventKind::Disconnected);
    EXPECT_EQ(kindOf("<3>CTRL-EVENT-NETWORK-NOT-FOUND "), SupplicantEventKind::NetworkNotFound);
    EXPECT_EQ(kindOf("<3>CTRL-EVENT-TERMINATING "), SupplicantEventKind::Terminating);
    EXPECT_EQ(kindOf("<3>CTRL-EVENT-CONNECTEDNESS"), SupplicantEventKind::Other);
    EXPECT_EQ(supplicantEvent("<3>Trying to associate")->text, "Trying to associate");
}

TEST(SupplicantEvent, WrongKeyIsAReasonOfADisabledNetwork)
{
    EXPECT_EQ(kindOf("<3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 ssid=\"a\" auth_failures=1 duration=10 reason=WRONG_KEY"),
        SupplicantEventKind::WrongKey);
    EXPECT_EQ(kindOf("<3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 ssid=\"a\" auth_failures=1 duration=10 reason=CONN_FAILED"),
        SupplicantEventKind::Other);
}

TEST(SupplicantEvent, NeedsALevel)
{
    for (const char* const line : { "", "OK\n", "CTRL-EVENT-CONNECTED", "<3" })
        EXPECT_FALSE(supplicantEvent(line)) << line;
}

TEST(SupplicantStatus, HasThePeer)
{
    const auto status = supplicantStatus(
        "bssid=02:00:00:00:a0:01\nfreq=5180\nssid=Harbour=1\nid=0\nmode=station\nwpa_state=COMPLETED\n");
    EXPECT_TRUE(status.isCompleted);
    EXPECT_EQ(status.bssid, (MacAddress { 2, 0, 0, 0, 0xA0, 1 }));
    EXPECT_EQ(status.frequencyMhz, 5180U);
    EXPECT_EQ(std::string(status.ssid.begin(), status.ssid.end()), "Harbour=1");
    EXPECT_FALSE(supplicantStatus("wpa_state=4WAY_HANDSHAKE\n").isCompleted);
}

TEST(SupplicantStatus, NamesAreUnescapedToTheirBytes)
{
    EXPECT_EQ(ssidOf("Hid\\xff den"), (NameBytes { 'H', 'i', 'd', 0xFF, ' ', 'd', 'e', 'n' }));
    EXPECT_EQ(ssidOf("\\\\\\\"\\n\\r\\t\\e"), (NameBytes { '\\', '"', '\n', '\r', '\t', 0x1B }));
    EXPECT_EQ(ssidOf("\\x00"), (NameBytes { 0 }));
    EXPECT_EQ(ssidOf("\\xg"), (NameBytes { 'x', 'g' }));
    EXPECT_EQ(ssidOf("a\\"), (NameBytes { 'a', '\\' }));
}

TEST(SupplicantAddress, IsReadStrictly)
{
    EXPECT_EQ(addressText(*addressFromText("00:1a:Ff:10:20:30")), "00:1a:ff:10:20:30");
    for (const char* const text :
        { "", "00:11:22:33:44", "00:11:22:33:44:5", "00-11-22-33-44-55", "00:11:22:33:44:5g", "00:11:22:33:44:55:66" })
        EXPECT_FALSE(addressFromText(text)) << text;
}

TEST(SupplicantStatus, TellsALinkThatIsDownFromOneThatChanges)
{
    EXPECT_TRUE(supplicantStatus("wpa_state=DISCONNECTED\n").isDown);
    EXPECT_TRUE(supplicantStatus("wpa_state=SCANNING\n").isDown);
    EXPECT_FALSE(supplicantStatus("wpa_state=GROUP_HANDSHAKE\n").isDown);
    EXPECT_FALSE(supplicantStatus("wpa_state=COMPLETED\n").isDown);
    EXPECT_TRUE(supplicantStatus("mode=IBSS\n").isAdHoc);
    EXPECT_FALSE(supplicantStatus("mode=station\n").isAdHoc);
}

TEST(SupplicantEvent, ChannelSwitchIsKnown)
{
    const auto event = supplicantEvent("<3>CTRL-EVENT-CHANNEL-SWITCH freq=2437 ht_enabled=0 ch_offset=0");
    ASSERT_TRUE(event);
    EXPECT_EQ(event->kind, SupplicantEventKind::ChannelSwitched);
}
