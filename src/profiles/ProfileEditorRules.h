#pragma once

#include "profiles/ProfileKeys.h"

#include <QString>

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

// The rules for the profile editor's controls, as functions over their values. The security sheet has the same rules for
// authentication, encryption (survey/keys/SecurityControlRules.h) and keys (survey/keys/KeyRules.h).

// "PROF" and the next number. The number of a name that contains "PROF" always starts at the fifth character: "Prof7"
// counts as 7, "MYPROF9" as 0.
[[nodiscard]] QString GetNextProfileName(const ProfileList& records);

// The kind of authentication list (authenticationItems) for a network type: 0 for ad hoc, 1 for any other.
[[nodiscard]] int authenticationKindOf(int networkTypeIndex);

// Whether PreambleType, ChannelText and Channel are enabled: only for ad hoc networks.
[[nodiscard]] bool channelEnabled(int networkTypeIndex);

// The item index of a channel; -1 if the number is not positive.
[[nodiscard]] int channelIndexOf(int channel);

// The editor's selFlag after the authentication was selected: 1 for WPA, 0 for "Open" and "Shared". Without a selected
// authentication the current value is kept.
[[nodiscard]] int selFlagAfter(int authenTypeIndex, int selFlag);

// The items of the SSID list: the names of a scan result in its order, with duplicates and empty names.
[[nodiscard]] std::vector<QString> GetBssidList(std::span<std::byte> list);

// The state of the SSID combo box: the selected item and the text, which may differ from the item.
struct SsidSelection {
    int index { -1 };
    QString text;
    bool operator==(const SsidSelection&) const = default;
};

// For a stored profile: the first item with its name, or else the last item, with the profile's name as the text.
// std::nullopt if the list is empty: the box does not change.
[[nodiscard]] std::optional<SsidSelection> ssidOfEditedProfile(const std::vector<QString>& items, const QString& ssid);

// For a scanned network: the first item with its name, or else the first item of the list.
[[nodiscard]] std::optional<SsidSelection> ssidOfScannedNetwork(const std::vector<QString>& items, const QString& ssid);

// Truncates a text between two characters so that its network name has at most 32 bytes.
[[nodiscard]] QString fittingSsid(const QString& text);

// The two thresholds in bytes (IEEE 802.11). No frame is longer than the maximum, so the maximum means "off".
struct ThresholdRange {
    int min;
    int max;
};
inline constexpr ThresholdRange rtsThresholdRange { 0, 2347 };
inline constexpr ThresholdRange fragmentationThresholdRange { 256, 2346 };

// The slider position for the text of its field.
[[nodiscard]] int sliderValueOf(const QString& text, ThresholdRange range);
