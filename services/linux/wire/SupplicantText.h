#pragma once

#include "driver/records/NdisRecords.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Replies and events of the supplicant's control socket, which are text.

enum class SupplicantEventKind {
    Connected, // authenticated and keys set; the link carries data
    Disconnected,
    ChannelSwitched, // the access point has moved to another channel, and the link with it
    NetworkNotFound,
    AuthenticationRejected,
    AssociationRejected,
    WrongKey,
    Terminating,
    Other,
};

struct SupplicantEvent {
    SupplicantEventKind kind { SupplicantEventKind::Other };
    std::string text; // without the level
};

// Events begin with their level, "<3>"; std::nullopt for any other text.
[[nodiscard]] std::optional<SupplicantEvent> supplicantEvent(std::string_view line);

struct SupplicantStatus {
    bool isCompleted { false };
    bool isDown { false }; // not even associating; keys are renewed while neither is set
    bool isAdHoc { false };
    std::optional<MacAddress> bssid;
    std::vector<std::uint8_t> ssid;
    std::uint32_t frequencyMhz { 0 };
};

// The reply to STATUS: lines of name=value. Unknown lines are skipped.
[[nodiscard]] SupplicantStatus supplicantStatus(std::string_view reply);

[[nodiscard]] std::optional<MacAddress> addressFromText(std::string_view text); // 00:11:22:33:44:55
[[nodiscard]] std::string addressText(const MacAddress& address);
