#include "services/simulator/scenario/Scenario.h"
#include "tests/services/simulator/scenario/ScenarioTexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

namespace {

// A line that makes a network or a card invalid. The error must name its key and point at its value.
struct InvalidLine {
    std::string start; // valid lines before it
    std::string line;
    std::string after {}; // lines after it
};

std::string repeated(const std::string& text, int times)
{
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

std::uint32_t linesIn(const std::string& text)
{
    return static_cast<std::uint32_t>(std::count(text.begin(), text.end(), '\n'));
}

void expectErrorAt(const ScenarioResult& result, const InvalidLine& invalid, std::uint32_t line)
{
    const std::string key = invalid.line.substr(0, invalid.line.find(' '));
    EXPECT_FALSE(result.scenario.has_value()) << invalid.line;
    EXPECT_EQ(result.error.text.rfind(key + ": ", 0), 0U) << result.error.text << " for " << invalid.line;
    EXPECT_EQ(result.error.line, line) << invalid.line;
    EXPECT_EQ(result.error.column, invalid.line.find("= ") + 3) << invalid.line;
}

void expectErrors(const std::vector<InvalidLine>& lines)
{
    for (const InvalidLine& invalid : lines) {
        const std::string table = invalid.start + invalid.line + '\n' + invalid.after;
        const std::uint32_t line = linesIn(invalid.start) + 1;
        expectErrorAt(parseScenarioNetwork(table), invalid, line);
        expectErrorAt(parseScenario("[[network]]\n" + table + "[card]\n"), invalid, line + 1);
    }
}

TEST(InvalidNetwork, Name)
{
    expectErrors({
        { nameless, "ssid = \"\"" }, { nameless, "ssid = \"" + repeated("n", 33) + '"' },
        { nameless, "ssid = \"" + repeated("\xC3\xA4", 17) + '"' }, // 17 characters, 34 bytes
        { nameless, "ssid = 5" }, { nameless, "ssid_hex = \"4G\"" }, { nameless, "ssid_hex = \"414\"" },
        { nameless, "ssid_hex = \"\"" }, { named, "ssid_hex = \"41\"" }, // in addition to ssid
    });
}

TEST(InvalidNetwork, Address)
{
    for (const char* address :
        { "\"0A-00-00-00-00\"", "\"0A-00-00-00-00-0G\"", "\"FF-FF-FF-FF-FF-FF\"", "\"00-00-00-00-00-00\"", "1" })
        expectErrors({ { "ssid = \"a\"\n", std::string("bssid = ") + address } });
}

TEST(InvalidNetwork, ChannelSignalAndMode)
{
    expectErrors({
        { named, "channel = 15" },
        { named, "channel = \"6\"" },
        { named, "channel = 6.0" },
        { named, "signal_dbm = -9" },
        { named, "signal_dbm = -101" },
        { named, "signal_dbm = 4294967236" }, // -60 if truncated to 32 bits
        { named, "drift_db = 21" },
        { named, "drift_db = -1" },
        { named, "hidden = 1" },
        { named, "mode = \"adhoc\"" },
    });
}

TEST(InvalidNetwork, Security)
{
    expectErrors({
        { named, "security = \"wpa2\"" },
        { named, "security = true" },
        { wpaPsk, "cipher = \"ccmp\"" },
        { wep, "authentication = \"none\"" },
        { named, "security = \"wpa-none\"", "passphrase = \"12345678\"\n" }, // needs ad hoc mode
        { named, "security = \"wpa-psk\"", "passphrase = \"12345678\"\nmode = \"ad-hoc\"\n" },
        { named, "security = \"wpa-enterprise\"", "mode = \"ad-hoc\"\n" },
    });
}

TEST(InvalidNetwork, WepKey)
{
    expectErrors({
        { wep, "key_1 = \"four\"" }, { wep, "key_1 = \"\"" }, { wep, "key_4_hex = \"00112233\"" },
        { wep, "key_3_hex = \"pearlpearl\"" },
        { wep,
            "key_2 = \"\xC3\xA4"
            "bc\\u0001\"" }, // 5 bytes
        { wep, "key_1 = 12345" }, { wep, "key_2 = \"lighthousekey\"", "key_1 = \"pearl\"\n" }, // different lengths
        { wep + "key_1 = \"pearl\"\n", "key_1_hex = \"0123456789\"" },
        { wep, "transmit_key = 0", "key_1 = \"pearl\"\n" }, { wep, "transmit_key = 5", "key_1 = \"pearl\"\n" },
        { wep, "transmit_key = 2", "key_1 = \"pearl\"\n" }, // key_2 is not set
    });
}

TEST(InvalidNetwork, PresharedKey)
{
    expectErrors({
        { wpaPsk, "passphrase = \"1234567\"" }, { wpaPsk, "passphrase = \"" + repeated("0", 64) + '"' },
        { wpaPsk, "passphrase = \"caf\xC3\xA9 au lait\"" }, { wpaPsk, "passphrase = \"12345678\\t\"" },
        { wpaPsk, "preshared_key_hex = \"0011\"" }, { wpaPsk, "preshared_key_hex = \"north by northwest\"" },
        { wpaPsk, "preshared_key_hex = \"0011\"", "passphrase = \"12345678\"\n" }, // both
    });
}

TEST(InvalidNetwork, KeyOfAnotherSecurity)
{
    expectErrors({
        { named, "key_1 = \"pearl\"" },
        { wep, "cipher = \"tkip\"", "key_1 = \"pearl\"\n" },
        { wep, "passphrase = \"12345678\"" },
        { wpaPsk, "authentication = \"open\"" },
        { named, "passphrase = \"12345678\"", "security = \"wpa-enterprise\"\n" },
    });
}

TEST(InvalidNetwork, UnknownKeyIsReportedAtTheKey)
{
    const ScenarioResult result = parseScenarioNetwork(named + "\n   colour = \"blue\"\n");
    EXPECT_EQ(result.error.text.rfind("colour: ", 0), 0U);
    EXPECT_NE(result.error.text.find("ssid_hex"), std::string::npos); // lists the known keys
    EXPECT_EQ(result.error.line, 4U);
    EXPECT_EQ(result.error.column, 4U);
}

TEST(InvalidNetwork, MissingKeyIsReportedAtTheTable)
{
    const std::string before = "[card]\n\n[[network]]\n" + named;
    const struct {
        const char* key;
        const char* lines;
    } cases[] {
        { "ssid", "bssid = \"0A-00-00-00-00-02\"\n" },
        { "bssid", "ssid = \"b\"\n" },
        { "key_1", "ssid = \"b\"\nbssid = \"0A-00-00-00-00-02\"\nsecurity = \"wep\"\n" },
        { "passphrase", "ssid = \"b\"\nbssid = \"0A-00-00-00-00-02\"\nsecurity = \"wpa-psk\"\n" },
    };
    for (const auto& missing : cases) {
        const ScenarioResult result = parseScenario(before + "[[network]]\n" + missing.lines);
        EXPECT_FALSE(result.scenario.has_value()) << missing.key;
        EXPECT_EQ(result.error.text.rfind(std::string(missing.key) + ": ", 0), 0U) << result.error.text;
        EXPECT_EQ(result.error.line, 6U) << missing.key;
        EXPECT_EQ(result.error.column, 1U) << missing.key;
    }
}

TEST(InvalidScenario, TwoNetworksOfOneAddress)
{
    const std::string first = "[[network]]\nssid = \"a\"\nbssid = \"0A-00-00-00-00-0f\"\n";
    const InvalidLine second { first + "[[network]]\nssid = \"b\"\n", "bssid = \"0A:00:00:00:00:0F\"" };
    expectErrorAt(parseScenario(second.start + second.line), second, 6);
}

TEST(InvalidScenario, UnknownTable)
{
    const ScenarioResult result = parseScenario("[card]\n[[networks]]\nssid = \"a\"\n");
    EXPECT_EQ(result.error.text.rfind("networks: ", 0), 0U);
    EXPECT_EQ(result.error.line, 2U);
    EXPECT_EQ(result.error.column, 3U);
}

TEST(InvalidScenario, CardOrNetworkOfAnotherType)
{
    expectErrorAt(parseScenario("card = 1\n"), { "", "card = 1" }, 1);
    for (const char* text : { "[network]\nssid = \"a\"\n", "network = [ 1 ]\n" }) {
        const ScenarioResult result = parseScenario(text);
        EXPECT_FALSE(result.scenario.has_value()) << text;
        EXPECT_EQ(result.error.text.rfind("network: ", 0), 0U) << result.error.text;
        EXPECT_EQ(result.error.line, 1U) << text;
    }
    EXPECT_EQ(parseScenario("network = [ 1 ]\n").error.column, 13U);
}

TEST(InvalidScenario, CardValues)
{
    for (const char* line : { "address = \"card\"", "address = \"01-00-00-00-00-00\"", "eeprom_major = 256",
             "eeprom_minor = -1", "eeprom_error = 0", "supports_five_ghz = \"yes\"", "hardware_radio_on = 1" })
        expectErrorAt(parseScenario(std::string("[card]\n") + line + '\n'), { "", line }, 2);
    const ScenarioResult unknown = parseScenario("[card]\ncolour = 1\n");
    EXPECT_EQ(unknown.error.text.rfind("colour: ", 0), 0U);
    EXPECT_EQ(unknown.error.column, 1U);
}

TEST(InvalidScenario, ErrorsNeverQuoteAKey)
{
    for (const char* line : { "key_1 = \"sesame\"", "key_1_hex = \"sesame\"", "passphrase = \"sesame\"",
             "preshared_key_hex = \"sesame\"" }) {
        for (const std::string& start : { named, wep, wpaPsk }) {
            const ScenarioResult result = parseScenarioNetwork(start + line + '\n');
            EXPECT_FALSE(result.scenario.has_value());
            EXPECT_EQ(result.error.text.find("sesame"), std::string::npos) << result.error.text;
        }
    }
}

TEST(MalformedToml, IsReportedWithItsPosition)
{
    const ScenarioResult unterminated = parseScenario("[card]\naddress = \"02-51\n");
    EXPECT_FALSE(unterminated.scenario.has_value());
    EXPECT_EQ(unterminated.error.line, 2U);
    EXPECT_GT(unterminated.error.column, 10U);
    EXPECT_FALSE(unterminated.error.text.empty());
    EXPECT_EQ(parseScenario("[card]\neeprom_major = 1\neeprom_major = 2\n").error.line, 3U);
}

TEST(MalformedToml, HeadersWithoutAKey)
{
    for (const std::string header : { "[=]", "[[[a]]]", "[ #", "[[ =", "[\"", "[]", "[[]]", "[a", "[[a]", "[.a]" }) {
        const ScenarioResult result = parseScenario("[card]\n" + header + "\n");
        EXPECT_FALSE(result.scenario.has_value()) << header;
        EXPECT_FALSE(result.error.text.empty()) << header;
        EXPECT_GE(result.error.line, 2U) << header;
    }
}

TEST(MalformedToml, ZeroBytesAndInvalidUtf8)
{
    for (const std::string& bytes :
        { std::string("\0", 1), std::string("# \0\n", 4), std::string("ssid = \"a\0b\"", 12), std::string("# \xFF\n"),
            std::string("address = \"\xE9\""), std::string("# \xC3") }) {
        const ScenarioResult result = parseScenario("[card]\n" + bytes);
        EXPECT_FALSE(result.scenario.has_value());
        EXPECT_EQ(result.error.line, 2U);
    }
}

TEST(MalformedToml, TruncatedAnywhere)
{
    const std::string whole = "[card]\naddress = \"02-51-56-00-00-01\"\n[[network]]\nssid = \"F\xC3\xA4hre\"\n"
                              "bssid = \"0A-00-00-00-00-01\"\nsecurity = \"wep\"\nkey_1_hex = \"0123456789\"\n";
    ASSERT_TRUE(parseScenario(whole).scenario.has_value());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const ScenarioResult result = parseScenario(std::string_view(whole).substr(0, size));
        EXPECT_NE(result.scenario.has_value(), !result.error.text.empty()) << size;
    }
}

TEST(MalformedToml, DeepNesting)
{
    EXPECT_FALSE(parseScenario("network = " + std::string(500'000, '[')).scenario.has_value());
    EXPECT_FALSE(parseScenario("network = " + repeated("{a=", 300'000)).scenario.has_value());
    EXPECT_FALSE(
        parseScenario("[card" + repeated(".a", 50) + "]\na" + repeated(".a", 90) + " = 1\n").scenario.has_value());
}

// Each dot makes a nested table, and destroying too many of them would overflow the stack.
TEST(MalformedToml, LongDottedKeys)
{
    for (const std::string& line : { "card" + repeated(".a", 100'000) + " = 1", "[card" + repeated(".a", 100'000) + "]",
             "[[network" + repeated(".a", 101) + "]]\r" }) {
        const ScenarioResult result = parseScenario("[card]\n\n" + line + "\n");
        EXPECT_FALSE(result.scenario.has_value());
        EXPECT_EQ(result.error.line, 3U);
    }
    EXPECT_EQ(parseScenario(repeated(".", 101)).error.text, "more than 100 dots in a line");
    EXPECT_TRUE(parseScenario("# " + repeated(".", 1'000) + "\n  \t#" + repeated(".", 1'000)).scenario.has_value());
    EXPECT_TRUE(parseScenarioNetwork(wpaPsk + "passphrase = \"" + repeated(".", 63) + "\"").scenario);
}

TEST(MalformedToml, NonAsciiCharactersOutsideStringsAndComments)
{
    for (const std::string character :
        { "\xC3\xA4", "\xE2\xB1\xA0", "\xE3\x81\x82", "\xEF\xB9\xB1", "\xF0\x9F\x9A\xA2" }) {
        for (const std::string start : { "", "card", "card ", "[card]\naddress =", "[card", "network = [ " }) {
            const ScenarioResult result = parseScenario("#\n" + start + character + "\n");
            EXPECT_FALSE(result.scenario.has_value()) << start << character;
            EXPECT_GE(result.error.line, 2U) << start << character;
        }
        const auto scenario
            = parseScenarioNetwork("# " + character + "\nssid = \"" + character + "\"\n" + nameless).scenario;
        ASSERT_TRUE(scenario.has_value()) << character;
        EXPECT_EQ(scenario->networks.front().ssid, character);
    }
}

TEST(LargeScenario, IsLimitedTo1MebibyteButNotInNetworks)
{
    const ScenarioResult tooLarge = parseScenario(std::string((1U << 20) + 1, '\n'));
    EXPECT_FALSE(tooLarge.scenario.has_value());
    EXPECT_EQ(tooLarge.error.text, "larger than 1 MiB");
    EXPECT_EQ(tooLarge.error.line, 0U);

    std::string many;
    for (int i = 0; i < 10'000; ++i) {
        char address[18];
        (void)std::snprintf(address, sizeof(address), "0A-00-00-00-%02X-%02X", (i >> 8) & 0xFF, i & 0xFF);
        many += "[[network]]\nssid = \"n\"\nbssid = \"" + std::string(address) + "\"\n";
    }
    const auto scenario = parseScenario(many).scenario;
    ASSERT_TRUE(scenario.has_value());
    EXPECT_EQ(scenario->networks.size(), 10'000U);
}

} // namespace
