#pragma once

#include "driver/records/NdisRecords.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <cstddef>
#include <span>

// The name (SSID) of a network: bytes, usually but not always UTF-8 (IEEE 802.11 does not define an encoding).
//
// At most maxLength bytes are sent. Names from a scan list or from a stored profile may be longer, because a list entry
// is read up to its first zero byte and a stored text is not checked; record() truncates them.
class NetworkName {
public:
    static constexpr qsizetype maxLength = sizeof(NDIS_802_11_SSID::Ssid); // 32 bytes

    NetworkName() = default;
    explicit NetworkName(QByteArray bytes);

    // A length beyond the record counts as the whole record.
    [[nodiscard]] static NetworkName fromRecord(const NDIS_802_11_SSID& record);
    // The bytes before the first zero byte, or all of them.
    [[nodiscard]] static NetworkName upToZero(std::span<const std::byte> bytes);
    // From a stored text or one typed by the user.
    [[nodiscard]] static NetworkName fromText(QStringView text);

    [[nodiscard]] bool isEmpty() const { return m_bytes.isEmpty(); }
    [[nodiscard]] const QByteArray& bytes() const { return m_bytes; }
    [[nodiscard]] NetworkName truncated() const { return NetworkName(m_bytes.left(maxLength)); }
    // The unused bytes are 0.
    [[nodiscard]] NDIS_802_11_SSID record() const;

    // The text that profiles store and tables and fields edit; fromText() restores the bytes.
    [[nodiscard]] QString text() const;
    // The text as the user reads it. Empty for an empty name.
    [[nodiscard]] QString displayText() const;
    // What the text does not show: the bytes in hexadecimal for a name with malformed UTF-8, control characters or
    // surrounding spaces, or that the network hides its name. Empty for a plain name.
    [[nodiscard]] QString toolTip() const;

    // The placeholder for an empty name.
    [[nodiscard]] static QString hiddenPlaceholder();

    bool operator==(const NetworkName&) const = default;

private:
    QByteArray m_bytes;
};
