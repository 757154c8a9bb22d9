#include "services/simulator/scenario/JoinHints.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

ScenarioNetwork network(const std::string& ssid, Security security = Security::Open)
{
    ScenarioNetwork network;
    network.ssid = ssid;
    network.security = security;
    return network;
}

std::string hintFor(const ScenarioNetwork& network)
{
    const auto lines = linesOf(joinHints({ {}, { network } }));
    return lines.size() == 2 ? lines[1] : std::string();
}

bool endsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

TEST(JoinHints, AreOneAlignedLinePerNetwork)
{
    ScenarioNetwork wep = network("Pearl Diver", Security::Wep);
    wep.wepKeys[0] = "pearl";
    EXPECT_EQ(joinHints({ {}, { network("F\xC3\xA4hre"), wep } }),
        "Network      Kind          To join, type\n"
        "F\xC3\xA4hre        open          nothing\n"
        "Pearl Diver  WEP 40, open  key 1 ASCII pearl\n");
}

TEST(JoinHints, WithoutNetworksAreTheHeader)
{
    EXPECT_EQ(joinHints({}), "Network  Kind  To join, type\n");
}

TEST(JoinHints, ListEveryKeyAndTheOneToSelect)
{
    ScenarioNetwork wep = network("n", Security::Wep);
    wep.sharedKeyAuthentication = true;
    wep.wepKeys = { "", "lighthousekey", std::string("\x00\x11\x22\x33\x44\x55\x66\x77\x88\x99\xAA\xBB\xCC", 13), "" };
    wep.transmitKeyIndex = 2;
    EXPECT_TRUE(endsWith(hintFor(wep),
        "WEP 104, shared  key 2 ASCII lighthousekey, key 3 hexadecimal 00112233445566778899AABBCC; select key 3"));
}

TEST(JoinHints, ShowKeysWithSpacesAsDigits)
{
    ScenarioNetwork wep = network("n", Security::Wep);
    wep.wepKeys[0] = "abcd ";
    EXPECT_TRUE(endsWith(hintFor(wep), "key 1 hexadecimal 6162636420"));
}

TEST(JoinHints, ShowPassphrasesAndPresharedKeys)
{
    ScenarioNetwork psk = network("n", Security::WpaPsk);
    psk.passphrase = "anchor and chain";
    EXPECT_TRUE(endsWith(hintFor(psk), "WPA-PSK TKIP  passphrase anchor and chain"));
    psk.cipher = Cipher::Aes;
    psk.passphrase.clear();
    psk.presharedKey.emplace().fill(0xA5);
    std::string digits;
    for (int i = 0; i < 32; ++i)
        digits += "A5";
    EXPECT_TRUE(endsWith(hintFor(psk), "WPA-PSK AES  in a profile: 64 digits " + digits));
    psk.presharedKey->fill('3');
    EXPECT_TRUE(endsWith(hintFor(psk), "WPA-PSK AES  64 digits " + std::string(64, '3')));
    ScenarioNetwork none = network("n", Security::WpaNone);
    none.adHoc = true;
    none.passphrase = "paddle together";
    EXPECT_TRUE(endsWith(hintFor(none), "WPA-None TKIP, ad hoc  passphrase paddle together"));
}

TEST(JoinHints, SayThatEnterpriseNetworksCannotBeJoined)
{
    EXPECT_TRUE(endsWith(hintFor(network("n", Security::WpaEnterprise)), "WPA 802.1X TKIP  (cannot be joined)"));
}

TEST(JoinHints, AskForTheNameOfAHiddenNetworkFirst)
{
    ScenarioNetwork hidden = network("Attic");
    hidden.hidden = true;
    EXPECT_EQ(hintFor(hidden), "Attic    open, hidden  its name");
    hidden.security = Security::WpaPsk;
    hidden.passphrase = "bread and honey";
    EXPECT_TRUE(endsWith(hintFor(hidden), "hidden  its name, then passphrase bread and honey"));
}

TEST(JoinHints, EscapeUnprintableBytesOfANetworkName)
{
    const struct {
        std::string ssid;
        std::string displayName;
    } cases[] {
        { "Caf\xE9", "Caf\\xE9" }, // Latin-1
        { std::string("a\0b\x7F\n", 5), "a\\x00b\\x7F\\x0A" }, // control characters
        { "a\\b", "a\\x5Cb" }, // the escape character itself
        { "\xC2\x85", "\\xC2\\x85" }, // a control character above ASCII
        { "\xC0\xAF", "\\xC0\\xAF" }, // overlong
        { "\xE0\x80\xAF", "\\xE0\\x80\\xAF" },
        { "\xED\xA0\x80", "\\xED\\xA0\\x80" }, // a surrogate
        { "\xF4\x90\x80\x80", "\\xF4\\x90\\x80\\x80" }, // above U+10FFFF
        { "\xF5\x80\x80\x80", "\\xF5\\x80\\x80\\x80" },
        { "\xE2\x9A", "\\xE2\\x9A" }, // truncated
        { "\xE2\x9A\x93", "\xE2\x9A\x93" },
        { "\xF0\x9F\x9A\xA2", "\xF0\x9F\x9A\xA2" },
    };
    for (const auto& name : cases)
        EXPECT_EQ(hintFor(network(name.ssid)).rfind(name.displayName + "  ", 0), 0u) << name.displayName;
}

} // namespace
