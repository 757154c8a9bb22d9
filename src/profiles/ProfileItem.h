#pragma once

#include <QString>
#include <QStringView>

// One row of the profile table: six display texts.
class ProfileItem {
public:
    ProfileItem() = default; // six empty texts

    static ProfileItem initWithProfile(const QString& Profile, const QString& SSID, const QString& Channel,
        const QString& AuthenType, const QString& Encryption, const QString& NetworkType);
    void setProfileItemWithProfile(const QString& Profile, const QString& SSID, const QString& Channel,
        const QString& AuthenType, const QString& Encryption, const QString& NetworkType);

    [[nodiscard]] const QString& profile() const { return Profile; }
    [[nodiscard]] const QString& ssid() const { return SSID; }
    [[nodiscard]] const QString& channel() const { return Channel; }
    [[nodiscard]] const QString& authentication() const { return AuthenType; }
    [[nodiscard]] const QString& encryption() const { return Encryption; }
    [[nodiscard]] const QString& network() const { return NetworkType; }

    void setprofile(const QString& text) { Profile = text; }
    void setssid(const QString& text) { SSID = text; }
    void setchannel(const QString& text) { Channel = text; }
    void setauthentication(const QString& text) { AuthenType = text; }
    void setencryption(const QString& text) { Encryption = text; }
    void setnetwork(const QString& text) { NetworkType = text; }

    // Access by column key: Profile, SSID, Channel, AuthenType, Encryption, NetworkType. Any other key has no value, and
    // setting it is a no-op.
    [[nodiscard]] QString value(QStringView key) const;
    void setValue(QStringView key, const QString& text);

    // Always empty.
    [[nodiscard]] QString description() const { return {}; }

private:
    using Field = QString ProfileItem::*;
    [[nodiscard]] static Field fieldOf(QStringView key);

    QString Profile;
    QString SSID;
    QString Channel;
    QString AuthenType;
    QString Encryption;
    QString NetworkType;
};
