#include "services/simulator/scenario/Scenario.h"

#include "services/simulator/scenario/ScenarioTableReader.h"
#include "services/simulator/scenario/ScenarioText.h"
#include "services/simulator/scenario/ScenarioValues.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <set>

namespace {

constexpr std::size_t longestSsidBytes = 32;
constexpr std::array<std::size_t, 2> wepKeyBytes { 5, 13 };
constexpr std::size_t shortestPassphrase = 8;
constexpr std::size_t longestPassphrase = 63;

ScenarioCard readCard(const toml::table& table, std::optional<ScenarioError>& error)
{
    static constexpr std::string_view keys[] { "address", "eeprom_major", "eeprom_minor", "eeprom_error",
        "supports_five_ghz", "hardware_radio_on" };
    TableReader reader(table, "[card]", error);
    ScenarioCard card;
    reader.expectKeys(keys);
    reader.readAddress("address", card.address);
    reader.readNumber("eeprom_major", 0, 255, card.eepromMajor);
    reader.readNumber("eeprom_minor", 0, 255, card.eepromMinor);
    reader.readFlag("eeprom_error", card.eepromError);
    reader.readFlag("supports_five_ghz", card.supportsFiveGhz);
    reader.readFlag("hardware_radio_on", card.hardwareRadioOn);
    return card;
}

void readSsid(TableReader& reader, ScenarioNetwork& network)
{
    if (reader.has("ssid") && reader.has("ssid_hex"))
        return reader.complain("ssid_hex", "the network has a name already; give either ssid or ssid_hex");
    const std::string_view key = reader.has("ssid_hex") ? "ssid_hex" : "ssid";
    if (!reader.has(key))
        return reader.complain(key, "missing; every network has a name, as ssid or as ssid_hex");
    const auto bytes = key == "ssid" ? reader.text(key) : reader.hexBytes(key);
    if (!bytes)
        return;
    if (bytes->empty() || bytes->size() > longestSsidBytes)
        return reader.complain(
            key, "the name is " + std::to_string(bytes->size()) + " bytes long; allowed are 1 to 32");
    network.ssid = *bytes;
}

void readChannel(TableReader& reader, ScenarioNetwork& network)
{
    const auto number = reader.wholeNumber("channel");
    if (number && !isChannel(*number))
        reader.complain("channel", std::to_string(*number) + " is no channel; allowed are " + channelList());
    else if (number)
        network.channel = static_cast<std::int32_t>(*number);
}

// Keys are never quoted back: error texts end up in logs.
void readWepKey(TableReader& reader, std::size_t index, ScenarioNetwork& network)
{
    const std::string textKey = "key_" + std::to_string(index + 1);
    const std::string hexKey = textKey + "_hex";
    if (reader.has(textKey) && reader.has(hexKey))
        return reader.complain(hexKey, "the key is set already; give either " + textKey + " or " + hexKey);
    const bool isHex = reader.has(hexKey);
    const auto bytes = isHex ? reader.hexBytes(hexKey) : reader.text(textKey);
    if (!bytes)
        return;
    if (std::find(wepKeyBytes.begin(), wepKeyBytes.end(), bytes->size()) == wepKeyBytes.end())
        return isHex ? reader.complain(hexKey, "expected 10 or 26 hexadecimal digits")
                     : reader.complain(textKey, "expected 5 or 13 characters");
    if (!isHex && !isPrintableAscii(*bytes))
        return reader.complain(textKey, "expected printable ASCII characters; other keys are given as " + hexKey);
    const auto differs = [&bytes](const std::string& other) { return !other.empty() && other.size() != bytes->size(); };
    if (std::any_of(network.wepKeys.begin(), network.wepKeys.end(), differs))
        return reader.complain(isHex ? hexKey : textKey, "the keys of a network are all of one length");
    network.wepKeys[index] = *bytes;
}

void readWep(TableReader& reader, ScenarioNetwork& network)
{
    reader.readWord("authentication", authenticationWords(), network.sharedKeyAuthentication);
    for (std::size_t i = 0; i < network.wepKeys.size(); ++i)
        readWepKey(reader, i, network);
    std::int32_t transmitKey = 1;
    reader.readNumber("transmit_key", 1, 4, transmitKey);
    network.transmitKeyIndex = transmitKey - 1;
    const std::string key = "key_" + std::to_string(transmitKey);
    if (network.wepKeys[static_cast<std::size_t>(network.transmitKeyIndex)].empty())
        reader.complain(
            reader.has("transmit_key") ? "transmit_key" : key, "the network sends with " + key + ", which is not set");
}

void readPassphrase(TableReader& reader, ScenarioNetwork& network)
{
    const auto passphrase = reader.text("passphrase");
    if (!passphrase)
        return;
    if (passphrase->size() < shortestPassphrase || passphrase->size() > longestPassphrase)
        reader.complain("passphrase",
            "it is " + std::to_string(passphrase->size())
                + " characters long; allowed are 8 to 63, and 64 digits as preshared_key_hex");
    else if (!isPrintableAscii(*passphrase))
        reader.complain("passphrase", "expected printable ASCII characters");
    else
        network.passphrase = *passphrase;
}

void readPresharedKey(TableReader& reader, ScenarioNetwork& network)
{
    if (reader.has("passphrase") && reader.has("preshared_key_hex"))
        return reader.complain("preshared_key_hex", "the network has a passphrase already; give either of the two");
    if (reader.has("passphrase"))
        return readPassphrase(reader, network);
    if (!reader.has("preshared_key_hex"))
        return reader.complain("passphrase", "missing; the network needs a passphrase or a preshared_key_hex");
    const auto bytes = reader.hexBytes("preshared_key_hex");
    if (!bytes)
        return;
    auto& key = network.presharedKey.emplace();
    if (bytes->size() == key.size())
        std::memcpy(key.data(), bytes->data(), key.size());
    else
        reader.complain("preshared_key_hex", "expected 64 hexadecimal digits");
}

struct KeyUse {
    std::string_view key;
    std::span<const Security> uses;
};

constexpr Security wepOnly[] { Security::Wep };
constexpr Security presharedKeys[] { Security::WpaPsk, Security::WpaNone };
constexpr Security wpaKinds[] { Security::WpaPsk, Security::WpaNone, Security::WpaEnterprise };
constexpr KeyUse keyUses[] {
    { "authentication", wepOnly },
    { "key_1", wepOnly },
    { "key_1_hex", wepOnly },
    { "key_2", wepOnly },
    { "key_2_hex", wepOnly },
    { "key_3", wepOnly },
    { "key_3_hex", wepOnly },
    { "key_4", wepOnly },
    { "key_4_hex", wepOnly },
    { "transmit_key", wepOnly },
    { "cipher", wpaKinds },
    { "passphrase", presharedKeys },
    { "preshared_key_hex", presharedKeys },
};

void refuseIdleKeys(TableReader& reader, Security security)
{
    for (const KeyUse& use : keyUses) {
        if (!reader.has(use.key) || std::find(use.uses.begin(), use.uses.end(), security) != use.uses.end())
            continue;
        std::vector<std::string_view> kinds;
        for (const auto& [word, kind] : securityWords()) {
            if (std::find(use.uses.begin(), use.uses.end(), kind) != use.uses.end())
                kinds.push_back(word);
        }
        reader.complain(use.key, "of no use here; it goes with the security " + joined(kinds));
    }
}

void readSecurity(TableReader& reader, ScenarioNetwork& network)
{
    reader.readWord("security", securityWords(), network.security);
    refuseIdleKeys(reader, network.security);
    reader.readWord("cipher", cipherWords(), network.cipher);
    switch (network.security) {
    case Security::Open:
        break;
    case Security::Wep:
        readWep(reader, network);
        break;
    case Security::WpaNone:
        if (!network.adHoc)
            reader.complain("security", "wpa-none is for networks with mode = \"ad-hoc\"");
        readPresharedKey(reader, network);
        break;
    case Security::WpaPsk:
        readPresharedKey(reader, network);
        [[fallthrough]];
    case Security::WpaEnterprise:
        if (network.adHoc)
            reader.complain("security", "ad hoc networks are open, wep or wpa-none");
        break;
    }
}

ScenarioNetwork readNetwork(const toml::table& table, std::optional<ScenarioError>& error)
{
    static constexpr std::string_view keys[] { "ssid", "ssid_hex", "bssid", "channel", "signal_dbm", "drift_db",
        "hidden", "mode", "security", "cipher", "authentication", "key_1", "key_1_hex", "key_2", "key_2_hex", "key_3",
        "key_3_hex", "key_4", "key_4_hex", "transmit_key", "passphrase", "preshared_key_hex" };
    TableReader reader(table, "a network", error);
    ScenarioNetwork network;
    reader.expectKeys(keys);
    readSsid(reader, network);
    reader.readAddress("bssid", network.bssid);
    if (!reader.has("bssid"))
        reader.complain("bssid", "missing; every network has an address");
    readChannel(reader, network);
    reader.readNumber("signal_dbm", -100, -10, network.signalDbm);
    reader.readNumber("drift_db", 0, 20, network.driftDb);
    reader.readFlag("hidden", network.hidden);
    reader.readWord("mode", modeWords(), network.adHoc);
    readSecurity(reader, network);
    return network;
}

// An array of tables, each a network of its own address.
void readNetworks(const toml::node& node, Scenario& scenario, std::optional<ScenarioError>& error)
{
    const toml::array* tables = node.as_array();
    if (!tables) {
        error = errorAt(node.source().begin, "network: expected tables that begin with [[network]]");
        return;
    }
    std::set<MacAddress> addresses;
    for (const toml::node& element : *tables) {
        const toml::table* table = element.as_table();
        if (!table) {
            error = errorAt(element.source().begin, "network: expected tables that begin with [[network]]");
            return;
        }
        scenario.networks.push_back(readNetwork(*table, error));
        if (!error && !addresses.insert(scenario.networks.back().bssid).second)
            TableReader(*table, "a network", error).complain("bssid", "another network has this address already");
        if (error)
            return;
    }
}

Scenario readScenario(const toml::table& root, std::optional<ScenarioError>& error)
{
    static constexpr std::string_view keys[] { "card", "network" };
    Scenario scenario;
    TableReader reader(root, "a scenario", error);
    reader.expectKeys(keys);
    if (const toml::node* card = root.get("card")) {
        if (const toml::table* table = card->as_table())
            scenario.card = readCard(*table, error);
        else
            reader.complain("card", "expected a table that begins with [card]");
    }
    const toml::node* networks = root.get("network");
    if (networks && !error)
        readNetworks(*networks, scenario, error);
    return scenario;
}

Scenario readSingleNetwork(const toml::table& root, std::optional<ScenarioError>& error)
{
    return { {}, { readNetwork(root, error) } };
}

ScenarioResult parse(std::string_view text, Scenario (*read)(const toml::table&, std::optional<ScenarioError>&))
{
    if (auto error = unfitForParsing(text))
        return { std::nullopt, std::move(*error) };
    const toml::parse_result parsed = toml::parse(text);
    if (!parsed)
        return { std::nullopt, errorAt(parsed.error().source().begin, std::string(parsed.error().description())) };
    std::optional<ScenarioError> error;
    Scenario scenario = read(parsed.table(), error);
    if (error)
        return { std::nullopt, *error };
    return { std::move(scenario), {} };
}

} // namespace

ScenarioResult parseScenario(std::string_view toml)
{
    return parse(toml, readScenario);
}

ScenarioResult parseScenarioNetwork(std::string_view toml)
{
    return parse(toml, readSingleNetwork);
}

ScenarioResult loadScenario(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string text(largestScenarioBytes + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (!file && !file.eof())
        return { std::nullopt, { "cannot be read", 0, 0 } };
    text.resize(static_cast<std::size_t>(file.gcount()));
    return parseScenario(text);
}
