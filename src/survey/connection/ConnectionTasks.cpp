#include "survey/connection/ConnectionTasks.h"

#include "app/shared/SharedState.h"
#include "app/shared/Trace.h"
#include "driver/BssidList.h"
#include "driver/VX7100Access.h"
#include "driver/records/Oids.h"
#include "survey/connection/ProfileData.h"
#include "survey/connection/TaskQueue.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <utility>

namespace {

constexpr MacAddress anyStation { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF };

void sendKey(VX7100Access& adapter, std::uint32_t oid, KeyRecord& key, std::uint32_t length)
{
    std::uint32_t returned = 0;
    (void)adapter.OidSetInformation(oid, key.data(), length, &returned, setRetryCount);
}

void sendWepKeys(VX7100Access& adapter, PROFILE_DATA& record)
{
    for (std::uint32_t index = 0; index < record.pWepKey.size(); ++index) {
        const std::uint32_t length = record.WepKeyLen(index);
        if (length == 0) {
            const NDIS_802_11_REMOVE_KEY absent { sizeof(NDIS_802_11_REMOVE_KEY), index, anyStation, {} };
            (void)setRecord(adapter, OID_802_11_REMOVE_KEY, absent);
        } else {
            sendKey(adapter, OID_802_11_ADD_KEY | oidSetFlag, record.pWepKey[index], length);
        }
    }
}

void sendKeys(VX7100Access& adapter, PROFILE_DATA& record)
{
    if (record.AuthenMode == Ndis802_11AuthModeWPAPSK)
        sendKey(adapter, VX_OID_802_11_ADD_WPA | oidSetFlag, record.pWpaKey, record.WpaKeyLen());
    else if (record.AuthenMode == Ndis802_11AuthModeWPANone)
        sendKey(adapter, OID_802_11_ADD_KEY | oidSetFlag, record.pWpaKey, record.WpaKeyLen());
    else if (record.AuthenMode == Ndis802_11AuthModeShared || record.EncryStatus == Ndis802_11Encryption1Enabled)
        sendWepKeys(adapter, record);
}

void sendAdHocChannel(VX7100Access& adapter, std::uint32_t frequencyKhz)
{
    NDIS_802_11_CONFIGURATION configuration {};
    (void)queryRecord(adapter, OID_802_11_CONFIGURATION, configuration);
    traceAlways("#### SiteSurveyPageController - OID_802_11_CONFIGURATION - Configuration.BeaconPeriod = %d ####\n",
        static_cast<std::int32_t>(configuration.BeaconPeriod));
    configuration.DSConfig = frequencyKhz;
    (void)setRecord(adapter, OID_802_11_CONFIGURATION, configuration);
}

void sendWirelessMode(VX7100Access& adapter, const PROFILE_DATA& record)
{
    (void)setRecord(adapter, VX_OID_802_11_PHY_MODE | oidSetFlag, G_enumWirelessMode);
    (void)setRecord(adapter, VX_OID_802_11_STA_CONFIG | oidSetFlag, record.StaConfig);
    (void)setRecord(adapter, OID_802_11_DESIRED_RATES | oidSetFlag, record.DesiredRates);
}

void sendSettings(VX7100Access& adapter, const PROFILE_DATA& record)
{
    if (record.DisassociateFirst != 0)
        (void)setRecord(adapter, OID_802_11_DISASSOCIATE, std::uint32_t { 0 });
    (void)setRecord(adapter, OID_802_11_INFRASTRUCTURE_MODE | oidSetFlag, record.NetworkType);
    (void)setRecord(adapter, VX_OID_802_11_PREAMBLE | oidSetFlag, record.PreambleType);
    (void)setRecord(adapter, OID_802_11_RTS_THRESHOLD, record.RtsThreshold);
    (void)setRecord(adapter, OID_802_11_FRAGMENTATION_THRESHOLD, record.FragmentThreshold);
    (void)setRecord(adapter, OID_802_11_AUTHENTICATION_MODE | oidSetFlag, record.AuthenMode);
    (void)setRecord(adapter, OID_802_11_ENCRYPTION_STATUS | oidSetFlag, record.EncryStatus);
    (void)setRecord(adapter, VX_OID_802_11_TX_POWER | oidSetFlag, transmitPowerPercent(record.TxPower));
}

void associateBySsid(VX7100Access& adapter, const PROFILE_DATA& record)
{
    (void)setRecord(adapter, OID_802_11_SSID, record.Ssid);
}

void associateByBssid(VX7100Access& adapter, const PROFILE_DATA& record)
{
    (void)setRecord(adapter, OID_802_11_BSSID, record.Bssid);
}

// The card applies each setting at once and starts to associate at the last request.
void sendFullConnection(VX7100Access& adapter, PROFILE_DATA& record)
{
    sendSettings(adapter, record);
    sendKeys(adapter, record);
    if (record.NetworkType != Ndis802_11IBSS)
        (void)setRecord(adapter, OID_802_11_POWER_MODE, record.PowerSaveMode);
    else
        sendAdHocChannel(adapter, record.ChannelFreq);
    if (record.SetWirelessMode != 0)
        sendWirelessMode(adapter, record);
    if (record.ConnectByBssid == 0)
        associateBySsid(adapter, record);
    else
        associateByBssid(adapter, record);
}

void scan(VX7100Access& adapter)
{
    adapter.RescanBssidList();
    adapter.QueryBssidList();
    G_bRescan = 1;
}

void runTask(VX7100Access& adapter, std::int32_t taskType, PROFILE_DATA& record)
{
    if (taskType >= CONNECT_TASK_RESCAN && taskType <= CONNECT_TASK_BSSID)
        traceAlways("#### SiteSurveyPageController - Probe - %d ####\n", taskType);
    switch (static_cast<ConnectionTaskType>(taskType)) {
    case CONNECT_TASK_RESCAN:
        scan(adapter);
        break;
    case CONNECT_TASK_FULL:
        sendFullConnection(adapter, record);
        break;
    case CONNECT_TASK_SSID:
        associateBySsid(adapter, record);
        break;
    case CONNECT_TASK_BSSID:
        associateByBssid(adapter, record);
        break;
    }
}

// The index of the access point in the scan list.
std::optional<std::uint32_t> indexInList(const MacAddress& bssid)
{
    BssidListWalk walk(currentBssidList());
    for (std::uint32_t index = 0; const auto entry = walk.next(); ++index) {
        if (entry->fixedPart().MacAddress == bssid)
            return index;
    }
    return std::nullopt;
}

void probeConnectedLink(ConnectionState& state, VX7100Access& adapter, SurveyList& list)
{
    state.TimerCount = -1;
    G_bRescan = 1;
    MacAddress bssid {};
    (void)queryRecord(adapter, OID_802_11_BSSID, bssid);
    // Queried but not shown: the link status page writes the status line.
    NDIS_802_11_SSID ssid {};
    (void)queryRecord(adapter, OID_802_11_SSID, ssid);
    if (const auto index = indexInList(bssid)) {
        G_bCurSelItem = static_cast<std::int8_t>(*index);
        G_bRescan = 0;
    }
    list.reloadData();
    if (G_bRescan != 0 && state.runFlag == 0)
        queueRescan();
}

} // namespace

std::uint32_t transmitPowerPercent(std::uint32_t powerStep)
{
    constexpr std::array<std::uint32_t, 5> percent { 100, 75, 50, 25, 12 };
    return powerStep < percent.size() ? percent[powerStep] : percent.front();
}

std::weak_ptr<ProfileData> queueRescan()
{
    std::shared_ptr<ProfileData> task = ProfileData::setProfileData(std::make_unique<PROFILE_DATA>());
    task->setTaskType(CONNECT_TASK_RESCAN);
    std::weak_ptr<ProfileData> queued = task;
    TaskQueue::InsertTaskObject(std::move(task));
    return queued;
}

std::weak_ptr<ProfileData> queueConnection(std::unique_ptr<PROFILE_DATA> record)
{
    std::shared_ptr<ProfileData> task = ProfileData::setProfileData(std::move(record));
    task->setTaskType(CONNECT_TASK_FULL);
    std::weak_ptr<ProfileData> queued = task;
    TaskQueue::InsertTaskObject(std::move(task));
    return queued;
}

void DoTask(ConnectionState& state, VX7100Access& adapter)
{
    traceEntry("SiteSurveyPageController", "DoTask");
    if (const auto task = TaskQueue::GetTaskObject()) {
        if (state.runFlag != 0)
            return;
        state.runFlag = 1;
        traceAlways("#### SiteSurveyPageController - DoTask - taskType = %d ####\n", task->getTaskType());
        PROFILE_DATA* const record = task->Profile();
        if (record == nullptr) {
            TaskQueue::RemoveTaskObject();
            return;
        }
        runTask(adapter, task->getTaskType(), *record);
        TaskQueue::RemoveTaskObject();
    }
    state.runFlag = 0;
    trace("#### SiteSurveyPageController - DoTask - ending ####\n");
}

void ProbeConnectStatus(ConnectionState& state, VX7100Access& adapter, SurveyList& list)
{
    traceEntry("SiteSurveyPageController", "ProbeConnectStatus");
    if (G_bDeviceExist == 0)
        return;
    if (G_bRescan != 0) {
        list.RefreshAPList();
        G_bRescan = 0;
    }
    list.reloadData();
    G_bCurSelItem = -1; // byte 255: no row is marked
    std::uint32_t mediaState = NdisMediaStateConnected;
    (void)queryRecord(adapter, OID_GEN_MEDIA_CONNECT_STATUS, mediaState);
    state.linkUp = mediaState == NdisMediaStateConnected && G_bRadio != 0;
    if (state.linkUp) {
        probeConnectedLink(state, adapter, list);
        return;
    }
    list.reloadData(); // remove the mark before the scan blocks the window
    if (state.TimerCount != -1)
        return;
    // The link was up before: scan now, and at every probe until it returns or the user connects again.
    queueRescan();
    DoTask(state, adapter);
}
