#include "profiles/ProfileConnection.h"
#include "survey/connection/ConnectionTasks.h"
#include "tests/profiles/ui/ProfilePageFixture.h"
#include "tests/support/RecordedRequests.h"

namespace {

class ActivationTest : public ProfilePageFixture {
protected:
    void activate(const Profile& profile)
    {
        haveProfiles({ sampleProfile(u"another"_qs), profile });
        table->selectRowNumber(1);
        press(u"Activate"_qs);
    }

    // The requests for the last queued record.
    std::vector<DriverRequest> requestsOfLastRecord()
    {
        registry.forgetCalls();
        queueConnection(std::move(connections.records.back()));
        ConnectionState state;
        DoTask(state, adapter);
        return requests();
    }
};

NDIS_802_11_SSID ssidOf(std::string_view name)
{
    NDIS_802_11_SSID ssid {};
    ssid.SsidLength = static_cast<std::uint32_t>(name.size());
    std::copy(name.begin(), name.end(), ssid.Ssid.begin());
    return ssid;
}

TEST_F(ActivationTest, ActivateWithoutASelectionIsANoOpWithoutAnAlert)
{
    haveProfiles({ sampleProfile() });
    press(u"Activate"_qs);
    EXPECT_TRUE(connections.calls.empty());
    EXPECT_TRUE(alerts.alerts.empty());
    EXPECT_FALSE(setting());
    EXPECT_EQ(G_configFromProfile, 0);
}

TEST_F(ActivationTest, QueuesAndRecordsTheProfileThenResetsTheSurvey)
{
    G_bRescan = 1;
    activate(sampleProfile(u"chosen"_qs));
    EXPECT_EQ(connections.calls, (std::vector { u"SetTaskQueue"_qs, u"resetFlag"_qs }));
    EXPECT_EQ(connections.rescanWhenQueued, 0);
    EXPECT_EQ(connections.fromProfileWhenQueued, 0);
    EXPECT_EQ(connections.fromProfileWhenReset, 0);
    EXPECT_EQ(G_configFromProfile, 1);
    ASSERT_TRUE(setting());
    ASSERT_EQ(setting()->size(), 1u);
    const Profile entry = setting()->front();
    EXPECT_EQ(entry.text(u"Active Profile Flag"), u"YES"_qs);
    EXPECT_EQ(entry.text(u"Selected"), u"1"_qs);
    const Profile chosen = sampleProfile(u"chosen"_qs);
    for (const QString& key : ProfileKey::inOrder())
        EXPECT_EQ(entry.text(key), chosen.text(key)) << key.toStdString();
}

TEST_F(ActivationTest, DoubleClickAndReturnActivateTheProfile)
{
    haveProfiles({ sampleProfile(u"one"_qs), sampleProfile(u"two"_qs) });
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&page));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, middleOf(1));
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, middleOf(1));
    ASSERT_EQ(connections.records.size(), 1u);
    EXPECT_EQ(setting()->front().text(u"Selected"), u"1"_qs);
    EXPECT_EQ(table->viewport()->findChild<QLineEdit*>(), nullptr) << "a double click does not edit the cell";
    table->setFocus();
    table->selectRowNumber(0);
    QTest::keyClick(table, Qt::Key_Return);
    ASSERT_EQ(connections.records.size(), 2u);
    EXPECT_EQ(setting()->front().text(u"Selected"), u"0"_qs);
}

TEST_F(ActivationTest, ActivatingAnotherProfileReplacesTheEntry)
{
    activate(sampleProfile(u"first"_qs));
    table->selectRowNumber(0);
    press(u"Activate"_qs);
    ASSERT_EQ(setting()->size(), 1u);
    EXPECT_EQ(setting()->front().text(ProfileKey::profileName), u"another"_qs);
    EXPECT_EQ(markedRows(), std::vector<int> { 0 });
}

TEST_F(ActivationTest, OpenProfileSendsTheExactRequests)
{
    activate(with(sampleProfile(), { { ProfileKey::powerSaveMode, u"0"_qs } }));
    const auto sent = requestsOfLastRecord();
    ASSERT_EQ(sent.size(), 10u);
    EXPECT_EQ(sent[0].oid, asSet(OID_802_11_DISASSOCIATE));
    const std::vector<DriverRequest> rest(sent.begin() + 1, sent.end());
    EXPECT_EQ(rest,
        (std::vector<DriverRequest> {
            { asSet(OID_802_11_INFRASTRUCTURE_MODE), word(1) },
            { asSet(VX_OID_802_11_PREAMBLE), word(2) },
            { asSet(OID_802_11_RTS_THRESHOLD), word(2347) },
            { asSet(OID_802_11_FRAGMENTATION_THRESHOLD), word(2346) },
            { asSet(OID_802_11_AUTHENTICATION_MODE), word(0) }, // authentication mode: open
            { asSet(OID_802_11_ENCRYPTION_STATUS), word(1) }, // encryption status: disabled
            { asSet(VX_OID_802_11_TX_POWER), word(25) },
            { asSet(OID_802_11_POWER_MODE), word(0) },
            { asSet(OID_802_11_SSID), recordBytes(ssidOf("home")) },
        }));
}

TEST_F(ActivationTest, EachKindOfSecuritySendsItsKeys)
{
    const std::vector<std::uint32_t> head { asSet(OID_802_11_DISASSOCIATE), asSet(OID_802_11_INFRASTRUCTURE_MODE),
        asSet(VX_OID_802_11_PREAMBLE), asSet(OID_802_11_RTS_THRESHOLD), asSet(OID_802_11_FRAGMENTATION_THRESHOLD),
        asSet(OID_802_11_AUTHENTICATION_MODE), asSet(OID_802_11_ENCRYPTION_STATUS), asSet(VX_OID_802_11_TX_POWER) };
    const auto expectOids = [&](const Profile& profile, const std::vector<std::uint32_t>& tail) {
        activate(profile);
        (void)requestsOfLastRecord();
        std::vector<std::uint32_t> expected = head;
        expected.insert(expected.end(), tail.begin(), tail.end());
        EXPECT_EQ(registry.oids(), expected);
    };
    const Profile wpa = with(sampleProfile(), { { ProfileKey::authenticationType, u"2"_qs } });
    // Keys 1, 2 and 4 are added, key 3 is removed.
    expectOids(with(sampleProfile(), { { ProfileKey::encryptionType, u"1"_qs } }),
        { asSet(OID_802_11_ADD_KEY), asSet(OID_802_11_ADD_KEY), asSet(OID_802_11_REMOVE_KEY), asSet(OID_802_11_ADD_KEY),
            asSet(OID_802_11_POWER_MODE), asSet(OID_802_11_SSID) });
    expectOids(wpa, { asSet(VX_OID_802_11_ADD_WPA), asSet(OID_802_11_POWER_MODE), asSet(OID_802_11_SSID) });
    // An ad hoc network sets the channel instead of the power mode.
    expectOids(with(wpa, { { ProfileKey::networkType, u"0"_qs } }),
        { asSet(OID_802_11_ADD_KEY), OID_802_11_CONFIGURATION, asSet(OID_802_11_CONFIGURATION),
            asSet(OID_802_11_SSID) });
}

TEST_F(ActivationTest, WepKeyOfOddLengthDropsItsLastDigit)
{
    activate(with(sampleProfile(), { { ProfileKey::encryptionType, u"1"_qs }, { u"WEPKey2"_qs, u"01020304056"_qs } }));
    const KeyRecord& key = connections.records.back()->pWepKey[1];
    ASSERT_EQ(key.size(), 5u + 39u);
    EXPECT_EQ(key[28 + 4], std::byte { 5 });
}

TEST_F(ActivationTest, SharedProfileWithoutEncryptionStillHasItsWepKeys)
{
    activate(with(sampleProfile(), { { ProfileKey::authenticationType, u"1"_qs } }));
    const PROFILE_DATA& record = *connections.records.back();
    EXPECT_EQ(record.AuthenMode, 1);
    EXPECT_EQ(record.EncryStatus, 1);
    EXPECT_FALSE(record.pWepKey[0].empty());
    EXPECT_FALSE(record.pWepKey[1].empty());
    EXPECT_TRUE(record.pWepKey[2].empty());
    EXPECT_FALSE(record.pWepKey[3].empty());
}

TEST_F(ActivationTest, WpaRequestDependsOnTheNetworkType)
{
    const Profile wpa = with(
        sampleProfile(), { { ProfileKey::authenticationType, u"2"_qs }, { ProfileKey::encryptionType, u"1"_qs } });
    activate(wpa);
    EXPECT_EQ(connections.records.back()->AuthenMode, 4);
    EXPECT_EQ(connections.records.back()->EncryStatus, 6);
    activate(with(wpa, { { ProfileKey::networkType, u"0"_qs } }));
    EXPECT_EQ(connections.records.back()->AuthenMode, 5);
}

TEST_F(ActivationTest, KeyOf64DigitsIsConvertedAsDigits)
{
    activate(with(
        sampleProfile(), { { ProfileKey::authenticationType, u"2"_qs }, { ProfileKey::wpaPsk, QString(64, u'a') } }));
    const KeyRecord& key = connections.records.back()->pWpaKey;
    ASSERT_EQ(key.size(), 71u);
    EXPECT_TRUE(std::all_of(key.begin() + 28, key.begin() + 60, [](std::byte b) { return b == std::byte { 0xAA }; }));
}

TEST_F(ActivationTest, AdHocChannelIsATablePosition)
{
    const Profile adHoc = with(sampleProfile(), { { ProfileKey::networkType, u"0"_qs } });
    activate(with(adHoc, { { ProfileKey::channel, u"36"_qs } }));
    EXPECT_EQ(connections.records.back()->ChannelFreq, 5680000u);
    activate(with(adHoc, { { ProfileKey::channel, u"6"_qs } }));
    EXPECT_EQ(connections.records.back()->ChannelFreq, 2437000u);
    activate(with(adHoc, { { ProfileKey::channel, u"165"_qs } }));
    EXPECT_EQ(connections.records.back()->ChannelFreq, 0u);
}

TEST_F(ActivationTest, AutomaticConnectionQueuesTheStoredCopyWithoutRewritingIt)
{
    activate(sampleProfile(u"active"_qs));
    const auto stored = setting();
    const int synchronizations = prefs.synchronizations;
    connections.calls.clear();
    G_configFromProfile = 0;
    G_bRescan = 1;
    page.CheckProfileSettingForConnect();
    EXPECT_EQ(connections.calls, std::vector { u"SetTaskQueue"_qs });
    EXPECT_EQ(connections.rescanWhenQueued, 0);
    EXPECT_EQ(G_configFromProfile, 1);
    EXPECT_EQ(setting(), stored);
    EXPECT_EQ(prefs.synchronizations, synchronizations);
}

TEST_F(ActivationTest, AutomaticConnectionSendsTheRequestsOfTheActivation)
{
    activate(with(sampleProfile(), { { ProfileKey::encryptionType, u"1"_qs } }));
    const auto byHand = requestsOfLastRecord();
    page.CheckProfileSettingForConnect();
    EXPECT_EQ(requestsOfLastRecord(), byHand);
    EXPECT_FALSE(byHand.empty());
}

TEST_F(ActivationTest, AutomaticConnectionMarksTheStoredRow)
{
    prefs.setArray(u"Profile Setting"_qs,
        { with(sampleProfile(), { { u"Active Profile Flag"_qs, u"YES"_qs }, { u"Selected"_qs, u"1"_qs } }) });
    haveProfiles({ sampleProfile(u"one"_qs), sampleProfile(u"two"_qs) });
    EXPECT_EQ(markedRows(), std::vector<int> {});
    page.CheckProfileSettingForConnect();
    EXPECT_EQ(markedRows(), std::vector<int> { 1 });
}

TEST_F(ActivationTest, LaterEditsDoNotChangeTheActiveProfile)
{
    activate(sampleProfile(u"active"_qs));
    haveProfiles(
        { sampleProfile(u"another"_qs), with(sampleProfile(u"active"_qs), { { ProfileKey::ssid, u"new"_qs } }) });
    page.CheckProfileSettingForConnect();
    EXPECT_EQ(recordBytes(connections.records.back()->Ssid), recordBytes(ssidOf("home")));
}

TEST_F(ActivationTest, ManualConnectionEndsTheAutomaticConnection)
{
    activate(sampleProfile(u"active"_qs));
    page.DisabledActivateProfile();
    const Profile entry = setting()->front();
    EXPECT_EQ(entry.text(u"Active Profile Flag"), u"NO"_qs);
    EXPECT_EQ(entry.text(u"Selected"), u"1"_qs);
    EXPECT_FALSE(entry.contains(ProfileKey::hidden));
    EXPECT_EQ(entry.text(ProfileKey::profileName), u"active"_qs);
    page.RefreshProfileList();
    page.CheckProfileSettingForConnect();
    EXPECT_EQ(connections.records.size(), 1u);
}

TEST_F(ActivationTest, ProfileDisabledBeforeItsFirstConnectionHasNoRow)
{
    prefs.setArray(u"Profile Setting"_qs, { activeEntry(sampleProfile(u"active"_qs), 1) });
    page.RefreshProfileList();
    page.DisabledActivateProfile();
    ASSERT_TRUE(setting());
    ASSERT_EQ(setting()->size(), 1u);
    EXPECT_EQ(setting()->front().text(u"Active Profile Flag"), u"NO"_qs);
    EXPECT_EQ(setting()->front().text(u"Selected"), u"-1"_qs);
    EXPECT_EQ(setting()->front().text(ProfileKey::profileName), u"active"_qs);
}

TEST_F(ActivationTest, DisablingWithoutAnActiveProfileIsANoOp)
{
    page.RefreshProfileList();
    page.DisabledActivateProfile();
    page.CheckProfileSettingForConnect();
    EXPECT_FALSE(setting());
    EXPECT_TRUE(connections.calls.empty());
}

} // namespace
