#pragma once

#include "driver/records/NdisRecords.h"
#include "driver/records/VxRecords.h"
#include "posix/SecureMemory.h"

#include <QtGlobal>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

// One NDIS_802_11_KEY with its key material, as sent to the driver; empty if there is no key.
using KeyRecord = SecretVector<std::byte>;

// The settings of one connection. Its records are sent to the driver unchanged. It owns its keys.
struct PROFILE_DATA {
    std::uint8_t ConnectByBssid { 0 }; // 0: associate by Ssid, 1: by Bssid
    NDIS_802_11_SSID Ssid {};
    MacAddress Bssid {};
    std::array<std::uint8_t, 2> Reserved {};
    std::int32_t NetworkType { 0 }; // NDIS_802_11_NETWORK_INFRASTRUCTURE
    std::int32_t PreambleType { 0 };
    std::uint32_t RtsThreshold { 0 }; // bytes
    std::uint32_t FragmentThreshold { 0 }; // bytes
    std::int32_t AuthenMode { 0 }; // NDIS_802_11_AUTHENTICATION_MODE
    std::int32_t EncryStatus { 0 }; // NDIS_802_11_ENCRYPTION_STATUS
    std::uint32_t TxPower { 0 }; // power step: 0 to 4 for 100, 75, 50, 25 and 12 percent
    KeyRecord pWpaKey; // the 32-byte pre-shared key, for WPA-PSK and WPA-None
    std::array<KeyRecord, 4> pWepKey;
    std::int32_t PowerSaveMode { 0 }; // value of OID_802_11_POWER_MODE
    std::uint8_t CamWhenAcPower { 0 }; // carried, not sent
    std::uint32_t ChannelFreq { 0 }; // kHz; the channel of an ad hoc network
    // Non-zero: also send wireless mode, station configuration and rates. The utility never sets it.
    std::uint8_t SetWirelessMode { 0 };
    NDIS_802_11_RATES DesiredRates {};
    VX_802_11_STA_CONFIG StaConfig {};
    std::uint8_t DisassociateFirst { 0 }; // non-zero: disassociate before applying the settings

    // The byte lengths of the key records; 0 if there is no key.
    [[nodiscard]] std::uint32_t WpaKeyLen() const { return static_cast<std::uint32_t>(pWpaKey.size()); }
    [[nodiscard]] std::uint32_t WepKeyLen(std::size_t index) const
    {
        return static_cast<std::uint32_t>(pWepKey[index].size());
    }
};

enum ConnectionTaskType : std::int32_t {
    CONNECT_TASK_RESCAN = 1, // scan and read the new list; the record is not read
    CONNECT_TASK_FULL = 2, // every setting, then the association
    CONNECT_TASK_SSID = 3, // associate by SSID
    CONNECT_TASK_BSSID = 4, // associate by BSSID
};

// A connection task: a record, which it owns, and what to do with it.
class ProfileData {
    Q_DISABLE_COPY_MOVE(ProfileData)

public:
    // Creates a task with this record, which may be null.
    [[nodiscard]] static std::unique_ptr<ProfileData> setProfileData(std::unique_ptr<PROFILE_DATA> record);

    ProfileData(); // holds a placeholder record
    ~ProfileData();

    // Replaces and releases the previous record.
    void setProfile(std::unique_ptr<PROFILE_DATA> record);
    [[nodiscard]] PROFILE_DATA* Profile() const { return m_profile.get(); }

    void setTaskType(std::int32_t taskType) { TaskType = taskType; }
    [[nodiscard]] std::int32_t getTaskType() const { return TaskType; }

private:
    std::unique_ptr<PROFILE_DATA> m_profile;
    std::int32_t TaskType { 0 };
};
