#include "services/simulator/scenario/Scenario.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

namespace {

struct WrongLine {
    const char* name;
    const char* start; // lines before the wrong one
    const char* line;
    std::uint32_t column;
    const char* text; // what the error says
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

void expectError(const ScenarioResult& result, const WrongLine& wrong)
{
    EXPECT_FALSE(result.scenario.has_value());
    EXPECT_EQ(result.error.text, wrong.text);
    EXPECT_EQ(result.error.line, linesIn(wrong.start) + 1);
    EXPECT_EQ(result.error.column, wrong.column);
}

constexpr const char* named = "ssid = \"Quay\"\nbssid = \"0A-00-00-00-00-01\"\n";
constexpr const char* nameless = "bssid = \"0A-00-00-00-00-01\"\n";
constexpr const char* wep = "ssid = \"Quay\"\nbssid = \"0A-00-00-00-00-01\"\nsecurity = \"wep\"\n";
constexpr const char* wpaPsk = "ssid = \"Quay\"\nbssid = \"0A-00-00-00-00-01\"\nsecurity = \"wpa-psk\"\n";

constexpr const char* networkKeys
    = "ssid, ssid_hex, bssid, channel, signal_dbm, drift_db, hidden, mode, security, cipher, authentication, key_1, "
      "key_1_hex, key_2, key_2_hex, key_3, key_3_hex, key_4, key_4_hex, transmit_key, passphrase, preshared_key_hex";

std::string printed(const testing::TestParamInfo<WrongLine>& info)
{
    return info.param.name;
}

class WrongNetwork : public testing::TestWithParam<WrongLine> { };

TEST_P(WrongNetwork, IsRefusedAtItsValue)
{
    const WrongLine& wrong = GetParam();
    expectError(parseScenarioNetwork(std::string(wrong.start) + wrong.line + "\n"), wrong);
}

// The place in a file is that of the same line below its table's header.
TEST_P(WrongNetwork, IsRefusedInAFileToo)
{
    const WrongLine& wrong = GetParam();
    const ScenarioResult result = parseScenario("[[network]]\n" + std::string(wrong.start) + wrong.line + "\n[card]\n");
    EXPECT_FALSE(result.scenario.has_value());
    EXPECT_EQ(result.error.text, wrong.text);
    EXPECT_EQ(result.error.line, linesIn(wrong.start) + 2);
    EXPECT_EQ(result.error.column, wrong.column);
}

INSTANTIATE_TEST_SUITE_P(Name, WrongNetwork,
    testing::Values( //
        WrongLine { "Empty", nameless, "ssid = \"\"", 8, "ssid: the name is 0 bytes long; allowed are 1 to 32" },
        WrongLine { "TooLong", nameless, "ssid = \"123456789012345678901234567890123\"", 8,
            "ssid: the name is 33 bytes long; allowed are 1 to 32" },
        WrongLine { "TooLongInBytesAlone", nameless,
            "ssid = \"\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4"
            "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4"
            "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\"",
            8, "ssid: the name is 34 bytes long; allowed are 1 to 32" },
        WrongLine { "NoText", nameless, "ssid = 5", 8, "ssid: expected a text in quotation marks" },
        WrongLine {
            "NoDigits", nameless, "ssid_hex = \"4G\"", 12, "ssid_hex: expected an even number of hexadecimal digits" },
        WrongLine { "HalfAByte", nameless, "ssid_hex = \"414\"", 12,
            "ssid_hex: expected an even number of hexadecimal digits" },
        WrongLine {
            "EmptyDigits", nameless, "ssid_hex = \"\"", 12, "ssid_hex: the name is 0 bytes long; allowed are 1 to 32" },
        WrongLine { "Twice", named, "ssid_hex = \"41\"", 12,
            "ssid_hex: the network has a name already; give either ssid or ssid_hex" }),
    printed);

INSTANTIATE_TEST_SUITE_P(Address, WrongNetwork,
    testing::Values( //
        WrongLine { "Short", "ssid = \"a\"\n", "bssid = \"0A-00-00-00-00\"", 9,
            "bssid: expected an address such as 00-11-22-AA-BB-CC" },
        WrongLine { "NoHex", "ssid = \"a\"\n", "bssid = \"0A-00-00-00-00-0G\"", 9,
            "bssid: expected an address such as 00-11-22-AA-BB-CC" },
        WrongLine { "Group", "ssid = \"a\"\n", "bssid = \"FF-FF-FF-FF-FF-FF\"", 9,
            "bssid: a group address, or none at all; the first octet must be even and not all octets 0" },
        WrongLine { "Zero", "ssid = \"a\"\n", "bssid = \"00-00-00-00-00-00\"", 9,
            "bssid: a group address, or none at all; the first octet must be even and not all octets 0" },
        WrongLine { "NoText", "ssid = \"a\"\n", "bssid = 1", 9, "bssid: expected a text in quotation marks" }),
    printed);

INSTANTIATE_TEST_SUITE_P(Air, WrongNetwork,
    testing::Values( //
        WrongLine { "NoSuchChannel", named, "channel = 15", 11,
            "channel: 15 is no channel; allowed are 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 34, 36, 38, 40, 42, "
            "44, 46, 48, 52, 56, 60, 64, 100, 104, 108, 112, 116, 120, 124, 128, 132, 136, 140, 149, 153, 157, 161" },
        WrongLine { "TextualChannel", named, "channel = \"6\"", 11, "channel: expected a whole number" },
        WrongLine { "FractionOfAChannel", named, "channel = 6.0", 11, "channel: expected a whole number" },
        WrongLine { "SignalTooStrong", named, "signal_dbm = -9", 14,
            "signal_dbm: -9 is out of range; allowed are -100 to -10" },
        WrongLine { "SignalTooWeak", named, "signal_dbm = -101", 14,
            "signal_dbm: -101 is out of range; allowed are -100 to -10" },
        WrongLine { "SignalBeyondThirtyTwoBits", named, "signal_dbm = 4294967236", 14,
            "signal_dbm: 4294967236 is out of range; allowed are -100 to -10" },
        WrongLine { "DriftTooGreat", named, "drift_db = 21", 12, "drift_db: 21 is out of range; allowed are 0 to 20" },
        WrongLine { "DriftBelowZero", named, "drift_db = -1", 12, "drift_db: -1 is out of range; allowed are 0 to 20" },
        WrongLine { "HiddenByNumber", named, "hidden = 1", 10, "hidden: expected true or false" },
        WrongLine { "UnknownMode", named, "mode = \"adhoc\"", 8,
            "mode: \"adhoc\" is not known; allowed are infrastructure, ad-hoc" }),
    printed);

INSTANTIATE_TEST_SUITE_P(SecurityKind, WrongNetwork,
    testing::Values( //
        WrongLine { "Unknown", named, "security = \"wpa2\"", 12,
            "security: \"wpa2\" is not known; allowed are open, wep, wpa-psk, wpa-none, wpa-enterprise" },
        WrongLine { "NoText", named, "security = true", 12, "security: expected a text in quotation marks" },
        WrongLine {
            "UnknownCipher", wpaPsk, "cipher = \"ccmp\"", 10, "cipher: \"ccmp\" is not known; allowed are tkip, aes" },
        WrongLine { "UnknownAuthentication", wep, "authentication = \"none\"", 18,
            "authentication: \"none\" is not known; allowed are open, shared" },
        WrongLine { "WpaNoneWithAccessPoint", named, "security = \"wpa-none\"\npassphrase = \"12345678\"", 12,
            "security: wpa-none is for networks with mode = \"ad-hoc\"" },
        WrongLine { "WpaPskAdHoc", named, "security = \"wpa-psk\"\npassphrase = \"12345678\"\nmode = \"ad-hoc\"", 12,
            "security: ad hoc networks are open, wep or wpa-none" },
        WrongLine { "EnterpriseAdHoc", named, "security = \"wpa-enterprise\"\nmode = \"ad-hoc\"", 12,
            "security: ad hoc networks are open, wep or wpa-none" }),
    printed);

INSTANTIATE_TEST_SUITE_P(WepKey, WrongNetwork,
    testing::Values( //
        WrongLine { "ShortText", wep, "key_1 = \"four\"", 9, "key_1: expected 5 or 13 characters" },
        WrongLine { "EmptyText", wep, "key_1 = \"\"", 9, "key_1: expected 5 or 13 characters" },
        WrongLine {
            "ShortDigits", wep, "key_4_hex = \"00112233\"", 13, "key_4_hex: expected 10 or 26 hexadecimal digits" },
        WrongLine { "NoDigits", wep, "key_3_hex = \"pearlpearl\"", 13,
            "key_3_hex: expected an even number of hexadecimal digits" },
        WrongLine { "NotAscii", wep,
            "key_2 = \"\xC3\xA4"
            "bc\\u0001\"",
            9, "key_2: expected printable ASCII characters; other keys are given as key_2_hex" },
        WrongLine { "NoText", wep, "key_1 = 12345", 9, "key_1: expected a text in quotation marks" },
        WrongLine { "MixedLengths", wep, "key_2 = \"lighthousekey\"\nkey_1 = \"pearl\"", 9,
            "key_2: the keys of a network are all of one length" },
        WrongLine { "TransmitKeyZero", wep, "transmit_key = 0\nkey_1 = \"pearl\"", 16,
            "transmit_key: 0 is out of range; allowed are 1 to 4" },
        WrongLine { "TransmitKeyFive", wep, "transmit_key = 5\nkey_1 = \"pearl\"", 16,
            "transmit_key: 5 is out of range; allowed are 1 to 4" },
        WrongLine { "TransmitKeyNotSet", wep, "transmit_key = 2\nkey_1 = \"pearl\"", 16,
            "transmit_key: the network sends with key_2, which is not set" }),
    printed);

INSTANTIATE_TEST_SUITE_P(PresharedKey, WrongNetwork,
    testing::Values( //
        WrongLine { "SevenCharacters", wpaPsk, "passphrase = \"1234567\"", 14,
            "passphrase: it is 7 characters long; allowed are 8 to 63, and 64 digits as preshared_key_hex" },
        WrongLine { "SixtyFourCharacters", wpaPsk,
            "passphrase = \"0123456789012345678901234567890123456789012345678901234567890123\"", 14,
            "passphrase: it is 64 characters long; allowed are 8 to 63, and 64 digits as preshared_key_hex" },
        WrongLine { "NotAscii", wpaPsk, "passphrase = \"caf\xC3\xA9 au lait\"", 14,
            "passphrase: expected printable ASCII characters" },
        WrongLine { "WithControlCharacter", wpaPsk, "passphrase = \"12345678\\t\"", 14,
            "passphrase: expected printable ASCII characters" },
        WrongLine { "ShortKey", wpaPsk, "preshared_key_hex = \"0011\"", 21,
            "preshared_key_hex: expected 64 hexadecimal digits" },
        WrongLine { "NoDigits", wpaPsk, "preshared_key_hex = \"north by northwest\"", 21,
            "preshared_key_hex: expected an even number of hexadecimal digits" },
        WrongLine { "BothKeys", wpaPsk, "preshared_key_hex = \"0011\"\npassphrase = \"12345678\"", 21,
            "preshared_key_hex: the network has a passphrase already; give either of the two" }),
    printed);

INSTANTIATE_TEST_SUITE_P(IdleKey, WrongNetwork,
    testing::Values( //
        WrongLine { "KeyOfAnOpenNetwork", named, "key_1 = \"pearl\"", 9,
            "key_1: of no use here; it goes with the security wep" },
        WrongLine { "CipherOfWep", wep, "cipher = \"tkip\"\nkey_1 = \"pearl\"", 10,
            "cipher: of no use here; it goes with the security wpa-psk, wpa-none, wpa-enterprise" },
        WrongLine { "PassphraseOfWep", wep, "passphrase = \"12345678\"", 14,
            "passphrase: of no use here; it goes with the security wpa-psk, wpa-none" },
        WrongLine { "AuthenticationOfWpa", wpaPsk, "authentication = \"open\"", 18,
            "authentication: of no use here; it goes with the security wep" },
        WrongLine { "PassphraseOfEnterprise", named, "passphrase = \"12345678\"\nsecurity = \"wpa-enterprise\"", 14,
            "passphrase: of no use here; it goes with the security wpa-psk, wpa-none" }),
    printed);

TEST(WrongNetworkTable, IsRefusedAtAnUnknownKeyItself)
{
    const ScenarioResult result = parseScenarioNetwork(std::string(named) + "\n   colour = \"blue\"\n");
    EXPECT_EQ(result.error.text, std::string("colour: no such key; a network has ") + networkKeys);
    EXPECT_EQ(result.error.line, 4u);
    EXPECT_EQ(result.error.column, 4u);
}

TEST(WrongNetworkTable, IsRefusedAtItsHeaderForWhatIsMissing)
{
    const std::string before = "[card]\n\n[[network]]\nssid = \"a\"\nbssid = \"0A-00-00-00-00-01\"\n";
    const struct {
        const char* lines;
        const char* text;
    } cases[] {
        { "bssid = \"0A-00-00-00-00-02\"\n", "ssid: missing; every network has a name, as ssid or as ssid_hex" },
        { "ssid = \"b\"\n", "bssid: missing; every network has an address" },
        { "ssid = \"b\"\nbssid = \"0A-00-00-00-00-02\"\nsecurity = \"wep\"\n",
            "key_1: the network sends with key_1, which is not set" },
        { "ssid = \"b\"\nbssid = \"0A-00-00-00-00-02\"\nsecurity = \"wpa-psk\"\n",
            "passphrase: missing; the network needs a passphrase or a preshared_key_hex" },
    };
    for (const auto& missing : cases) {
        const ScenarioResult result = parseScenario(before + "[[network]]\n" + missing.lines);
        EXPECT_FALSE(result.scenario.has_value()) << missing.text;
        EXPECT_EQ(result.error.text, missing.text);
        EXPECT_EQ(result.error.line, 6u) << missing.text;
        EXPECT_EQ(result.error.column, 1u) << missing.text;
    }
}

TEST(WrongScenario, HasTwoNetworksOfOneAddress)
{
    const ScenarioResult result = parseScenario(R"([[network]]
ssid = "a"
bssid = "0A-00-00-00-00-0f"
[[network]]
ssid = "b"
bssid = "0A:00:00:00:00:0F"
)");
    EXPECT_FALSE(result.scenario.has_value());
    EXPECT_EQ(result.error.text, "bssid: another network has this address already");
    EXPECT_EQ(result.error.line, 6u);
    EXPECT_EQ(result.error.column, 9u);
}

TEST(WrongScenario, HasAKeyThatIsNone)
{
    const ScenarioResult result = parseScenario("[card]\n[[networks]]\nssid = \"a\"\n");
    EXPECT_EQ(result.error.text, "networks: no such key; a scenario has card, network");
    EXPECT_EQ(result.error.line, 2u);
    EXPECT_EQ(result.error.column, 3u);
}

TEST(WrongScenario, HasACardOrNetworksThatAreNoTables)
{
    EXPECT_EQ(parseScenario("card = 1\n").error.text, "card: expected a table that begins with [card]");
    EXPECT_EQ(parseScenario("card = 1\n").error.column, 8u);
    EXPECT_EQ(
        parseScenario("[network]\nssid = \"a\"\n").error.text, "network: expected tables that begin with [[network]]");
    EXPECT_EQ(parseScenario("network = [ 1 ]\n").error.text, "network: expected tables that begin with [[network]]");
    EXPECT_EQ(parseScenario("network = [ 1 ]\n").error.column, 13u);
}

class WrongCard : public testing::TestWithParam<WrongLine> { };

TEST_P(WrongCard, IsRefusedAtItsValue)
{
    const WrongLine& wrong = GetParam();
    expectError(parseScenario(std::string(wrong.start) + wrong.line + "\n"), wrong);
}

INSTANTIATE_TEST_SUITE_P(Card, WrongCard,
    testing::Values( //
        WrongLine {
            "Address", "[card]\n", "address = \"card\"", 11, "address: expected an address such as 00-11-22-AA-BB-CC" },
        WrongLine { "GroupAddress", "[card]\n", "address = \"01-00-00-00-00-00\"", 11,
            "address: a group address, or none at all; the first octet must be even and not all octets 0" },
        WrongLine {
            "Major", "[card]\n", "eeprom_major = 256", 16, "eeprom_major: 256 is out of range; allowed are 0 to 255" },
        WrongLine {
            "Minor", "[card]\n", "eeprom_minor = -1", 16, "eeprom_minor: -1 is out of range; allowed are 0 to 255" },
        WrongLine { "EepromError", "[card]\n", "eeprom_error = 0", 16, "eeprom_error: expected true or false" },
        WrongLine {
            "FiveGhz", "[card]\n", "supports_five_ghz = \"yes\"", 21, "supports_five_ghz: expected true or false" },
        WrongLine { "Radio", "[card]\n", "hardware_radio_on = 1", 21, "hardware_radio_on: expected true or false" },
        WrongLine { "Unknown", "[card]\n", "colour = 1", 1,
            "colour: no such key; [card] has address, eeprom_major, eeprom_minor, eeprom_error, supports_five_ghz, "
            "hardware_radio_on" }),
    printed);

TEST(ScenarioError, NeverQuotesAKey)
{
    for (const char* line : { "key_1 = \"sesame\"", "key_1_hex = \"sesame\"", "passphrase = \"sesame\"",
             "preshared_key_hex = \"sesame\"" }) {
        for (const char* start : { named, wep, wpaPsk }) {
            const ScenarioResult result = parseScenarioNetwork(std::string(start) + line + "\n");
            EXPECT_FALSE(result.scenario.has_value());
            EXPECT_EQ(result.error.text.find("sesame"), std::string::npos) << result.error.text;
        }
    }
}

TEST(HostileScenario, IsRefusedWhereItStopsBeingToml)
{
    const ScenarioResult unended = parseScenario("[card]\naddress = \"02-51\n");
    EXPECT_FALSE(unended.scenario.has_value());
    EXPECT_EQ(unended.error.line, 2u);
    EXPECT_GT(unended.error.column, 10u);
    EXPECT_FALSE(unended.error.text.empty());

    const ScenarioResult twice = parseScenario("[card]\neeprom_major = 1\neeprom_major = 2\n");
    EXPECT_FALSE(twice.scenario.has_value());
    EXPECT_EQ(twice.error.line, 3u);
}

TEST(HostileScenario, MayHaveHeadersThatNameNothing)
{
    for (const std::string header : { "[=]", "[[[a]]]", "[ #", "[[ =", "[\"", "[]", "[[]]", "[a", "[[a]", "[.a]" }) {
        const ScenarioResult result = parseScenario("[card]\n" + header + "\n");
        EXPECT_FALSE(result.scenario.has_value()) << header;
        EXPECT_FALSE(result.error.text.empty()) << header;
        EXPECT_GE(result.error.line, 2u) << header;
    }
}

TEST(HostileScenario, MayHoldZeroBytesOrNoUtf8)
{
    const std::string start = "[card]\n";
    for (const std::string& bytes :
        { std::string("\0", 1), std::string("# \0\n", 4), std::string("ssid = \"a\0b\"", 12), std::string("# \xFF\n"),
            std::string("address = \"\xE9\""), std::string("# \xC3") }) {
        const ScenarioResult result = parseScenario(start + bytes);
        EXPECT_FALSE(result.scenario.has_value());
        EXPECT_EQ(result.error.line, 2u);
    }
}

TEST(HostileScenario, EndsAnywhereWithoutHarm)
{
    const std::string whole = "[card]\naddress = \"02-51-56-00-00-01\"\n[[network]]\nssid = \"F\xC3\xA4hre\"\n"
                              "bssid = \"0A-00-00-00-00-01\"\nsecurity = \"wep\"\nkey_1_hex = \"0123456789\"\n";
    ASSERT_TRUE(parseScenario(whole).scenario.has_value());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const ScenarioResult result = parseScenario(std::string_view(whole).substr(0, size));
        EXPECT_NE(result.scenario.has_value(), !result.error.text.empty()) << size;
    }
}

TEST(HostileScenario, MayBeNestedDeeply)
{
    EXPECT_FALSE(parseScenario("network = " + std::string(500'000, '[')).scenario.has_value());
    EXPECT_FALSE(parseScenario("network = " + repeated("{a=", 300'000)).scenario.has_value());
    EXPECT_FALSE(
        parseScenario("[card" + repeated(".a", 50) + "]\na" + repeated(".a", 90) + " = 1\n").scenario.has_value());
}

// A table within the other for each dot: taken as they come, they would be the end of the stack.
TEST(HostileScenario, MayHaveEndlessDottedKeys)
{
    for (const std::string& line : { "card" + repeated(".a", 100'000) + " = 1", "[card" + repeated(".a", 100'000) + "]",
             "[[network" + repeated(".a", 101) + "]]\r" }) {
        const ScenarioResult result = parseScenario("[card]\n\n" + line + "\n");
        EXPECT_FALSE(result.scenario.has_value());
        EXPECT_EQ(result.error.text, "more than 100 dots in a line");
        EXPECT_EQ(result.error.line, 3u);
    }
    EXPECT_EQ(parseScenario(repeated(".", 101)).error.line, 1u);
    EXPECT_TRUE(parseScenario("# " + repeated(".", 1'000) + "\n  \t#" + repeated(".", 1'000)).scenario.has_value());
    EXPECT_TRUE(parseScenarioNetwork(std::string(wpaPsk) + "passphrase = \"" + repeated(".", 63) + "\"").scenario);
}

// White space or not, a character beyond ASCII has no place outside of texts and comments.
TEST(HostileScenario, MayHoldAnyCharacterAnywhere)
{
    for (const std::string character :
        { "\xC3\xA4", "\xE2\xB1\xA0", "\xE3\x81\x82", "\xEF\xB9\xB1", "\xF0\x9F\x9A\xA2" }) {
        for (const std::string start : { "", "card", "card ", "[card]\naddress =", "[card", "network = [ " }) {
            const ScenarioResult result = parseScenario("#\n" + start + character + "\n");
            EXPECT_FALSE(result.scenario.has_value()) << start << character;
            EXPECT_GE(result.error.line, 2u) << start << character;
        }
        const auto scenario
            = parseScenarioNetwork("# " + character + "\nssid = \"" + character + "\"\nbssid = \"0A-00-00-00-00-01\"\n")
                  .scenario;
        ASSERT_TRUE(scenario.has_value()) << character;
        EXPECT_EQ(scenario->networks.front().ssid, character);
    }
}

TEST(HostileScenario, MayBeLarge)
{
    const ScenarioResult tooLarge = parseScenario(std::string((1U << 20) + 1, '\n'));
    EXPECT_FALSE(tooLarge.scenario.has_value());
    EXPECT_EQ(tooLarge.error.text, "larger than 1 MiB");
    EXPECT_EQ(tooLarge.error.line, 0u);

    std::string many;
    for (int i = 0; i < 10'000; ++i) {
        char address[18];
        (void)std::snprintf(address, sizeof(address), "0A-00-00-00-%02X-%02X", (i >> 8) & 0xFF, i & 0xFF);
        many += "[[network]]\nssid = \"n\"\nbssid = \"" + std::string(address) + "\"\n";
    }
    const auto scenario = parseScenario(many).scenario;
    ASSERT_TRUE(scenario.has_value());
    EXPECT_EQ(scenario->networks.size(), 10'000u);
}

} // namespace
