#include "profiles/ProfileItem.h"

ProfileItem ProfileItem::initWithProfile(const QString& Profile, const QString& SSID, const QString& Channel,
    const QString& AuthenType, const QString& Encryption, const QString& NetworkType)
{
    ProfileItem item;
    item.setProfileItemWithProfile(Profile, SSID, Channel, AuthenType, Encryption, NetworkType);
    return item;
}

void ProfileItem::setProfileItemWithProfile(const QString& Profile, const QString& SSID, const QString& Channel,
    const QString& AuthenType, const QString& Encryption, const QString& NetworkType)
{
    setprofile(Profile);
    setssid(SSID);
    setchannel(Channel);
    setauthentication(AuthenType);
    setencryption(Encryption);
    setnetwork(NetworkType);
}

ProfileItem::Field ProfileItem::fieldOf(QStringView key)
{
    if (key == u"Profile")
        return &ProfileItem::Profile;
    if (key == u"SSID")
        return &ProfileItem::SSID;
    if (key == u"Channel")
        return &ProfileItem::Channel;
    if (key == u"AuthenType")
        return &ProfileItem::AuthenType;
    if (key == u"Encryption")
        return &ProfileItem::Encryption;
    if (key == u"NetworkType")
        return &ProfileItem::NetworkType;
    return nullptr;
}

QString ProfileItem::value(QStringView key) const
{
    const Field field = fieldOf(key);
    return field ? this->*field : QString();
}

void ProfileItem::setValue(QStringView key, const QString& text)
{
    if (const Field field = fieldOf(key))
        this->*field = text;
}
