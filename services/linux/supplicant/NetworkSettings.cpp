#include "services/linux/supplicant/NetworkSettings.h"

#include "services/linux/wire/SupplicantText.h"

#include <span>
#include <string_view>

namespace {

using Settings = std::vector<NetworkSetting>;

SecretText hexText(std::span<const std::uint8_t> bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    SecretVector<char> text;
    text.reserve(2 * bytes.size());
    for (const std::uint8_t byte : bytes) {
        text.push_back(digits[byte >> 4]);
        text.push_back(digits[byte & 0x0F]);
    }
    return std::string_view(text.data(), text.size());
}

void add(Settings& settings, std::string name, std::string_view value)
{
    settings.push_back({ std::move(name), value, false });
}

void addOptional(Settings& settings, std::string name, std::string_view value)
{
    settings.push_back({ std::move(name), value, true });
}

std::string_view cipherName(CipherSuite cipher)
{
    switch (cipher) {
    case CipherSuite::Tkip:
        return "TKIP";
    case CipherSuite::Ccmp:
        return "CCMP";
    case CipherSuite::Gcmp:
        return "GCMP";
    case CipherSuite::Ccmp256:
        return "CCMP-256";
    case CipherSuite::Gcmp256:
        return "GCMP-256";
    case CipherSuite::None:
    case CipherSuite::Wep:
    case CipherSuite::Unknown:
        break;
    }
    return {};
}

std::string cipherList(const std::vector<CipherSuite>& ciphers)
{
    std::string list;
    for (const CipherSuite cipher : ciphers) {
        const std::string_view name = cipherName(cipher);
        if (!list.empty() && !name.empty())
            list += ' ';
        list += name;
    }
    return list.empty() ? "CCMP TKIP" : list;
}

void addWep(Settings& settings, const NetworkBlock& block)
{
    add(settings, "key_mgmt", "NONE");
    add(settings, "auth_alg", block.sharedKeyAuthentication ? "SHARED" : "OPEN");
    for (std::size_t i = 0; i < block.wepKeys.size(); ++i) {
        if (!block.wepKeys[i].empty())
            settings.push_back({ "wep_key" + std::to_string(i), hexText(block.wepKeys[i]), false });
    }
    add(settings, "wep_tx_keyidx", std::to_string(block.transmitKeyIndex));
}

void addPresharedKey(Settings& settings, const NetworkBlock& block)
{
    add(settings, "key_mgmt", "WPA-PSK WPA-PSK-SHA256");
    if (block.needsFastTransition)
        addOptional(settings, "key_mgmt", "WPA-PSK WPA-PSK-SHA256 FT-PSK");
    add(settings, "proto", "WPA RSN");
    add(settings, "pairwise", cipherList(block.pairwise));
    addOptional(settings, "group", "GCMP-256 CCMP-256 GCMP CCMP TKIP WEP104 WEP40");
    // Management frames are protected if the network offers it.
    addOptional(settings, "ieee80211w", "1");
    settings.push_back({ "psk", hexText(block.presharedKey), false });
}

void addSecurity(Settings& settings, const NetworkBlock& block)
{
    switch (block.security) {
    case BlockSecurity::Open:
        add(settings, "key_mgmt", "NONE");
        break;
    case BlockSecurity::Wep:
        addWep(settings, block);
        break;
    case BlockSecurity::WpaPsk:
        addPresharedKey(settings, block);
        break;
    }
}

void addFrequencies(Settings& settings, const NetworkBlock& block)
{
    const auto& scan = block.scanMhz.empty() ? block.allowedMhz : block.scanMhz;
    if (!scan.empty())
        add(settings, "scan_freq", frequencyList(scan));
    if (!block.allowedMhz.empty())
        add(settings, "freq_list", frequencyList(block.allowedMhz));
}

} // namespace

std::vector<NetworkSetting> networkSettings(const NetworkBlock& block)
{
    Settings settings;
    if (!block.ssid.empty())
        settings.push_back({ "ssid", hexText(block.ssid), false });
    if (block.bssid)
        add(settings, "bssid", addressText(*block.bssid));
    if (block.asksByName)
        add(settings, "scan_ssid", "1");
    if (block.isAdHoc) {
        add(settings, "mode", "1");
        add(settings, "frequency", std::to_string(block.adHocMhz));
    }
    addSecurity(settings, block);
    addFrequencies(settings, block);
    if (block.isLegacyOnly) {
        for (const char* const name : { "disable_ht", "disable_vht", "disable_he" })
            addOptional(settings, name, "1");
    }
    return settings;
}

std::string frequencyList(const std::vector<std::uint32_t>& frequenciesMhz)
{
    std::string list;
    for (const std::uint32_t frequency : frequenciesMhz) {
        if (!list.empty())
            list += ' ';
        list += std::to_string(frequency);
    }
    return list;
}
