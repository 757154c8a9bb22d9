#include "services/linux/service/LinuxCard.h"

#include "driver/records/Oids.h"
#include "tests/services/host/TestClient.h"
#include "tests/services/linux/card/CardUnderTest.h"
#include "tests/services/linux/service/Fakes.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

class LinuxCardTest : public testing::Test {
protected:
    LinuxCardTest()
    {
        auto ownedKernel = std::make_unique<FakeKernel>();
        auto ownedSupplicant = std::make_unique<FakeSupplicant>();
        auto ownedRadio = std::make_unique<FakeRadio>();
        kernel = ownedKernel.get();
        supplicant = ownedSupplicant.get();
        radio = ownedRadio.get();
        kernel->wiphy = dualBandWiphy();
        kernel->link->isUp = true;
        card = std::make_unique<LinuxCard>(CardHardware { ownAddress, 1, 2 }, false,
            LinuxCard::Parts { std::move(ownedKernel), std::move(ownedSupplicant), std::move(ownedRadio),
                [this] { return nowMs; }, [this](const std::string& text) { log += text + '\n'; } });
        card->start();
        kernel->answerAll();
        supplicant->listener->supplicantReady();
        kernel->answerAll();
        finishScans();
    }

    // As the driver transport would call it; the reply goes nowhere, so the state is looked at instead.
    void request(std::uint32_t oid, const Bytes& input, std::uint32_t capacity = 0)
    {
        card->handler()({ RequestKind::StructureCall, oid, capacity, input }, ServiceReply({}, capacity));
    }
    template <typename Record> void set(std::uint32_t oid, const Record& record)
    {
        request(oid | oidSetFlag, bytesOf(record));
    }
    void query(std::uint32_t oid) { request(oid, Bytes(4), 4); }

    void finishScans()
    {
        while (!card->state().scanPlan.isDone()) {
            card->scanEnded(card->state().allowedMhz());
            kernel->answerAll();
        }
    }

    void linkUp()
    {
        set(OID_802_11_SSID, ssidRecord("cafe"));
        SupplicantStatus status;
        status.isCompleted = true;
        status.bssid = networkEntry("cafe", 1).bssid;
        status.frequencyMhz = 2412;
        supplicant->listener->supplicantStatus(status);
        kernel->answerAll();
    }

    std::int64_t nowMs { 10'000 };
    FakeKernel* kernel;
    FakeSupplicant* supplicant;
    FakeRadio* radio;
    std::string log;
    std::unique_ptr<LinuxCard> card;
};

} // namespace

TEST_F(LinuxCardTest, BeginsByBringingTheInterfaceUpAndScanning)
{
    EXPECT_EQ(kernel->calls.front(), "up");
    ASSERT_FALSE(kernel->scans.empty());
    EXPECT_EQ(kernel->scans.front().frequenciesMhz.size(), 4U);
    EXPECT_TRUE(log.empty()) << log;
}

TEST_F(LinuxCardTest, NoRequestWaitsForTheKernel)
{
    linkUp();
    nowMs += 1000;
    query(OID_GEN_MEDIA_CONNECT_STATUS); // returns although the kernel has not answered
    EXPECT_FALSE(kernel->waiting.empty());
    query(OID_802_11_RSSI);
    EXPECT_EQ(kernel->count("stations"), 2U); // one for the link, one for the first query
}

TEST_F(LinuxCardTest, FactsAreReadOnlyWhileAClientAsks)
{
    linkUp();
    kernel->calls.clear();
    nowMs += 60'000;
    EXPECT_TRUE(kernel->calls.empty());
    query(OID_GEN_MEDIA_CONNECT_STATUS);
    nowMs += LinuxCard::factsAgeMs - 1;
    query(OID_GEN_MEDIA_CONNECT_STATUS);
    EXPECT_EQ(kernel->count("link"), 1U);
    nowMs += 1;
    query(OID_GEN_MEDIA_CONNECT_STATUS);
    EXPECT_EQ(kernel->count("link"), 2U);
}

TEST_F(LinuxCardTest, StationsSurveyAndCountersReachTheCard)
{
    linkUp();
    StationInfo peer;
    peer.signalDbm = -44;
    kernel->stations = { peer };
    kernel->surveys = { { 2437, -80, false }, { 2412, -91, true }, { 5180, -70, false } };
    LinkMessage link;
    link.isUp = true;
    link.counters = InterfaceCounters { 0, 0, 0, 0 };
    kernel->link = link;
    nowMs += 1000;
    query(OID_802_11_RSSI);
    kernel->answerAll();
    EXPECT_EQ(card->state().link->peers.front().signalDbm, -44);
    EXPECT_EQ(card->state().link->noiseDbm, -91);
    kernel->link->counters->receivedFrames = 12;
    nowMs += 1000;
    query(OID_GEN_RCV_OK);
    kernel->answerAll();
    EXPECT_EQ(card->state().counters.receivedFrames(), 12U);
}

TEST_F(LinuxCardTest, ScanResultsFollowTheEndOfAScan)
{
    set<std::uint32_t>(OID_802_11_BSSID_LIST_SCAN, 0);
    kernel->networks = { networkEntry("cafe", 1) };
    card->scanEnded({ 2412 });
    kernel->answerAll();
    EXPECT_EQ(card->state().networks.networks().size(), 1U);
}

TEST_F(LinuxCardTest, LostScanResultsDoNotAgeTheList)
{
    kernel->networks = { networkEntry("cafe", 1) };
    card->scanEnded({ 2412 });
    kernel->answerAll();
    kernel->networks.reset(); // the socket overflowed
    for (int i = 0; i < 2 * NetworkList::scansUntilForgotten; ++i) {
        nowMs += 1000;
        card->scanEnded({ 2412 });
        kernel->answerAll();
    }
    EXPECT_EQ(card->state().networks.networks().size(), 1U);
}

TEST_F(LinuxCardTest, RefusedScanIsSaidOnce)
{
    for (int i = 0; i < 3; ++i) {
        kernel->errors["scan"] = EPERM;
        set<std::uint32_t>(OID_802_11_BSSID_LIST_SCAN, 0);
        kernel->answerAll();
    }
    EXPECT_EQ(log, "the kernel refuses to scan: Operation not permitted\n");
}

TEST_F(LinuxCardTest, UnsupportedSettingIsNotWorthALine)
{
    kernel->errors["power save"] = EOPNOTSUPP;
    set<std::uint32_t>(OID_802_11_POWER_MODE, 1);
    kernel->answerAll();
    EXPECT_TRUE(log.empty()) << log;
    kernel->errors["power save"] = EIO;
    set<std::uint32_t>(OID_802_11_POWER_MODE, 1);
    kernel->answerAll();
    EXPECT_EQ(log, "the kernel refuses power saving: Input/output error\n");
}

TEST_F(LinuxCardTest, RatesWithoutABasicRateAreSetWithOne)
{
    kernel->allRates.clear();
    kernel->errors["rates"] = EINVAL;
    set(OID_802_11_DESIRED_RATES, NDIS_802_11_RATES { 108 });
    kernel->answerAll();
    ASSERT_EQ(kernel->allRates.size(), 2U);
    EXPECT_EQ(kernel->allRates.back().twoGhz, (std::vector<std::uint8_t> { 108, 2 }));
    EXPECT_EQ(kernel->allRates.back().fiveGhz, (std::vector<std::uint8_t> { 108, 12 }));
    EXPECT_TRUE(log.empty()) << log;
}

TEST_F(LinuxCardTest, SupplicantEventsChangeTheLink)
{
    linkUp();
    EXPECT_TRUE(card->state().link);
    supplicant->listener->supplicantEvent({ SupplicantEventKind::Disconnected, {} });
    EXPECT_FALSE(card->state().link);
    supplicant->listener->supplicantEvent({ SupplicantEventKind::NetworkNotFound, {} });
    EXPECT_EQ(supplicant->searches.size(), 1U);
    supplicant->listener->supplicantEvent({ SupplicantEventKind::WrongKey, "reason=WRONG_KEY" });
    EXPECT_EQ(log, "the network does not accept the join: reason=WRONG_KEY\n");
}

TEST_F(LinuxCardTest, RadioIsSwitchedAndFollowed)
{
    set(VX_OID_802_11_RADIO, std::array<std::uint8_t, 4> { 0 });
    EXPECT_EQ(radio->wanted, false);
    linkUp();
    radio->current.isSoftBlocked = true;
    card->radioChanged();
    EXPECT_FALSE(card->state().link);
}

TEST_F(LinuxCardTest, InterfaceWithoutItsRadioIsNotBroughtUp)
{
    auto ownedKernel = std::make_unique<FakeKernel>();
    auto ownedRadio = std::make_unique<FakeRadio>();
    FakeKernel& blockedKernel = *ownedKernel;
    ownedRadio->current.isSoftBlocked = true;
    LinuxCard blocked({}, false,
        LinuxCard::Parts { std::move(ownedKernel), std::make_unique<FakeSupplicant>(), std::move(ownedRadio),
            [this] { return nowMs; }, [](const std::string&) {} });
    blockedKernel.wiphy = dualBandWiphy();
    blocked.prepare([&blocked] { blocked.start(); });
    blockedKernel.answerAll();
    EXPECT_EQ(blockedKernel.count("up"), 0U);
    EXPECT_TRUE(blockedKernel.scans.empty());
}

TEST_F(LinuxCardTest, ChangedRegulatoryDomainChangesTheScan)
{
    kernel->wiphy->channels.pop_back();
    card->regulatoryDomainChanged();
    kernel->answerAll();
    EXPECT_EQ(card->state().allowedMhz().size(), 3U);
}

TEST_F(LinuxCardTest, DeadSupplicantMeansNoLinkAndNoReadiness)
{
    linkUp();
    supplicant->listener->supplicantLost();
    EXPECT_FALSE(card->state().link);
    EXPECT_FALSE(card->state().isSupplicantReady);
    supplicant->listener->supplicantReady();
    EXPECT_TRUE(card->state().isEventRaised);
}

TEST_F(LinuxCardTest, AccessPointIsAskedForByItsAddress)
{
    linkUp();
    EXPECT_EQ(kernel->accessPoints.back(), networkEntry("cafe", 1).bssid);
    SupplicantStatus status;
    status.isCompleted = true;
    status.isAdHoc = true;
    status.bssid = networkEntry("cell", 2).bssid;
    supplicant->listener->supplicantStatus(status);
    EXPECT_EQ(kernel->accessPoints.back(), std::nullopt);
}

TEST_F(LinuxCardTest, ProbedStateReplacesAnEventThatWasLost)
{
    linkUp();
    SupplicantStatus status;
    status.isDown = true;
    EXPECT_TRUE(supplicant->listener->supplicantProbed(status));
    EXPECT_FALSE(card->state().link);
    EXPECT_FALSE(supplicant->listener->supplicantProbed(status));
    status = {};
    status.isCompleted = true;
    status.bssid = networkEntry("cafe", 1).bssid;
    EXPECT_TRUE(supplicant->listener->supplicantProbed(status));
    EXPECT_TRUE(card->state().link);
    kernel->calls.clear();
    EXPECT_FALSE(supplicant->listener->supplicantProbed(status));
    EXPECT_TRUE(kernel->calls.empty()); // nothing is set or read again
}

TEST_F(LinuxCardTest, ScanIsTriedAgainWhenTheKernelIsBusy)
{
    for (const int error : { EBUSY, ENETDOWN, EAGAIN, ETIMEDOUT }) {
        kernel->errors["scan"] = error;
        set<std::uint32_t>(OID_802_11_BSSID_LIST_SCAN, 0);
        kernel->answerAll();
        EXPECT_FALSE(card->state().scanPlan.isDone()) << error;
        finishScans();
    }
    EXPECT_TRUE(log.empty()) << log;
}

TEST_F(LinuxCardTest, BasicRateIsThatOfTheNetwork)
{
    ScanEntry entry = networkEntry("cafe", 1);
    appendElement(entry.elements, elementSupportedRates, Octets { 0x80 | 48, 0x80 | 24, 12, 108 });
    kernel->networks = { entry };
    linkUp();
    kernel->errors["rates"] = EINVAL;
    set(OID_802_11_DESIRED_RATES, NDIS_802_11_RATES { 108 });
    kernel->answerAll();
    EXPECT_EQ(kernel->allRates.back().twoGhz, (std::vector<std::uint8_t> { 108, 24 }));
}

TEST_F(LinuxCardTest, ChannelsAreAskedForUntilTheyAreKnown)
{
    auto ownedKernel = std::make_unique<FakeKernel>();
    FakeKernel& silent = *ownedKernel;
    LinuxCard late({}, false,
        LinuxCard::Parts { std::move(ownedKernel), std::make_unique<FakeSupplicant>(), std::make_unique<FakeRadio>(),
            [this] { return nowMs; }, [](const std::string&) {} });
    bool isPrepared = false;
    late.prepare([&isPrepared] { isPrepared = true; });
    silent.answerAll(); // a failure
    EXPECT_FALSE(isPrepared);
    ASSERT_TRUE(pumpUntil([&silent] { return silent.count("wiphy") == 2; }));
    silent.wiphy = dualBandWiphy();
    silent.answerAll();
    EXPECT_TRUE(isPrepared);
    EXPECT_TRUE(silent.scans.empty()); // the interface is not up yet
    late.start();
    EXPECT_FALSE(silent.scans.empty());
}

TEST_F(LinuxCardTest, SilentKernelDoesNotHoldTheCardBackForLong)
{
    LinuxCard silent({}, false,
        LinuxCard::Parts { std::make_unique<FakeKernel>(), std::make_unique<FakeSupplicant>(),
            std::make_unique<FakeRadio>(), [this] { return nowMs; }, [](const std::string&) {} });
    bool isPrepared = false;
    silent.prepare([&isPrepared] { isPrepared = true; });
    EXPECT_TRUE(pumpUntil([&isPrepared] { return isPrepared; }));
}

TEST_F(LinuxCardTest, AlternatingComplaintsAreSaidOnceEach)
{
    const auto reject = [this](const char* text) {
        supplicant->listener->supplicantEvent({ SupplicantEventKind::AssociationRejected, text });
    };
    linkUp();
    for (int i = 0; i < 3; ++i) {
        reject("status_code=1");
        reject("status_code=17");
    }
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 2);
    set(OID_802_11_SSID, ssidRecord("other"));
    reject("status_code=1");
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 3);
}

TEST_F(LinuxCardTest, RadioThatCannotBeSwitchedIsReadBackAsItIs)
{
    radio->canSwitch = false;
    set(VX_OID_802_11_RADIO, std::array<std::uint8_t, 4> { 0 });
    EXPECT_TRUE(card->state().settings.radioOn);
    radio->canSwitch = true;
    set(VX_OID_802_11_RADIO, std::array<std::uint8_t, 4> { 0 });
    EXPECT_FALSE(card->state().settings.radioOn);
}
