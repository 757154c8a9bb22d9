#include "services/simulator/scenario/Scenario.h"

#include "services/simulator/scenario/ScenarioTableReader.h"
#include "services/simulator/scenario/ScenarioText.h"
#include "services/simulator/scenario/ScenarioValues.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <set>

namespace {

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
        return reader.report("ssid_hex", "the network already has a name; give either ssid or ssid_hex");
    const std::string_view key = reader.has("ssid_hex") ? "ssid_hex" : "ssid";
    if (!reader.has(key))
        return reader.report(key, "missing; every network needs a name, as ssid or ssid_hex");
    const auto bytes = key == "ssid" ? reader.text(key) : reader.hexBytes(key);
    if (!bytes)
        return;
    if (bytes->empty() || bytes->size() > maxSsidBytes)
        return reader.report(key, "the name has " + std::to_string(bytes->size()) + " bytes; allowed are 1 to 32");
    network.ssid = *bytes;
}

void readChannel(TableReader& reader, ScenarioNetwork& network)
{
    const auto number = reader.wholeNumber("channel");
    if (number && !isChannel(*number))
        reader.report("channel", std::to_string(*number) + " is not a channel; allowed are " + channelList());
    else if (number)
        network.channel = static_cast<std::int32_t>(*number);
}

// Error texts never quote a key: they end up in logs.
void readWepKey(TableReader& reader, std::size_t index, ScenarioNetwork& network)
{
    const std::string textKey = "key_" + std::to_string(index + 1);
    const std::string hexKey = textKey + "_hex";
    if (reader.has(textKey) && reader.has(hexKey))
        return reader.report(hexKey, "the key is already set; give either " + textKey + " or " + hexKey);
    const bool isHex = reader.has(hexKey);
    const auto bytes = isHex ? reader.hexBytes(hexKey) : reader.text(textKey);
    if (!bytes)
        return;
    if (bytes->size() != wep40KeyBytes && bytes->size() != wep104KeyBytes)
        return isHex ? reader.report(hexKey, "expected 10 or 26 hexadecimal digits")
                     : reader.report(textKey, "expected 5 or 13 characters");
    if (!isHex && !isPrintableAscii(*bytes))
        return reader.report(textKey, "expected printable ASCII characters; give other keys as " + hexKey);
    const auto differs = [&bytes](const std::string& other) { return !other.empty() && other.size() != bytes->size(); };
    if (std::any_of(network.wepKeys.begin(), network.wepKeys.end(), differs))
        return reader.report(isHex ? hexKey : textKey, "all keys of a network must have the same length");
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
        reader.report(reader.has("transmit_key") ? "transmit_key" : key,
            "the network transmits with " + key + ", which is not set");
}

void readPassphrase(TableReader& reader, ScenarioNetwork& network)
{
    const auto passphrase = reader.text("passphrase");
    if (!passphrase)
        return;
    if (passphrase->size() < minPassphraseBytes || passphrase->size() > maxPassphraseBytes)
        reader.report("passphrase",
            std::to_string(passphrase->size())
                + " characters; allowed are 8 to 63, or 64 hexadecimal digits as preshared_key_hex");
    else if (!isPrintableAscii(*passphrase))
        reader.report("passphrase", "expected printable ASCII characters");
    else
        network.passphrase = *passphrase;
}

void readPresharedKey(TableReader& reader, ScenarioNetwork& network)
{
    if (reader.has("passphrase") && reader.has("preshared_key_hex"))
        return reader.report("preshared_key_hex", "the network already has a passphrase; give only one of the two");
    if (reader.has("passphrase"))
        return readPassphrase(reader, network);
    if (!reader.has("preshared_key_hex"))
        return reader.report("passphrase", "missing; the network needs a passphrase or a preshared_key_hex");
    const auto bytes = reader.hexBytes("preshared_key_hex");
    if (!bytes)
        return;
    auto& key = network.presharedKey.emplace();
    if (bytes->size() == key.size())
        std::memcpy(key.data(), bytes->data(), key.size());
    else
        reader.report("preshared_key_hex", "expected 64 hexadecimal digits");
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

void reportUnusedKeys(TableReader& reader, Security security)
{
    for (const KeyUse& use : keyUses) {
        if (!reader.has(use.key) || std::find(use.uses.begin(), use.uses.end(), security) != use.uses.end())
            continue;
        std::vector<std::string_view> kinds;
        for (const auto& [word, kind] : securityWords()) {
            if (std::find(use.uses.begin(), use.uses.end(), kind) != use.uses.end())
                kinds.push_back(word);
        }
        reader.report(use.key, "not allowed here; it requires the security " + joined(kinds));
    }
}

void readSecurity(TableReader& reader, ScenarioNetwork& network)
{
    reader.readWord("security", securityWords(), network.security);
    reportUnusedKeys(reader, network.security);
    reader.readWord("cipher", cipherWords(), network.cipher);
    switch (network.security) {
    case Security::Open:
        break;
    case Security::Wep:
        readWep(reader, network);
        break;
    case Security::WpaNone:
        if (!network.adHoc)
            reader.report("security", "wpa-none requires mode = \"ad-hoc\"");
        readPresharedKey(reader, network);
        break;
    case Security::WpaPsk:
        readPresharedKey(reader, network);
        [[fallthrough]];
    case Security::WpaEnterprise:
        if (network.adHoc)
            reader.report("security", "ad hoc networks must be open, wep or wpa-none");
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
        reader.report("bssid", "missing; every network needs an address");
    readChannel(reader, network);
    reader.readNumber("signal_dbm", -100, -10, network.signalDbm);
    reader.readNumber("drift_db", 0, 20, network.driftDb);
    reader.readFlag("hidden", network.hidden);
    reader.readWord("mode", modeWords(), network.adHoc);
    readSecurity(reader, network);
    return network;
}

// An array of tables, each a network with a unique address.
void readNetworks(const toml::node& node, Scenario& scenario, std::optional<ScenarioError>& error)
{
    const toml::array* tables = node.as_array();
    if (!tables) {
        error = errorAt(node.source().begin, "network: expected tables that start with [[network]]");
        return;
    }
    std::set<MacAddress> addresses;
    for (const toml::node& element : *tables) {
        const toml::table* table = element.as_table();
        if (!table) {
            error = errorAt(element.source().begin, "network: expected tables that start with [[network]]");
            return;
        }
        scenario.networks.push_back(readNetwork(*table, error));
        if (!error && !addresses.insert(scenario.networks.back().bssid).second)
            TableReader(*table, "a network", error).report("bssid", "another network already has this address");
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
            reader.report("card", "expected a table that starts with [card]");
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

using Reader = Scenario (*)(const toml::table&, std::optional<ScenarioError>&);

// The library reports syntax errors by exception.
ScenarioResult parse(std::string_view text, Reader read)
try {
    if (auto error = unfitForParsing(text))
        return { std::nullopt, std::move(*error) };
    std::optional<ScenarioError> error;
    Scenario scenario = read(toml::parse(text), error);
    if (error)
        return { std::nullopt, *error };
    return { std::move(scenario), {} };
} catch (const toml::parse_error& error) {
    return { std::nullopt, errorAt(error.source().begin, std::string(error.description())) };
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
    std::string text(maxScenarioBytes + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (!file && !file.eof())
        return { std::nullopt, { "cannot be read", 0, 0 } };
    text.resize(static_cast<std::size_t>(file.gcount()));
    return parseScenario(text);
}
