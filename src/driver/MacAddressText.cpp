#include "driver/MacAddressText.h"

#include <QByteArray>

QString macAddressText(const MacAddress& address)
{
    const QByteArray bytes(reinterpret_cast<const char*>(address.data()), static_cast<qsizetype>(address.size()));
    return QString::fromLatin1(bytes.toHex('-').toUpper());
}
