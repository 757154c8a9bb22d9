#pragma once

#include "driver/records/NdisRecords.h"

#include <cstdint>
#include <memory>

class VX7100Access;
class ProfileData;
struct PROFILE_DATA;

// The list of networks, as far as the connection watch drives it.
class SurveyList {
public:
    virtual ~SurveyList() = default;
    virtual void RefreshAPList() = 0; // rebuilds the rows from G_pBssidList
    virtual void reloadData() = 0; // shows the rows and the mark as they are now
};

// How far the connection that the site survey looks after has come.
struct ConnectionState {
    std::uint8_t runFlag { 0 }; // a task is being executed
    std::uint8_t SetSsid { 0 }; // the last connection from the survey was made by SSID
    std::uint8_t SetBssid { 0 }; // … by BSSID
    std::int32_t TimerCount { 0 }; // -1 once the link has been seen up
    bool linkUp { false }; // as the last probe saw it
    NDIS_802_11_SSID SsidSet {};
    MacAddress BssidSet {};
};

// Executes and removes the oldest task of the queue, if there is one and no other is being executed. Results of the
// driver's requests are not looked at: a failed one neither stops the sequence nor is reported. A task without a
// record is dropped and leaves runFlag set: no task is executed until a DoTask finds the queue empty.
void DoTask(ConnectionState& state, VX7100Access& adapter);

// Watches the link: takes up a new list, marks the row of the associated access point in G_bCurSelItem, and asks for
// a scan when the link went down or its access point is not in the list.
void ProbeConnectStatus(ConnectionState& state, VX7100Access& adapter, SurveyList& list);

// Queues a scan for the next DoTask.
void queueRescan();
// Queues the connection that the record describes for the next DoTask.
// The task expires when it has been executed.
std::weak_ptr<ProfileData> queueConnection(std::unique_ptr<PROFILE_DATA> record);

// The transmit power in percent for a step of PROFILE_DATA; 100 for a step that does not exist.
[[nodiscard]] std::uint32_t transmitPowerPercent(std::uint32_t powerStep);
