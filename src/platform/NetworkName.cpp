#include "platform/NetworkName.h"

#include "platform/ByteText.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("NetworkName", text);
}

} // namespace

NetworkName::NetworkName(QByteArray bytes)
    : m_bytes(std::move(bytes))
{
}

NetworkName NetworkName::fromRecord(const NDIS_802_11_SSID& record)
{
    const qsizetype length = std::min<qsizetype>(record.SsidLength, maxLength);
    return NetworkName(QByteArray(reinterpret_cast<const char*>(record.Ssid.data()), length));
}

NetworkName NetworkName::upToZero(std::span<const std::byte> bytes)
{
    const auto zero = std::find(bytes.begin(), bytes.end(), std::byte { 0 });
    return NetworkName(QByteArray(reinterpret_cast<const char*>(bytes.data()), zero - bytes.begin()));
}

NetworkName NetworkName::fromText(QStringView text)
{
    return NetworkName(bytesFromText(text));
}

NDIS_802_11_SSID NetworkName::record() const
{
    NDIS_802_11_SSID record {};
    record.SsidLength = static_cast<std::uint32_t>(std::min(m_bytes.size(), maxLength));
    std::copy_n(m_bytes.begin(), record.SsidLength, record.Ssid.begin());
    return record;
}

QString NetworkName::text() const
{
    return textFromBytes(m_bytes);
}

QString NetworkName::displayText() const
{
    return ::displayText(text());
}

QString NetworkName::toolTip() const
{
    if (isEmpty())
        return tr("This network does not send its name.");
    const QString name = text();
    const bool plain = m_bytes == name.toUtf8() && name.trimmed() == name;
    return plain ? QString() : tr("Name in hexadecimal: %1").arg(QString::fromLatin1(m_bytes.toHex(' ')));
}

QString NetworkName::hiddenPlaceholder()
{
    return tr("(hidden)");
}
