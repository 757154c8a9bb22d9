#include "profiles/ProfileEditorRules.h"

#include "driver/BssidList.h"
#include "platform/NetworkName.h"
#include "survey/keys/KeyRules.h"
#include "survey/keys/SecurityControlRules.h"

#include <algorithm>
#include <cstdint>

namespace {

const auto namePrefix = QStringLiteral("PROF");
constexpr qsizetype longestSsid = 32; // bytes, IEEE 802.11

int numberInName(const QString& name)
{
    const QString upper = name.toUpper();
    return upper.contains(namePrefix) ? integerOfText(QStringView(upper).sliced(namePrefix.size())) : 0;
}

// The family of encryptions that an authentication selects; where none is selected, the one so far.
int selFlagOf(int authenTypeIndex, int selFlag)
{
    if (authenTypeIndex == wpaAuthenTypeIndex)
        return 1;
    return authenTypeIndex == 0 || authenTypeIndex == 1 ? 0 : selFlag;
}

std::optional<int> indexOf(const std::vector<QString>& items, const QString& text)
{
    // A scanned name of 32 bytes may carry what lies behind it along.
    const auto item = std::find_if(
        items.begin(), items.end(), [&text](const QString& each) { return each == text || fittingSsid(each) == text; });
    return item == items.end() ? std::nullopt : std::optional(static_cast<int>(item - items.begin()));
}

} // namespace

QString GetNextProfileName(const ProfileList& records)
{
    int most = 0;
    for (const Profile& profile : records)
        most = std::max(most, numberInName(profile.text(ProfileKey::profileName)));
    return namePrefix + QString::number(std::int64_t { most } + 1);
}

int authenticationKindOf(int networkTypeIndex)
{
    return networkTypeIndex == 0 ? 0 : 1;
}

bool channelEnabled(int networkTypeIndex)
{
    return networkTypeIndex == 0;
}

int channelIndexOf(int channel)
{
    return std::max(channel, 0) - 1;
}

EncryptionList encryptionListAfter(EncryptionList list, int authenTypeIndex, int encryptionCapability)
{
    const int selFlag = selFlagOf(authenTypeIndex, list.selFlag);
    const bool otherFamily = selFlag != list.selFlag;
    if (otherFamily)
        list.items.clear();
    const auto inserted = encryptionItems(authenTypeIndex, encryptionCapability);
    list.items.insert(list.items.begin(), inserted.begin(), inserted.end());
    if (otherFamily) {
        list.selectedIndex = list.items.empty() ? -1 : 0;
        list.selFlag = selFlag;
    }
    return list;
}

std::vector<QString> GetBssidList(std::span<std::byte> list)
{
    std::vector<QString> items;
    BssidListWalk walk(list);
    while (const auto entry = walk.next())
        items.push_back(textFromBytes(entry->bytesUpToZero(offsetof(WLAN_BSSID_EX, Ssid.Ssid))));
    return items;
}

std::optional<SsidSelection> ssidOfEditedProfile(const std::vector<QString>& items, const QString& ssid)
{
    if (items.empty())
        return std::nullopt;
    return SsidSelection { indexOf(items, ssid).value_or(static_cast<int>(items.size()) - 1), ssid };
}

std::optional<SsidSelection> ssidOfScannedNetwork(const std::vector<QString>& items, const QString& ssid)
{
    if (items.empty())
        return std::nullopt;
    const int index = indexOf(items, ssid).value_or(0);
    return SsidSelection { index, items[static_cast<std::size_t>(index)] };
}

QString fittingSsid(const QString& text)
{
    QString fitting = text;
    while (bytesFromText(fitting).size() > longestSsid) {
        const bool pair
            = fitting.back().isLowSurrogate() && fitting.size() > 1 && fitting[fitting.size() - 2].isHighSurrogate();
        fitting.chop(pair ? 2 : 1);
    }
    return fitting;
}

int sliderValueOf(const QString& text, ThresholdRange range)
{
    return std::clamp(integerOfText(text), range.least, range.most);
}
