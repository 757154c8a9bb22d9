#include "profiles/ProfileEditorRules.h"

#include "driver/BssidList.h"
#include "driver/ListedName.h"
#include "platform/ByteText.h"
#include "platform/NetworkName.h"
#include "survey/keys/KeyRules.h"

#include <algorithm>
#include <cstdint>

namespace {

const auto namePrefix = QStringLiteral("PROF");

int numberInName(const QString& name)
{
    const QString upper = name.toUpper();
    return upper.contains(namePrefix) ? integerOfText(QStringView(upper).sliced(namePrefix.size())) : 0;
}

std::optional<int> indexOf(const std::vector<QString>& items, const QString& text)
{
    // A scanned name of 32 bytes may continue into the bytes that follow it.
    const auto item = std::find_if(
        items.begin(), items.end(), [&text](const QString& each) { return each == text || fittingSsid(each) == text; });
    return item == items.end() ? std::nullopt : std::optional(static_cast<int>(item - items.begin()));
}

} // namespace

QString GetNextProfileName(const ProfileList& records)
{
    int max = 0;
    for (const Profile& profile : records)
        max = std::max(max, numberInName(profile.text(ProfileKey::profileName)));
    return namePrefix + QString::number(std::int64_t { max } + 1);
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

int selFlagAfter(int authenTypeIndex, int selFlag)
{
    if (authenTypeIndex == wpaAuthenTypeIndex)
        return 1;
    return authenTypeIndex == 0 || authenTypeIndex == 1 ? 0 : selFlag;
}

std::vector<QString> GetBssidList(std::span<std::byte> list)
{
    std::vector<QString> items;
    BssidListWalk walk(list);
    while (const auto entry = walk.next())
        items.push_back(listedName(*entry).text());
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
    while (bytesFromText(fitting).size() > NetworkName::maxLength) {
        const bool pair
            = fitting.back().isLowSurrogate() && fitting.size() > 1 && fitting[fitting.size() - 2].isHighSurrogate();
        fitting.chop(pair ? 2 : 1);
    }
    return fitting;
}

int sliderValueOf(const QString& text, ThresholdRange range)
{
    return std::clamp(integerOfText(text), range.min, range.max);
}
