#pragma once

#include <QString>
#include <QStringView>

// One row of the access point list: seven display texts.
class AccessPoint {
public:
    AccessPoint() = default; // seven empty texts

    static AccessPoint initWithSSID(const QString& SSID, const QString& BSSID, const QString& Signal,
        const QString& Channel, const QString& Authentication, const QString& Encryption, const QString& NetworkType);
    void setAPWithSSID(const QString& SSID, const QString& BSSID, const QString& Signal, const QString& Channel,
        const QString& Authentication, const QString& Encryption, const QString& NetworkType);

    [[nodiscard]] const QString& ssid() const { return SSID; }
    [[nodiscard]] const QString& bssid() const { return BSSID; }
    [[nodiscard]] const QString& signal() const { return Signal; }
    [[nodiscard]] const QString& channel() const { return Channel; }
    [[nodiscard]] const QString& authentication() const { return Authentication; }
    [[nodiscard]] const QString& encryption() const { return Encryption; }
    [[nodiscard]] const QString& network() const { return NetworkType; }

    void setssid(const QString& text) { SSID = text; }
    void setbssid(const QString& text) { BSSID = text; }
    void setsignal(const QString& text) { Signal = text; }
    void setchannel(const QString& text) { Channel = text; }
    void setauthentication(const QString& text) { Authentication = text; }
    void setencryption(const QString& text) { Encryption = text; }
    void setnetwork(const QString& text) { NetworkType = text; }

    // Access by column key: ssid, bssid, signal, channel, authentication, encryption, network. Any other key has no
    // value, and setting it is a no-op.
    [[nodiscard]] QString value(QStringView key) const;
    void setValue(QStringView key, const QString& text);

    // The seven texts in the order of the fields, separated by single spaces.
    [[nodiscard]] QString description() const;

private:
    QString SSID;
    QString BSSID;
    QString Signal;
    QString Channel;
    QString Authentication;
    QString Encryption;
    QString NetworkType;
};
