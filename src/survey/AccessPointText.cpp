#include "survey/AccessPointText.h"

#include "platform/NetworkName.h"

#include <QStringList>

QString tabSeparatedText(const AccessPoint& row)
{
    const NetworkName name = NetworkName::fromText(row.ssid());
    const QStringList texts { name.isEmpty() ? NetworkName::hiddenPlaceholder() : name.displayText(), row.bssid(),
        row.signal(), row.channel(), row.authentication(), row.encryption(), row.network() };
    return texts.join(u'\t');
}
