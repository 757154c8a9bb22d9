#pragma once

#include "driver/records/NdisRecords.h"

#include <cstdint>
#include <memory>

class VX7100Access;
class ProfileData;
struct PROFILE_DATA;

// The part of the list of networks that ProbeConnectStatus uses.
class SurveyList {
public:
    virtual ~SurveyList() = default;
    virtual void RefreshAPList() = 0; // rebuilds the rows from the scan list
    virtual void reloadData() = 0; // redraws the rows and the mark
};

// The state of the site survey's connection.
struct ConnectionState {
    std::uint8_t runFlag { 0 }; // a task is running
    std::uint8_t SetSsid { 0 }; // the last connection from the site survey was made by SSID
    std::uint8_t SetBssid { 0 }; // the last connection from the site survey was made by BSSID
    std::int32_t TimerCount { 0 }; // -1 after the link has been up
    bool linkUp { false }; // at the last probe
    NDIS_802_11_SSID SsidSet {};
    MacAddress BssidSet {};
};

// Executes and removes the oldest task of the queue, if there is one and no other is running. The results of driver
// requests are ignored: a failed request neither stops the sequence nor is reported. A task without a record is
// dropped and leaves runFlag set, so no task runs until a DoTask finds the queue empty.
void DoTask(ConnectionState& state, VX7100Access& adapter);

// Watches the link: shows a new list, sets G_bCurSelItem to the row of the associated access point, and requests a scan
// if the link went down or its access point is not in the list.
void ProbeConnectStatus(ConnectionState& state, VX7100Access& adapter, SurveyList& list);

// Queue a scan or a connection for the next DoTask. The returned task expires after it has run.
std::weak_ptr<ProfileData> queueRescan();
std::weak_ptr<ProfileData> queueConnection(std::unique_ptr<PROFILE_DATA> record);

// The transmit power in percent for PROFILE_DATA::TxPower; 100 for an invalid step.
[[nodiscard]] std::uint32_t transmitPowerPercent(std::uint32_t powerStep);
