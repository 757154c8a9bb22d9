#include "survey/connection/ConnectionTasks.h"

#include "driver/BssidList.h"
#include "survey/connection/ProfileData.h"
#include "tests/support/RecordedRequests.h"
#include "tests/support/StandardErrorOf.h"
#include "tests/survey/SurveyFixture.h"

namespace {

using Requests = std::vector<DriverRequest>;

class ConnectionTasksTest : public SurveyFixture {
protected:
    void run(std::unique_ptr<PROFILE_DATA> record, std::int32_t type = CONNECT_TASK_FULL)
    {
        std::shared_ptr<ProfileData> task = ProfileData::setProfileData(std::move(record));
        task->setTaskType(type);
        TaskQueue::InsertTaskObject(std::move(task));
        DoTask(state, adapter);
    }

    // The key requests in order.
    [[nodiscard]] Requests keyRequests() const
    {
        Requests keys;
        for (const DriverRequest& request : requests()) {
            const std::uint32_t oid = request.oid & ~oidSetFlag;
            if (oid == OID_802_11_ADD_KEY || oid == OID_802_11_REMOVE_KEY || oid == VX_OID_802_11_ADD_WPA)
                keys.push_back(request);
        }
        return keys;
    }

    ConnectionState state;
};

NDIS_802_11_SSID ssid(std::string_view name)
{
    NDIS_802_11_SSID record { static_cast<std::uint32_t>(name.size()), {} };
    std::memcpy(record.Ssid.data(), name.data(), name.size());
    return record;
}

constexpr MacAddress accessPoint { 0x00, 0x11, 0x22, 0x33, 0x44, 0x02 };

// An open infrastructure network without encryption, joined by SSID.
std::unique_ptr<PROFILE_DATA> openRecord()
{
    auto record = std::make_unique<PROFILE_DATA>();
    record->Ssid = ssid("cafe");
    record->Bssid = accessPoint;
    record->NetworkType = Ndis802_11Infrastructure;
    record->PreambleType = 2;
    record->RtsThreshold = 2347;
    record->FragmentThreshold = 2346;
    record->AuthenMode = Ndis802_11AuthModeOpen;
    record->EncryStatus = Ndis802_11EncryptionDisabled;
    record->TxPower = 1;
    record->PowerSaveMode = 2;
    record->DisassociateFirst = 1;
    return record;
}

Bytes keyBytes(std::uint32_t index, std::size_t keyLength)
{
    const auto length = static_cast<std::uint32_t>(keyLength);
    const NDIS_802_11_KEY head { length + keyRecordOverhead, index, length, accessPoint, {}, 0 };
    Bytes record = recordBytes(head);
    record.resize(length + keyRecordOverhead, std::byte { 0x5A });
    return record;
}

KeyRecord keyRecord(std::uint32_t index, std::size_t keyLength)
{
    const Bytes bytes = keyBytes(index, keyLength);
    return { bytes.begin(), bytes.end() };
}

Bytes removeKey(std::uint32_t index)
{
    return joined(joined(word(16), word(index)), bytesOf({ 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0 }));
}

Requests openSettings()
{
    return {
        { asSet(OID_802_11_DISASSOCIATE), word(0) },
        { asSet(OID_802_11_INFRASTRUCTURE_MODE), word(1) },
        { asSet(VX_OID_802_11_PREAMBLE), word(2) },
        { asSet(OID_802_11_RTS_THRESHOLD), word(2347) },
        { asSet(OID_802_11_FRAGMENTATION_THRESHOLD), word(2346) },
        { asSet(OID_802_11_AUTHENTICATION_MODE), word(0) },
        { asSet(OID_802_11_ENCRYPTION_STATUS), word(1) },
        { asSet(VX_OID_802_11_TX_POWER), word(75) },
    };
}

Requests operator+(Requests first, const Requests& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

TEST_F(ConnectionTasksTest, SendsTheSettingsOfAnOpenNetworkWithoutKeyRequests)
{
    run(openRecord());
    EXPECT_EQ(requests(),
        (openSettings()
            + Requests {
                { asSet(OID_802_11_POWER_MODE), word(2) }, { asSet(OID_802_11_SSID), recordBytes(ssid("cafe")) } }));
    EXPECT_EQ(TaskQueue::GetTaskObject(), nullptr);
    EXPECT_EQ(state.runFlag, 0);
}

TEST_F(ConnectionTasksTest, DisassociatesOnlyIfTheRecordSaysSo)
{
    auto record = openRecord();
    record->DisassociateFirst = 0;
    run(std::move(record));
    EXPECT_EQ(registry.oids().front(), asSet(OID_802_11_INFRASTRUCTURE_MODE));
}

TEST_F(ConnectionTasksTest, AssociatesByBssidIfTheRecordSaysSo)
{
    auto record = openRecord();
    record->ConnectByBssid = 1;
    run(std::move(record));
    EXPECT_EQ(requests(),
        (openSettings()
            + Requests {
                { asSet(OID_802_11_POWER_MODE), word(2) }, { asSet(OID_802_11_BSSID), recordBytes(accessPoint) } }));
}

TEST_F(ConnectionTasksTest, SendsAPresharedKeyAsTheOnlyKeyRequest)
{
    auto record = openRecord();
    record->AuthenMode = Ndis802_11AuthModeWPAPSK;
    record->EncryStatus = Ndis802_11Encryption2Enabled;
    record->pWpaKey = keyRecord(keyIndexTransmit, 32);
    record->pWepKey[0] = keyRecord(0, 5);
    run(std::move(record));
    const Requests expected { { asSet(OID_802_11_DISASSOCIATE), word(0) },
        { asSet(OID_802_11_INFRASTRUCTURE_MODE), word(1) }, { asSet(VX_OID_802_11_PREAMBLE), word(2) },
        { asSet(OID_802_11_RTS_THRESHOLD), word(2347) }, { asSet(OID_802_11_FRAGMENTATION_THRESHOLD), word(2346) },
        { asSet(OID_802_11_AUTHENTICATION_MODE), word(4) }, { asSet(OID_802_11_ENCRYPTION_STATUS), word(4) },
        { asSet(VX_OID_802_11_TX_POWER), word(75) }, { asSet(VX_OID_802_11_ADD_WPA), keyBytes(keyIndexTransmit, 32) },
        { asSet(OID_802_11_POWER_MODE), word(2) }, { asSet(OID_802_11_SSID), recordBytes(ssid("cafe")) } };
    EXPECT_EQ(requests(), expected);
    EXPECT_EQ(requests()[8].input.size(), 71U);
}

TEST_F(ConnectionTasksTest, AddsTheKeyOfAWpaNoneNetwork)
{
    auto record = openRecord();
    record->AuthenMode = Ndis802_11AuthModeWPANone;
    record->EncryStatus = Ndis802_11Encryption3Enabled;
    record->pWpaKey = keyRecord(keyIndexTransmit, 32);
    run(std::move(record));
    EXPECT_EQ(keyRequests(), (Requests { { asSet(OID_802_11_ADD_KEY), keyBytes(keyIndexTransmit, 32) } }));
}

TEST_F(ConnectionTasksTest, RemovesTheAbsentKeysOfASharedNetworkInIndexOrder)
{
    auto record = openRecord();
    record->AuthenMode = Ndis802_11AuthModeShared;
    record->pWepKey[1] = keyRecord(1 | keyIndexTransmit, 13);
    run(std::move(record));
    EXPECT_EQ(keyRequests(),
        (Requests { { asSet(OID_802_11_REMOVE_KEY), removeKey(0) },
            { asSet(OID_802_11_ADD_KEY), keyBytes(1 | keyIndexTransmit, 13) },
            { asSet(OID_802_11_REMOVE_KEY), removeKey(2) }, { asSet(OID_802_11_REMOVE_KEY), removeKey(3) } }));
    EXPECT_EQ(keyRequests()[1].input.size(), 52U);
}

TEST_F(ConnectionTasksTest, SendsTheFourKeysOfAnOpenWepNetwork)
{
    auto record = openRecord();
    record->EncryStatus = Ndis802_11Encryption1Enabled;
    for (std::uint32_t index = 0; index < 4; ++index)
        record->pWepKey[index] = keyRecord(index, 5);
    run(std::move(record));
    ASSERT_EQ(keyRequests().size(), 4U);
    for (std::uint32_t index = 0; index < 4; ++index)
        EXPECT_EQ(keyRequests()[index], (DriverRequest { asSet(OID_802_11_ADD_KEY), keyBytes(index, 5) }));
}

TEST_F(ConnectionTasksTest, SetsTheChannelOfAnAdHocNetworkAndKeepsTheRestOfTheConfiguration)
{
    const NDIS_802_11_CONFIGURATION current { 32, 100, 7, 2412000, { 16, 1, 2, 3 } };
    registry.answer(OID_802_11_CONFIGURATION, recordBytes(current));
    auto record = openRecord();
    record->NetworkType = Ndis802_11IBSS;
    record->ChannelFreq = 2437000;
    const std::string written = standardErrorOf([&] { run(std::move(record)); });
    EXPECT_NE(written.find(
                  "#### SiteSurveyPageController - OID_802_11_CONFIGURATION - Configuration.BeaconPeriod = 100 ####\n"),
        std::string::npos);
    NDIS_802_11_CONFIGURATION expected = current;
    expected.DSConfig = 2437000;
    const std::size_t count = requests().size();
    ASSERT_EQ(count, 11U);
    EXPECT_EQ(requests()[count - 3], (DriverRequest { OID_802_11_CONFIGURATION, Bytes(32) }));
    EXPECT_EQ(requests()[count - 2], (DriverRequest { asSet(OID_802_11_CONFIGURATION), recordBytes(expected) }));
    EXPECT_EQ(requests()[count - 1], (DriverRequest { asSet(OID_802_11_SSID), recordBytes(ssid("cafe")) }));
}

TEST_F(ConnectionTasksTest, SendsTheWirelessModeIfTheRecordSaysSo)
{
    G_enumWirelessMode = 3;
    auto record = openRecord();
    record->SetWirelessMode = 1;
    record->DesiredRates = { 2, 4, 11, 22, 0, 0, 0, 0 };
    record->StaConfig.EnableTxBurst = 1;
    const Bytes staConfig = recordBytes(record->StaConfig);
    const Bytes rates = recordBytes(record->DesiredRates);
    run(std::move(record));
    EXPECT_EQ(requests(),
        (openSettings()
            + Requests { { asSet(OID_802_11_POWER_MODE), word(2) }, { asSet(VX_OID_802_11_PHY_MODE), word(3) },
                { asSet(VX_OID_802_11_STA_CONFIG), staConfig }, { asSet(OID_802_11_DESIRED_RATES), rates },
                { asSet(OID_802_11_SSID), recordBytes(ssid("cafe")) } }));
}

TEST_F(ConnectionTasksTest, SendsOnlyTheAssociationForTheShortTasks)
{
    run(openRecord(), CONNECT_TASK_SSID);
    run(openRecord(), CONNECT_TASK_BSSID);
    EXPECT_EQ(requests(),
        (Requests { { asSet(OID_802_11_SSID), recordBytes(ssid("cafe")) },
            { asSet(OID_802_11_BSSID), recordBytes(accessPoint) } }));
}

TEST_F(ConnectionTasksTest, ScansAndReadsTheListForARescan)
{
    letScanFind({ EntryBuilder("found") });
    run(std::make_unique<PROFILE_DATA>(), CONNECT_TASK_RESCAN);
    EXPECT_EQ(registry.oids(), scanOids());
    EXPECT_EQ(clock.delays, std::vector<std::uint32_t> { 120 });
    EXPECT_EQ(G_bRescan, 1);
    ASSERT_NE(G_pBssidList, nullptr);
    EXPECT_EQ(bssidCount(*G_pBssidList), 1U);
}

TEST_F(ConnectionTasksTest, ContinuesIfTheDriverRejectsEveryRequest)
{
    registry.otherwise.succeeds = false;
    auto record = openRecord();
    record->NetworkType = Ndis802_11IBSS;
    record->ChannelFreq = 2412000;
    run(std::move(record));
    EXPECT_EQ(requests().size(), 11U);
    EXPECT_EQ(registry.oids().back(), asSet(OID_802_11_SSID));
    EXPECT_TRUE(ProfileDataQueue->empty());
}

TEST_F(ConnectionTasksTest, SendsFullPowerForAnInvalidStep)
{
    const std::array<std::uint32_t, 7> percent { 100, 75, 50, 25, 12, 100, 100 };
    for (std::uint32_t step = 0; step < percent.size(); ++step)
        EXPECT_EQ(transmitPowerPercent(step), percent[step]);
    auto record = openRecord();
    record->TxPower = 7;
    run(std::move(record));
    EXPECT_EQ(requests()[7], (DriverRequest { asSet(VX_OID_802_11_TX_POWER), word(100) }));
}

TEST_F(ConnectionTasksTest, ClearsTheRunFlagOnAnEmptyQueue)
{
    state.runFlag = 1;
    DoTask(state, adapter);
    EXPECT_EQ(state.runFlag, 0);
    EXPECT_TRUE(requests().empty());
}

TEST_F(ConnectionTasksTest, KeepsTheTaskQueuedWhileAnotherRuns)
{
    state.runFlag = 1;
    run(openRecord());
    EXPECT_TRUE(requests().empty());
    EXPECT_EQ(state.runFlag, 1);
    EXPECT_NE(TaskQueue::GetTaskObject(), nullptr);
}

TEST_F(ConnectionTasksTest, TaskWithoutARecordIsDroppedAndBlocksLaterTasks)
{
    run(nullptr);
    EXPECT_EQ(TaskQueue::GetTaskObject(), nullptr);
    EXPECT_EQ(state.runFlag, 1);
    run(openRecord());
    EXPECT_TRUE(requests().empty());
}

TEST_F(ConnectionTasksTest, RunsOneTaskPerCallOldestFirst)
{
    queueRescan();
    queueConnection(openRecord());
    DoTask(state, adapter);
    EXPECT_EQ(registry.oids().front(), asSet(OID_802_11_BSSID_LIST_SCAN));
    EXPECT_EQ(ProfileDataQueue->size(), 1U);
    registry.forgetCalls();
    DoTask(state, adapter);
    EXPECT_EQ(registry.oids().back(), asSet(OID_802_11_SSID));
    EXPECT_TRUE(ProfileDataQueue->empty());
}

TEST_F(ConnectionTasksTest, WritesTheTaskTypeToStandardErrorEvenWithoutTraces)
{
    queueConnection(openRecord());
    const std::string written = standardErrorOf([this] { DoTask(state, adapter); });
    EXPECT_EQ(written.rfind("#### SiteSurveyPageController - DoTask - taskType = 2 ####\n"
                            "#### SiteSurveyPageController - Probe - 2 ####\n",
                  0),
        0U);
}

TEST_F(ConnectionTasksTest, DropsATaskOfAnUnknownType)
{
    run(openRecord(), 9);
    EXPECT_TRUE(requests().empty());
    EXPECT_TRUE(ProfileDataQueue->empty());
    EXPECT_EQ(state.runFlag, 0);
}

} // namespace
