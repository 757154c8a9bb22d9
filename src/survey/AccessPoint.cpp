#include "survey/AccessPoint.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace {

struct Accessor {
    QStringView key;
    const QString& (AccessPoint::*get)() const;
    void (AccessPoint::*set)(const QString&);
};

constexpr std::array<Accessor, 7> accessors { {
    { u"ssid", &AccessPoint::ssid, &AccessPoint::setssid },
    { u"bssid", &AccessPoint::bssid, &AccessPoint::setbssid },
    { u"signal", &AccessPoint::signal, &AccessPoint::setsignal },
    { u"channel", &AccessPoint::channel, &AccessPoint::setchannel },
    { u"authentication", &AccessPoint::authentication, &AccessPoint::setauthentication },
    { u"encryption", &AccessPoint::encryption, &AccessPoint::setencryption },
    { u"network", &AccessPoint::network, &AccessPoint::setnetwork },
} };

const Accessor* accessorOf(QStringView key)
{
    const auto* const found
        = std::find_if(accessors.begin(), accessors.end(), [key](const Accessor& each) { return each.key == key; });
    return found == accessors.end() ? nullptr : found;
}

} // namespace

AccessPoint AccessPoint::initWithSSID(const QString& SSID, const QString& BSSID, const QString& Signal,
    const QString& Channel, const QString& Authentication, const QString& Encryption, const QString& NetworkType)
{
    AccessPoint row;
    row.setAPWithSSID(SSID, BSSID, Signal, Channel, Authentication, Encryption, NetworkType);
    return row;
}

void AccessPoint::setAPWithSSID(const QString& SSID, const QString& BSSID, const QString& Signal,
    const QString& Channel, const QString& Authentication, const QString& Encryption, const QString& NetworkType)
{
    setssid(SSID);
    setbssid(BSSID);
    setsignal(Signal);
    setchannel(Channel);
    setauthentication(Authentication);
    setencryption(Encryption);
    setnetwork(NetworkType);
}

QString AccessPoint::value(QStringView key) const
{
    const Accessor* const accessor = accessorOf(key);
    return accessor ? (this->*accessor->get)() : QString();
}

void AccessPoint::setValue(QStringView key, const QString& text)
{
    if (const Accessor* const accessor = accessorOf(key))
        (this->*accessor->set)(text);
}

QString AccessPoint::description() const
{
    return QStringList { SSID, BSSID, Signal, Channel, Authentication, Encryption, NetworkType }.join(u' ');
}
