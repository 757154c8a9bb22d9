#include "tests/support/ExpectedRequests.h"

namespace {

Bytes bytesOfNumber(const FourBytes& number)
{
    return bytesOf({ number[0], number[1], number[2], number[3] });
}

// An NDIS_802_11_KEY; the BSSID is addressByte six times.
Bytes keyRecord(int index, bool transmit, int addressByte, const Bytes& material)
{
    const int length = static_cast<int>(material.size());
    Bytes record = bytesOf({
        length + 39, 0, 0, 0, // Length
        index, 0, 0, transmit ? 0x80 : 0, // KeyIndex
        length, 0, 0, 0, // KeyLength
        addressByte, addressByte, addressByte, addressByte, addressByte, addressByte, // BSSID
        0, 0, // padding
        0, 0, 0, 0, 0, 0, 0, 0, // KeyRSC
    });
    append(record, material); // KeyMaterial
    append(record, bytesOf({ 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 })); // Length counts 11 bytes after the key
    return record;
}

// Key 0, the transmit key, with an all-zero BSSID.
Bytes presharedKeyRecord(const Bytes& material)
{
    return keyRecord(0, true, 0, material);
}

} // namespace

Requests operator+(Requests first, const Requests& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Bytes bytesOfText(std::string_view text)
{
    Bytes bytes;
    for (const char letter : text)
        bytes.push_back(static_cast<std::byte>(letter));
    return bytes;
}

Requests expectedSettings(const ExpectedRadio& radio, int networkType, int authenMode, int encryStatus)
{
    return {
        set(OID_802_11_DISASSOCIATE, bytesOf({ 0, 0, 0, 0 })),
        set(OID_802_11_INFRASTRUCTURE_MODE, bytesOf({ networkType, 0, 0, 0 })),
        set(VX_OID_802_11_PREAMBLE, bytesOf({ radio.preamble, 0, 0, 0 })),
        set(OID_802_11_RTS_THRESHOLD, bytesOfNumber(radio.rtsThreshold)),
        set(OID_802_11_FRAGMENTATION_THRESHOLD, bytesOfNumber(radio.fragmentationThreshold)),
        set(OID_802_11_AUTHENTICATION_MODE, bytesOf({ authenMode, 0, 0, 0 })),
        set(OID_802_11_ENCRYPTION_STATUS, bytesOf({ encryStatus, 0, 0, 0 })),
        set(VX_OID_802_11_TX_POWER, bytesOf({ radio.txPowerPercent, 0, 0, 0 })),
    };
}

RecordedRequest setPowerMode(const FourBytes& mode)
{
    return set(OID_802_11_POWER_MODE, bytesOfNumber(mode));
}

Bytes configuration(const FourBytes& frequencyKhz)
{
    Bytes record = bytesOf({
        32, 0, 0, 0, // Length
        0xC8, 0, 0, 0, // BeaconPeriod: 200 Kusec
        9, 0, 0, 0, // ATIMWindow
    });
    append(record, bytesOfNumber(frequencyKhz)); // DSConfig
    append(record,
        bytesOf({
            16, 0, 0, 0, // FHConfig.Length
            1, 0, 0, 0, // FHConfig.HopPattern
            2, 0, 0, 0, // FHConfig.HopSet
            3, 0, 0, 0, // FHConfig.DwellTime
        }));
    return record;
}

Requests setFrequency(const FourBytes& frequencyKhz)
{
    return {
        query(OID_802_11_CONFIGURATION, 32),
        set(OID_802_11_CONFIGURATION, configuration(frequencyKhz)),
    };
}

RecordedRequest associateByBssid(const Bytes& address)
{
    return set(OID_802_11_BSSID, address);
}

RecordedRequest associateBySsid(const Bytes& name)
{
    Bytes record = bytesOf({ static_cast<int>(name.size()), 0, 0, 0 }); // SsidLength
    append(record, name); // Ssid
    record.resize(4 + 32);
    return set(OID_802_11_SSID, record);
}

RecordedRequest addKey(int index, bool transmit, const Bytes& material)
{
    return set(OID_802_11_ADD_KEY, keyRecord(index, transmit, 0xFF, material));
}

RecordedRequest removeKey(int index)
{
    return set(OID_802_11_REMOVE_KEY,
        bytesOf({
            16, 0, 0, 0, // Length
            index, 0, 0, 0, // KeyIndex
            0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, // BSSID
            0, 0, // padding
        }));
}

Requests addWpa(const Bytes& material)
{
    return { set(VX_OID_802_11_ADD_WPA, presharedKeyRecord(material)) };
}

Requests addWpaNone(const Bytes& material)
{
    return { set(OID_802_11_ADD_KEY, presharedKeyRecord(material)) };
}

Bytes publishedKey()
{
    return bytesOf({
        0xf4, 0x2c, 0x6f, 0xc5, 0x2d, 0xf0, 0xeb, 0xef, //
        0x9e, 0xbb, 0x4b, 0x90, 0xb3, 0x8a, 0x5f, 0x90, //
        0x2e, 0x83, 0xfe, 0x1b, 0x13, 0x5a, 0x70, 0xe2, //
        0x3a, 0xed, 0x76, 0x2e, 0x97, 0x10, 0xa1, 0x2e, //
    });
}
