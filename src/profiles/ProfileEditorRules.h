#pragma once

#include "profiles/ProfileKeys.h"

#include <QString>

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

// What the profile editor's controls offer and allow, as functions over their values. The authentication list, the
// items of the encryption list and the enabled key fields are those of survey/SecurityControlRules.h, the keys' checks
// those of survey/KeyRules.h.

// "PROF" and the next number. The number of an existing name is looked for from its fifth character on, wherever in
// the name "PROF" stands: "Prof7" counts as 7, "MYPROF9" as 0.
[[nodiscard]] QString GetNextProfileName(const ProfileList& records);

// The kind of authentication list (authenticationItems) of a network type: 0 for ad hoc, 1 for any other.
[[nodiscard]] int authenticationKindOf(int networkTypeIndex);

// Whether PreambleType, ChannelText and Channel can be changed: for ad hoc networks.
[[nodiscard]] bool channelEnabled(int networkTypeIndex);

// The item of a channel; -1, which is none, for a number that is no channel.
[[nodiscard]] int channelIndexOf(int channel);

// The encryption list, with what the editor remembers of it.
struct EncryptionList {
    std::vector<QString> items;
    int selectedIndex { -1 }; // -1 for none
    int selFlag { 0 }; // 1 when the last authentication was WPA
    bool operator==(const EncryptionList&) const = default;
};

// After the authentication was selected. Between "Open" and "Shared" the list is not emptied, and gets its items once
// more, in front; the selected index keeps its number. Nothing selected as authentication changes nothing.
[[nodiscard]] EncryptionList encryptionListAfter(EncryptionList list, int authenTypeIndex, int encryptionCapability);

// The names of a scan result as the SSID list offers them: in its order, as often as they come, empty ones too.
[[nodiscard]] std::vector<QString> GetBssidList(std::span<std::byte> list);

// What an SSID box shows: the selected item of its list and its text, which may be another.
struct SsidSelection {
    int index { -1 };
    QString text;
    bool operator==(const SsidSelection&) const = default;
};

// For a stored profile: the first item that is its name; otherwise the last item stays selected below the profile's
// name. With an empty list the box is left alone (nothing).
[[nodiscard]] std::optional<SsidSelection> ssidOfEditedProfile(const std::vector<QString>& items, const QString& ssid);

// For a network of the scan: the first item that is its name; otherwise the first item of all, and its text.
[[nodiscard]] std::optional<SsidSelection> ssidOfScannedNetwork(const std::vector<QString>& items, const QString& ssid);

// The longest start of a text that is a network name of at most 32 bytes, cut between two characters.
[[nodiscard]] QString fittingSsid(const QString& text);

// The two thresholds in bytes, IEEE 802.11; a frame is never longer than the largest, so that one means "off".
struct ThresholdRange {
    int least;
    int most;
};
inline constexpr ThresholdRange rtsThresholdRange { 0, 2347 };
inline constexpr ThresholdRange fragmentationThresholdRange { 256, 2346 };

// The slider's place for a field's text, within the slider's range.
[[nodiscard]] int sliderValueOf(const QString& text, ThresholdRange range);
