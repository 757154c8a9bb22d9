#include "services/linux/wire/SupplicantText.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace {

std::optional<std::uint8_t> hexByte(std::string_view digits)
{
    std::uint8_t value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (digits.size() != 2 || result.ec != std::errc {} || result.ptr != digits.data() + digits.size())
        return std::nullopt;
    return value;
}

struct EventWord {
    std::string_view word;
    SupplicantEventKind kind;
};

constexpr std::array eventWords {
    EventWord { "CTRL-EVENT-CONNECTED", SupplicantEventKind::Connected },
    EventWord { "CTRL-EVENT-DISCONNECTED", SupplicantEventKind::Disconnected },
    EventWord { "CTRL-EVENT-CHANNEL-SWITCH", SupplicantEventKind::ChannelSwitched },
    EventWord { "CTRL-EVENT-NETWORK-NOT-FOUND", SupplicantEventKind::NetworkNotFound },
    EventWord { "CTRL-EVENT-AUTH-REJECT", SupplicantEventKind::AuthenticationRejected },
    EventWord { "CTRL-EVENT-ASSOC-REJECT", SupplicantEventKind::AssociationRejected },
    EventWord { "CTRL-EVENT-TERMINATING", SupplicantEventKind::Terminating },
};

SupplicantEventKind kindOf(std::string_view text)
{
    const std::string_view word = text.substr(0, text.find(' '));
    for (const EventWord& row : eventWords) {
        if (row.word == word)
            return row.kind;
    }
    const bool isKeyBlamed
        = word == "CTRL-EVENT-SSID-TEMP-DISABLED" && text.find("reason=WRONG_KEY") != std::string_view::npos;
    return isKeyBlamed ? SupplicantEventKind::WrongKey : SupplicantEventKind::Other;
}

std::optional<std::uint8_t> escapedControl(char letter)
{
    switch (letter) {
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case 'e':
        return std::uint8_t { 0x1B };
    default:
        return std::nullopt;
    }
}

// Names are printed with escapes for everything but printable ASCII: \\ \" \n \r \t \e \xHH.
std::vector<std::uint8_t> unescaped(std::string_view text)
{
    std::vector<std::uint8_t> bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            bytes.push_back(static_cast<std::uint8_t>(text[i]));
            continue;
        }
        const char letter = text[++i];
        const auto byte = letter == 'x' ? hexByte(text.substr(i + 1, 2)) : escapedControl(letter);
        bytes.push_back(byte.value_or(static_cast<std::uint8_t>(letter)));
        if (letter == 'x' && byte)
            i += 2;
    }
    return bytes;
}

constexpr std::array<std::string_view, 4> downStates { "DISCONNECTED", "INACTIVE", "INTERFACE_DISABLED", "SCANNING" };

void readStatusLine(SupplicantStatus& status, std::string_view name, std::string_view value)
{
    if (name == "wpa_state") {
        status.isCompleted = value == "COMPLETED";
        status.isDown = std::find(downStates.begin(), downStates.end(), value) != downStates.end();
    } else if (name == "mode")
        status.isAdHoc = value == "IBSS";
    else if (name == "bssid")
        status.bssid = addressFromText(value);
    else if (name == "ssid")
        status.ssid = unescaped(value);
    else if (name == "freq")
        (void)std::from_chars(value.data(), value.data() + value.size(), status.frequencyMhz);
}

} // namespace

std::optional<SupplicantEvent> supplicantEvent(std::string_view line)
{
    const std::size_t end = line.find('>');
    if (!line.starts_with('<') || end == std::string_view::npos)
        return std::nullopt;
    const std::string_view text = line.substr(end + 1);
    return SupplicantEvent { kindOf(text), std::string(text) };
}

SupplicantStatus supplicantStatus(std::string_view reply)
{
    SupplicantStatus status;
    while (!reply.empty()) {
        const std::string_view line = reply.substr(0, reply.find('\n'));
        reply.remove_prefix(std::min(line.size() + 1, reply.size()));
        const std::size_t equals = line.find('=');
        if (equals != std::string_view::npos)
            readStatusLine(status, line.substr(0, equals), line.substr(equals + 1));
    }
    return status;
}

std::optional<MacAddress> addressFromText(std::string_view text)
{
    constexpr std::size_t length = 17;
    MacAddress address {};
    if (text.size() != length)
        return std::nullopt;
    for (std::size_t i = 0; i < address.size(); ++i) {
        const auto octet = hexByte(text.substr(3 * i, 2));
        if (!octet || (i != 0 && text[3 * i - 1] != ':'))
            return std::nullopt;
        address[i] = *octet;
    }
    return address;
}

std::string addressText(const MacAddress& address)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t octet : address) {
        if (!text.empty())
            text.push_back(':');
        text.push_back(digits[octet >> 4]);
        text.push_back(digits[octet & 0x0F]);
    }
    return text;
}
