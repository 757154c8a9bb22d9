#include "services/simulator/scenario/JoinHints.h"

#include "services/simulator/scenario/PrintableName.h"
#include "services/simulator/scenario/ScenarioValues.h"

#include <algorithm>
#include <array>

namespace {

struct HintRow {
    std::string name;
    std::string kind;
    std::string toType;
};

std::string cipherName(Cipher cipher)
{
    return cipher == Cipher::Aes ? "AES" : "TKIP";
}

std::string securityName(const ScenarioNetwork& network)
{
    switch (network.security) {
    case Security::Open:
        return "open";
    case Security::Wep: {
        const auto& key = network.wepKeys[static_cast<std::size_t>(network.transmitKeyIndex)];
        const std::string bits = key.size() == wep40KeyBytes ? "40" : "104";
        return "WEP " + bits + (network.sharedKeyAuthentication ? ", shared" : ", open");
    }
    case Security::WpaPsk:
        return "WPA-PSK " + cipherName(network.cipher);
    case Security::WpaNone:
        return "WPA-None " + cipherName(network.cipher);
    case Security::WpaEnterprise:
        return "WPA 802.1X " + cipherName(network.cipher);
    }
    return {};
}

std::string kind(const ScenarioNetwork& network)
{
    return securityName(network) + (network.adHoc ? ", ad hoc" : "") + (network.hidden ? ", hidden" : "");
}

std::string wepKeyHint(const ScenarioNetwork& network)
{
    std::string list;
    for (std::size_t i = 0; i < network.wepKeys.size(); ++i) {
        const std::string& key = network.wepKeys[i];
        if (key.empty())
            continue;
        // A space at the start or end would be invisible.
        const bool isText = isPrintableAscii(key) && key.find(' ') == std::string::npos;
        list += (list.empty() ? "" : ", ") + ("key " + std::to_string(i + 1))
            + (isText ? " ASCII " + key : " hexadecimal " + hexOfBytes(key));
    }
    const auto count = std::count_if(
        network.wepKeys.begin(), network.wepKeys.end(), [](const std::string& key) { return !key.empty(); });
    if (count > 1)
        list += "; select key " + std::to_string(network.transmitKeyIndex + 1);
    return list;
}

// The site survey uses the first 32 characters of 64 digits as the key bytes, without converting the digits. That gives
// the right key only if all digits are '3', the character 0x33; other keys must be entered in a profile.
std::string presharedKeyHint(const PresharedKey& key)
{
    const std::string digits = hexOfBytes({ reinterpret_cast<const char*>(key.data()), key.size() });
    const bool needsProfile = digits != std::string(digits.size(), '3');
    return (needsProfile ? "in a profile: 64 digits " : "64 digits ") + digits;
}

std::string secret(const ScenarioNetwork& network)
{
    switch (network.security) {
    case Security::Open:
        return {};
    case Security::Wep:
        return wepKeyHint(network);
    case Security::WpaPsk:
    case Security::WpaNone:
        return network.presharedKey ? presharedKeyHint(*network.presharedKey) : "passphrase " + network.passphrase;
    case Security::WpaEnterprise:
        return "(cannot be joined)";
    }
    return {};
}

std::string toType(const ScenarioNetwork& network)
{
    const std::string what = secret(network);
    if (!network.hidden)
        return what.empty() ? "nothing" : what;
    return what.empty() ? "its name" : "its name, then " + what;
}

void appendPadded(std::string& line, const std::string& text, std::size_t width)
{
    line += text;
    line.append(width - widthOfText(text) + 2, ' ');
}

} // namespace

std::string joinHints(const Scenario& scenario)
{
    std::vector<HintRow> rows { { "Network", "Kind", "To join, type" } };
    for (const ScenarioNetwork& network : scenario.networks)
        rows.push_back({ printableName(network.ssid), kind(network), toType(network) });
    std::size_t nameWidth = 0;
    std::size_t kindWidth = 0;
    for (const HintRow& row : rows) {
        nameWidth = std::max(nameWidth, widthOfText(row.name));
        kindWidth = std::max(kindWidth, widthOfText(row.kind));
    }
    std::string text;
    for (const HintRow& row : rows) {
        appendPadded(text, row.name, nameWidth);
        appendPadded(text, row.kind, kindWidth);
        text += row.toType + '\n';
    }
    return text;
}
