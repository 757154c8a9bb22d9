#include "services/simulator/scenario/ScenarioValues.h"

#include "driver/records/ChannelTable.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<Word<Security>, 5> securities { {
    { "open", Security::Open },
    { "wep", Security::Wep },
    { "wpa-psk", Security::WpaPsk },
    { "wpa-none", Security::WpaNone },
    { "wpa-enterprise", Security::WpaEnterprise },
} };
constexpr std::array<Word<Cipher>, 2> ciphers { { { "tkip", Cipher::Tkip }, { "aes", Cipher::Aes } } };
constexpr std::array<Word<bool>, 2> authentications { { { "open", false }, { "shared", true } } };
constexpr std::array<Word<bool>, 2> modes { { { "infrastructure", false }, { "ad-hoc", true } } };

constexpr std::string_view hexDigits = "0123456789ABCDEF";

std::optional<unsigned> digitOf(char character)
{
    const char upper = character >= 'a' && character <= 'f' ? static_cast<char>(character - 'a' + 'A') : character;
    const std::size_t digit = hexDigits.find(upper);
    return digit == std::string_view::npos ? std::nullopt : std::optional(static_cast<unsigned>(digit));
}

} // namespace

std::span<const Word<Security>> securityWords()
{
    return securities;
}

std::span<const Word<Cipher>> cipherWords()
{
    return ciphers;
}

std::span<const Word<bool>> authenticationWords()
{
    return authentications;
}

std::span<const Word<bool>> modeWords()
{
    return modes;
}

std::string channelList()
{
    std::string list;
    for (const ChannelFreq& row : ChannelFreqTable)
        list += (list.empty() ? "" : ", ") + std::to_string(row.channel);
    return list;
}

bool isChannel(std::int64_t number)
{
    return std::any_of(ChannelFreqTable.begin(), ChannelFreqTable.end(),
        [number](const ChannelFreq& row) { return row.channel == number; });
}

std::optional<std::string> bytesOfHex(std::string_view digits)
{
    if (digits.size() % 2 != 0)
        return std::nullopt;
    std::string bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        const auto high = digitOf(digits[i]);
        const auto low = digitOf(digits[i + 1]);
        if (!high || !low)
            return std::nullopt;
        bytes.push_back(static_cast<char>(*high * 16 + *low));
    }
    return bytes;
}

std::string hexOfBytes(std::string_view bytes)
{
    std::string digits;
    for (const char byte : bytes) {
        const auto octet = static_cast<unsigned char>(byte);
        digits.push_back(hexDigits[octet / 16U]);
        digits.push_back(hexDigits[octet % 16U]);
    }
    return digits;
}

std::optional<MacAddress> macAddressOf(std::string_view text)
{
    MacAddress address {};
    if (text.size() != 3 * address.size() - 1)
        return std::nullopt;
    for (std::size_t i = 0; i < address.size(); ++i) {
        const auto octet = bytesOfHex(text.substr(3 * i, 2));
        const bool isSeparated = i == 0 || text[3 * i - 1] == '-' || text[3 * i - 1] == ':';
        if (!octet || !isSeparated)
            return std::nullopt;
        address[i] = static_cast<std::uint8_t>(octet->front());
    }
    return address;
}

bool isStationAddress(const MacAddress& address)
{
    constexpr unsigned groupBit = 0x01; // of the first octet, IEEE 802
    return (address[0] & groupBit) == 0 && address != MacAddress {};
}

bool isPrintableAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char character) { return character >= ' ' && character <= '~'; });
}
