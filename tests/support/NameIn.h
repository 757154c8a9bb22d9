#pragma once

#include "driver/records/NdisRecords.h"

#include <QByteArray>

// The bytes of a network's name; an over-long text if the record's length is invalid.
inline QByteArray nameIn(const NDIS_802_11_SSID& ssid)
{
    if (ssid.SsidLength > ssid.Ssid.size())
        return "a length that no name of a network can have";
    return { reinterpret_cast<const char*>(ssid.Ssid.data()), static_cast<qsizetype>(ssid.SsidLength) };
}
