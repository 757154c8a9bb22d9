#include "services/linux/card/Card.h"

#include "tests/services/linux/card/CardUnderTest.h"

#include <gtest/gtest.h>

TEST(Card, DisassociateEndsLinkAndRequest)
{
    CardUnderTest card;
    card.joinOpen();
    EXPECT_TRUE(card.set<std::uint32_t>(OID_802_11_DISASSOCIATE, 0));
    EXPECT_NE(effectIn<LeaveNetwork>(card.effects), nullptr);
    EXPECT_EQ(card.word(OID_GEN_MEDIA_CONNECT_STATUS), NdisMediaStateDisconnected);
    card.linkUp(); // told too late
    EXPECT_EQ(card.word(OID_GEN_MEDIA_CONNECT_STATUS), NdisMediaStateDisconnected);
}

TEST(Card, StatusOfAnIncompleteConnectionIsNoLink)
{
    CardUnderTest card;
    (void)card.set(OID_802_11_SSID, ssidRecord("cafe"));
    SupplicantStatus status;
    status.bssid = ownAddress;
    (void)card.card.linkUp(status, card.nowMs);
    EXPECT_FALSE(card.card.state().link);
}

TEST(Card, BroadcastAddressRequestsTheLastNameAgain)
{
    CardUnderTest card;
    (void)card.set(OID_802_11_SSID, ssidRecord("cafe"));
    (void)card.set<std::uint32_t>(OID_802_11_DISASSOCIATE, 0);
    EXPECT_TRUE(card.set(OID_802_11_BSSID, MacAddress { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF }));
    ASSERT_NE(card.block(), nullptr);
    EXPECT_EQ(card.block()->ssid, octets("cafe"));
}

TEST(Card, RequestBeforeTheSupplicantRunsIsMadeWhenItDoes)
{
    Card card({}, false, 0);
    (void)card.wiphyRead(dualBandWiphy(), 0);
    const CardReply reply = card.answer(OID_802_11_SSID | oidSetFlag, bytesOf(ssidRecord("cafe")), 0, 0);
    EXPECT_TRUE(reply.accepted);
    EXPECT_EQ(effectIn<JoinNetwork>(reply.effects), nullptr);
    EXPECT_NE(effectIn<JoinNetwork>(card.supplicantReady(100)), nullptr);
}

TEST(Card, RestartedSupplicantRaisesTheEventOnceItIsReady)
{
    CardUnderTest card;
    card.joinOpen();
    EXPECT_EQ(card.word(VX_OID_802_11_READY_FLAG), 1U);
    card.card.supplicantLost(card.nowMs);
    EXPECT_EQ(card.word(OID_GEN_MEDIA_CONNECT_STATUS), NdisMediaStateDisconnected);
    EXPECT_EQ(card.word(VX_OID_802_11_READY_FLAG), 0U);
    EXPECT_EQ(card.word(VX_OID_802_11_EVENT_FLAG), 0U);
    card.effects = card.card.supplicantReady(card.nowMs);
    EXPECT_EQ(card.word(VX_OID_802_11_READY_FLAG), 1U);
    EXPECT_EQ(card.word(VX_OID_802_11_EVENT_FLAG), 1U);
    EXPECT_EQ(card.word(VX_OID_802_11_EVENT_FLAG), 0U); // reading clears it
}

TEST(Card, RestoresTheJoinItselfIfTheClientDoesNot)
{
    CardUnderTest card;
    card.joinOpen();
    card.card.supplicantLost(card.nowMs);
    (void)card.card.supplicantReady(card.nowMs);
    card.pass(Card::restoreDelayMs - 1);
    EXPECT_EQ(card.block(), nullptr);
    card.pass(1);
    ASSERT_NE(card.block(), nullptr);
    EXPECT_EQ(card.block()->ssid, octets("cafe"));
    card.pass(Card::restoreDelayMs);
    EXPECT_EQ(card.block(), nullptr);
}

TEST(Card, LeavesTheRestorationToAClientThatJoins)
{
    CardUnderTest card;
    card.joinOpen();
    card.card.supplicantLost(card.nowMs);
    (void)card.card.supplicantReady(card.nowMs);
    (void)card.set(OID_802_11_SSID, ssidRecord("other"));
    card.pass(Card::restoreDelayMs);
    EXPECT_EQ(card.block(), nullptr);
}

TEST(Card, ReadyFlagDoesNotKeepAClientWaitingForEver)
{
    CardUnderTest card;
    card.card.supplicantLost(card.nowMs);
    card.pass(Card::maxNotReadyMs - 1);
    EXPECT_EQ(card.word(VX_OID_802_11_READY_FLAG), 0U);
    card.pass(1);
    EXPECT_EQ(card.word(VX_OID_802_11_READY_FLAG), 1U);
}

TEST(Card, RestartWithoutARequestIsNoEvent)
{
    CardUnderTest card;
    card.card.supplicantLost(card.nowMs);
    (void)card.card.supplicantReady(card.nowMs);
    EXPECT_EQ(card.word(VX_OID_802_11_EVENT_FLAG), 0U);
}

TEST(Card, ResumeAndReturnRaiseTheEvent)
{
    CardUnderTest card;
    card.card.resumed();
    EXPECT_EQ(card.word(VX_OID_802_11_EVENT_FLAG), 0U); // nothing was lost
    card.joinOpen();
    card.card.resumed();
    EXPECT_EQ(card.word(VX_OID_802_11_EVENT_FLAG), 1U);
    CardUnderTest returned(true);
    EXPECT_EQ(returned.word(VX_OID_802_11_EVENT_FLAG), 1U);
}

TEST(Card, RadioOffEndsLinkAndClearsTheList)
{
    CardUnderTest card;
    card.hear({ networkEntry("cafe", 1) });
    card.joinOpen();
    (void)card.card.radioSwitched(true, false, card.nowMs);
    EXPECT_FALSE(card.card.state().link);
    EXPECT_TRUE(card.card.state().networks.networks().empty());
    EXPECT_TRUE(card.set<std::uint32_t>(OID_802_11_BSSID_LIST_SCAN, 0));
    EXPECT_EQ(effectIn<StartScan>(card.effects), nullptr);

    card.effects = card.card.radioSwitched(false, false, card.nowMs);
    EXPECT_NE(effectIn<BringUp>(card.effects), nullptr);
    card.pass(Card::joinHeadStartMs + 500);
    EXPECT_NE(effectIn<StartScan>(card.effects), nullptr);
}

TEST(Card, ScansEveryAllowedChannelInTheEnd)
{
    CardUnderTest card;
    EXPECT_TRUE(card.set<std::uint32_t>(OID_802_11_BSSID_LIST_SCAN, 0));
    std::vector<std::uint32_t> scanned;
    int listened = 0;
    while (const auto* const scan = effectIn<StartScan>(card.effects)) {
        const StartScan copy = *scan;
        listened += copy.isListening ? 1 : 0;
        scanned.insert(scanned.end(), copy.frequenciesMhz.begin(), copy.frequenciesMhz.end());
        card.pass(1500);
        card.effects = card.card.scanRead({}, copy.frequenciesMhz, card.nowMs);
    }
    for (const std::uint32_t frequency : { 2412U, 2437U, 5180U, 5260U })
        EXPECT_NE(std::find(scanned.begin(), scanned.end(), frequency), scanned.end()) << frequency;
    EXPECT_EQ(listened, 1);
}

TEST(Card, ScansOnlyTheChannelsOfTheWirelessMode)
{
    CardUnderTest card;
    (void)card.set<std::uint32_t>(VX_OID_802_11_PHY_MODE, 0);
    (void)card.set<std::uint32_t>(OID_802_11_BSSID_LIST_SCAN, 0);
    EXPECT_EQ(effectIn<StartScan>(card.effects)->frequenciesMhz, (std::vector<std::uint32_t> { 2412, 2437 }));
}

TEST(Card, ModeOfOneBandRemovesTheNetworksOfTheOther)
{
    CardUnderTest card;
    card.hear({ networkEntry("near", 1, 2412), networkEntry("fast", 2, 5180) });
    (void)card.set<std::uint32_t>(VX_OID_802_11_PHY_MODE, 2);
    ASSERT_EQ(card.card.state().networks.networks().size(), 1U);
    EXPECT_EQ(card.card.state().networks.networks().front().entry.frequencyMhz, 5180U);
    card.hear({ networkEntry("near", 1, 2412) });
    EXPECT_EQ(card.card.state().networks.networks().size(), 1U);
}

TEST(Card, ModeThatForbidsTheLinksBandMovesTheJoin)
{
    CardUnderTest card;
    card.hear({ networkEntry("cafe", 1, 5180), networkEntry("cafe", 2, 2412) });
    (void)card.set(OID_802_11_SSID, ssidRecord("cafe"));
    card.linkUp(1, "cafe", 5180);
    (void)card.set<std::uint32_t>(VX_OID_802_11_PHY_MODE, 3);
    EXPECT_EQ(card.block(), nullptr);
    (void)card.set<std::uint32_t>(VX_OID_802_11_PHY_MODE, 0);
    EXPECT_FALSE(card.card.state().link);
    ASSERT_NE(card.block(), nullptr);
    EXPECT_EQ(card.block()->allowedMhz, (std::vector<std::uint32_t> { 2412, 2437 }));
    EXPECT_EQ(card.card.state().networks.networks().size(), 1U);
    // While it searches, a further mode changes where.
    (void)card.set<std::uint32_t>(VX_OID_802_11_PHY_MODE, 2);
    ASSERT_NE(effectIn<WidenSearch>(card.effects), nullptr);
    EXPECT_EQ(effectIn<WidenSearch>(card.effects)->frequenciesMhz, (std::vector<std::uint32_t> { 5180, 5260 }));
}

TEST(Card, JoinThatCannotMoveIsLeft)
{
    CardUnderTest card;
    (void)card.set(OID_802_11_SSID, ssidRecord("cafe"));
    card.linkUp(1, "cafe", 5180);
    (void)card.set<std::int32_t>(OID_802_11_ENCRYPTION_STATUS, Ndis802_11Encryption1Enabled); // without a key
    (void)card.set<std::uint32_t>(VX_OID_802_11_PHY_MODE, 0);
    EXPECT_NE(effectIn<LeaveNetwork>(card.effects), nullptr);
    EXPECT_FALSE(card.card.state().request);
}

TEST(Card, RegulatoryDomainThatForbidsTheLinksChannelMovesTheJoin)
{
    CardUnderTest card;
    (void)card.set<std::uint32_t>(VX_OID_802_11_TX_POWER, 50);
    (void)card.set(OID_802_11_SSID, ssidRecord("cafe"));
    card.linkUp(1, "cafe", 5180);
    WiphyFacts wiphy = dualBandWiphy();
    wiphy.channels[2].maxPowerMbm = 1700;
    card.effects = card.card.wiphyRead(wiphy, card.nowMs);
    EXPECT_EQ(card.block(), nullptr);
    ASSERT_NE(effectIn<SetTransmitPower>(card.effects), nullptr);
    EXPECT_EQ(effectIn<SetTransmitPower>(card.effects)->mbm, 1400);
    EXPECT_TRUE(card.card.wiphyRead(wiphy, card.nowMs).empty()); // nothing has changed
    wiphy.channels[2].isDisabled = true;
    card.effects = card.card.wiphyRead(wiphy, card.nowMs);
    ASSERT_NE(card.block(), nullptr);
    EXPECT_EQ(card.block()->allowedMhz, (std::vector<std::uint32_t> { 2412, 2437, 5260 }));
}

TEST(Card, BusyKernelIsAskedAgain)
{
    CardUnderTest card;
    (void)card.set<std::uint32_t>(OID_802_11_BSSID_LIST_SCAN, 0);
    (void)card.card.scanFailed(true, card.nowMs);
    ASSERT_TRUE(card.card.nextDueMs());
    card.pass(*card.card.nextDueMs() - card.nowMs);
    EXPECT_NE(effectIn<StartScan>(card.effects), nullptr);
    (void)card.card.scanFailed(false, card.nowMs);
    EXPECT_FALSE(card.card.nextDueMs());
}

TEST(Card, InterfaceThatWasTakenDownIsBroughtUpAgain)
{
    CardUnderTest card;
    card.card.interfaceRead(false, card.nowMs);
    card.pass(Card::bringUpDelayMs - 1);
    EXPECT_EQ(effectIn<BringUp>(card.effects), nullptr);
    card.pass(1);
    EXPECT_NE(effectIn<BringUp>(card.effects), nullptr);
    EXPECT_FALSE(card.card.nextDueMs());

    card.card.interfaceRead(false, card.nowMs);
    card.card.interfaceRead(true, card.nowMs);
    EXPECT_FALSE(card.card.nextDueMs());
    // Without its radio it cannot be up.
    (void)card.card.radioSwitched(true, false, card.nowMs);
    card.card.interfaceRead(false, card.nowMs);
    EXPECT_FALSE(card.card.nextDueMs());
}

TEST(Card, ScanThatIsRefusedAgainAndAgainIsGivenUp)
{
    CardUnderTest card;
    (void)card.set<std::uint32_t>(OID_802_11_BSSID_LIST_SCAN, 0);
    for (int i = 0; i < Card::maxScanTries; ++i)
        (void)card.card.scanFailed(true, card.nowMs);
    EXPECT_TRUE(card.card.state().scanPlan.isDone());
}

TEST(Card, ScanWhoseEndIsNeverToldDoesNotBlockTheNextOne)
{
    CardUnderTest card;
    (void)card.set<std::uint32_t>(OID_802_11_BSSID_LIST_SCAN, 0);
    card.pass(Card::maxScanMs);
    (void)card.set<std::uint32_t>(OID_802_11_BSSID_LIST_SCAN, 0);
    EXPECT_NE(effectIn<StartScan>(card.effects), nullptr);
}

TEST(Card, ScanWaitsForAJoin)
{
    CardUnderTest card;
    (void)card.set(OID_802_11_SSID, ssidRecord("cafe"));
    (void)card.set<std::uint32_t>(OID_802_11_BSSID_LIST_SCAN, 0);
    EXPECT_EQ(effectIn<StartScan>(card.effects), nullptr);
    card.linkUp();
    EXPECT_NE(effectIn<StartScan>(card.effects), nullptr);
    EXPECT_EQ(effectIn<StartScan>(card.effects)->ssid, octets("cafe"));
}

TEST(Card, ListeningForHiddenNetworksWaitsLongerForAJoin)
{
    CardUnderTest card;
    (void)card.set(OID_802_11_SSID, ssidRecord("cafe"));
    (void)card.set<std::uint32_t>(OID_802_11_BSSID_LIST_SCAN, 0);
    card.pass(Card::joinHeadStartMs);
    ASSERT_NE(effectIn<StartScan>(card.effects), nullptr);
    EXPECT_FALSE(effectIn<StartScan>(card.effects)->isListening);
    card.effects = card.card.scanRead({}, card.card.state().allowedMhz(), card.nowMs);
    EXPECT_EQ(effectIn<StartScan>(card.effects), nullptr);
    card.pass(Card::listenHeadStartMs);
    ASSERT_NE(effectIn<StartScan>(card.effects), nullptr);
    EXPECT_TRUE(effectIn<StartScan>(card.effects)->isListening);
}

TEST(Card, ScanForANameNeedsADriverThatTakesTwo)
{
    CardUnderTest card;
    WiphyFacts wiphy = dualBandWiphy();
    wiphy.maxScanSsids = 1;
    (void)card.card.wiphyRead(wiphy, card.nowMs);
    card.joinOpen();
    (void)card.set<std::uint32_t>(OID_802_11_BSSID_LIST_SCAN, 0);
    ASSERT_NE(effectIn<StartScan>(card.effects), nullptr);
    EXPECT_TRUE(effectIn<StartScan>(card.effects)->ssid.empty());
}

TEST(Card, ConnectionToTheSamePeerKeepsItsFigures)
{
    CardUnderTest card;
    card.joinOpen();
    StationInfo peer;
    peer.signalDbm = -44;
    card.card.stationsRead({ peer });
    card.linkUp(); // new group keys
    EXPECT_EQ(card.query<std::int32_t>(OID_802_11_RSSI), -44);
    card.linkUp(2); // another access point
    EXPECT_EQ(card.query<std::int32_t>(OID_802_11_RSSI), NetworkList::ownCellSignalDbm);
}

TEST(Card, JoinEndsAScanAndTheRestOfItFollows)
{
    CardUnderTest card;
    (void)card.set(OID_802_11_SSID, ssidRecord("cafe"));
    EXPECT_EQ(effectIn<AbortScan>(card.effects), nullptr);
    (void)card.set<std::uint32_t>(OID_802_11_DISASSOCIATE, 0);
    (void)card.set<std::uint32_t>(OID_802_11_BSSID_LIST_SCAN, 0);
    (void)card.set(OID_802_11_SSID, ssidRecord("cafe"));
    EXPECT_NE(effectIn<AbortScan>(card.effects), nullptr);
    (void)card.card.scanFailed(true, card.nowMs);
    card.linkUp();
    EXPECT_NE(effectIn<StartScan>(card.effects), nullptr);
}

TEST(Card, NetworkThatIsNotFoundIsLookedForEverywhere)
{
    CardUnderTest card;
    EXPECT_TRUE(card.card.networkNotFound(card.nowMs).empty());
    (void)card.set(OID_802_11_SSID, ssidRecord("cafe"));
    Effects effects = card.card.networkNotFound(card.nowMs);
    ASSERT_NE(effectIn<WidenSearch>(effects), nullptr);
    EXPECT_EQ(effectIn<WidenSearch>(effects)->frequenciesMhz.size(), 4U);
    EXPECT_TRUE(effectIn<WidenSearch>(effects)->isUrgent);
    effects = card.card.networkNotFound(card.nowMs + Card::urgentSearchMs);
    EXPECT_FALSE(effectIn<WidenSearch>(effects)->isUrgent);
    (void)card.set<std::int32_t>(OID_802_11_INFRASTRUCTURE_MODE, Ndis802_11IBSS);
    (void)card.set(OID_802_11_SSID, ssidRecord("cell"));
    effects = card.card.networkNotFound(card.nowMs);
    EXPECT_FALSE(effectIn<WidenSearch>(effects)->isUrgent);
}

TEST(Card, SettingsOfTheRadioAreMadeAgainWithEachLink)
{
    CardUnderTest card;
    (void)card.set<std::uint32_t>(OID_802_11_RTS_THRESHOLD, 500);
    (void)card.set<std::uint32_t>(OID_802_11_POWER_MODE, 1);
    card.joinOpen();
    EXPECT_EQ(effectIn<SetRtsThreshold>(card.effects)->bytes, 500U);
    EXPECT_TRUE(effectIn<SetPowerSave>(card.effects)->isOn);
    EXPECT_NE(effectIn<SetRates>(card.effects), nullptr);
}

TEST(Card, LostEventsAreFoundByComparingTheState)
{
    CardUnderTest card;
    SupplicantStatus status;
    status.isCompleted = true;
    status.bssid = networkEntry("cafe", 1).bssid;
    status.frequencyMhz = 2412;
    EXPECT_FALSE(card.card.isNews(status)); // nothing was asked for
    (void)card.set(OID_802_11_SSID, ssidRecord("cafe"));
    EXPECT_TRUE(card.card.isNews(status));
    card.linkUp();
    EXPECT_FALSE(card.card.isNews(status));
    status.frequencyMhz = 2437;
    EXPECT_TRUE(card.card.isNews(status));
    status.isCompleted = false; // keys are being renewed
    EXPECT_FALSE(card.card.isNews(status));
    status.isDown = true;
    EXPECT_TRUE(card.card.isNews(status));
    card.card.linkDown();
    EXPECT_FALSE(card.card.isNews(status));
}

TEST(Card, LinkThatItsAccessPointMovedIsReportedOnTheNewChannel)
{
    CardUnderTest card;
    card.joinOpen();
    const auto channelKhz = [&card] {
        const auto configuration = card.query<NDIS_802_11_CONFIGURATION>(OID_802_11_CONFIGURATION);
        return std::uint32_t { valueOf(configuration->DSConfig) };
    };
    EXPECT_EQ(channelKhz(), 2412000U);
    card.linkUp(1, "cafe", 2437);
    EXPECT_EQ(channelKhz(), 2437000U);
    card.linkUp(1, "cafe", 5825); // channel 165 has no number
    EXPECT_EQ(channelKhz(), 5805000U);
    EXPECT_TRUE(card.card.state().link);
    ScanEntry entry = networkEntry("cafe", 1, 5825);
    entry.isAssociated = true;
    card.hear({ entry, networkEntry("other", 2, 5825) });
    (void)card.card.wiphyRead({}, card.nowMs);
    const auto records = card.card.state().networks.encoded();
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(valueOf(recordAt<WLAN_BSSID_EX>(records.front())->Configuration.DSConfig), 5805000U);
    card.card.linkDown();
    EXPECT_TRUE(card.card.state().networks.networks().empty());
}

TEST(Card, NetworkOfAnEndedLinkAgesLikeTheOthers)
{
    CardUnderTest card;
    card.joinOpen();
    ScanEntry entry = networkEntry("cafe", 1);
    entry.isAssociated = true;
    card.hear({ entry });
    EXPECT_TRUE(card.card.state().networks.networks().front().entry.isAssociated);
    card.card.linkDown();
    EXPECT_FALSE(card.card.state().networks.networks().front().entry.isAssociated);
    card.hear({ entry }); // the kernel has not yet forgotten the link
    EXPECT_FALSE(card.card.state().networks.networks().front().entry.isAssociated);
}

TEST(Card, JoinThatWasAskedForDuringARestartIsMadeAtOnce)
{
    CardUnderTest card;
    card.joinOpen();
    card.card.supplicantLost(card.nowMs);
    EXPECT_TRUE(card.set(OID_802_11_SSID, ssidRecord("other")));
    EXPECT_EQ(card.block(), nullptr);
    card.effects = card.card.supplicantReady(card.nowMs);
    ASSERT_NE(card.block(), nullptr);
    EXPECT_EQ(card.block()->ssid, octets("other"));
    EXPECT_EQ(card.word(VX_OID_802_11_EVENT_FLAG), 0U);
    card.pass(Card::restoreDelayMs);
    EXPECT_EQ(card.block(), nullptr);
    // The next restart loses it.
    card.card.supplicantLost(card.nowMs);
    (void)card.card.supplicantReady(card.nowMs);
    EXPECT_EQ(card.word(VX_OID_802_11_EVENT_FLAG), 1U);
}

TEST(Card, BroadcastAddressNeedsAName)
{
    const MacAddress everyone { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF };
    CardUnderTest card;
    EXPECT_FALSE(card.set(OID_802_11_BSSID, everyone));
    card.joinOpen("older");
    (void)card.set(OID_802_11_BSSID, networkEntry("", 7).bssid); // not in the list
    EXPECT_FALSE(card.set(OID_802_11_BSSID, everyone));
    card.linkUp(7, "cafe"); // now its name is known
    EXPECT_TRUE(card.set(OID_802_11_BSSID, everyone));
    EXPECT_EQ(card.block()->ssid, octets("cafe"));
}

TEST(Card, JoinByAddressIsRestoredWithTheNameThatTheListHas)
{
    CardUnderTest card;
    card.hear({ networkEntry("cafe", 1) });
    (void)card.set(OID_802_11_BSSID, networkEntry("", 1).bssid);
    card.linkUp();
    (void)card.card.radioSwitched(true, false, card.nowMs); // clears the list
    card.card.supplicantLost(card.nowMs);
    (void)card.card.supplicantReady(card.nowMs);
    card.pass(Card::restoreDelayMs);
    ASSERT_NE(card.block(), nullptr);
    EXPECT_EQ(card.block()->ssid, octets("cafe"));
    EXPECT_EQ(card.block()->bssid, networkEntry("", 1).bssid);
}
