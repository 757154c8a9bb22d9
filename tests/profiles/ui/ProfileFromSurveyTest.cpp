#include "survey/connection/ProfileProposal.h"
#include "survey/ui/SiteSurveyPageController.h"
#include "tests/profiles/ui/ProfilePageFixture.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/StandardErrorOf.h"

#include <QTabWidget>

namespace {

// The two pages together, as in the application.
class ProfileFromSurveyTest : public ProfilePageFixture {
protected:
    ProfileFromSurveyTest()
    {
        survey.awakeFromNib();
        survey.setProfilePage(&page);
        survey.setProfileEditor(&page.profileEditor());
        survey.show();
    }

    void addProfileOf(const EntryBuilder& entry)
    {
        haveList({ EntryBuilder("first", 9), entry });
        survey.RefreshAPList();
        survey.findChild<TableView*>(u"ApList"_qs)->selectRowNumber(1);
        pressAddProfile();
    }

    void pressAddProfile() { QTest::mouseClick(survey.findChild<QPushButton*>(u"AddProfile"_qs), Qt::LeftButton); }

    void confirm()
    {
        sheets.users.emplace_back([](QDialog& sheet) {
            EXPECT_EQ(sheet.findChild<QTabWidget*>(u"TabView"_qs)->currentIndex(), 0);
            pressButton(sheet, QDialogButtonBox::Ok);
        });
    }

    RecordingAssertionHandler assertions;
    SiteSurveyPageController survey { adapter, runLoop, assertions, alerts, sheets };
};

TEST_F(ProfileFromSurveyTest, WithoutASelectionTheUserIsAskedForOne)
{
    pressAddProfile();
    EXPECT_EQ(alerts.alerts,
        (std::vector<Alert> { { u"No selected item"_qs, u"Please select an item to connect to."_qs, u"OK"_qs } }));
    EXPECT_TRUE(sheets.shown.empty());
}

TEST_F(ProfileFromSurveyTest, MissingListIsANoOpWithoutAnAlert)
{
    haveList({ EntryBuilder("a") });
    survey.RefreshAPList();
    survey.findChild<TableView*>(u"ApList"_qs)->selectRowNumber(0);
    G_pBssidList.reset();
    pressAddProfile();
    EXPECT_TRUE(alerts.alerts.empty());
    EXPECT_TRUE(sheets.shown.empty());
}

TEST_F(ProfileFromSurveyTest, OpenAdHocNetworkBecomesAProfile)
{
    EntryBuilder entry("friends", 2);
    entry.fixedPart.InfrastructureMode = Ndis802_11IBSS;
    confirm();
    addProfileOf(entry);
    ASSERT_EQ(inFile().size(), 1u);
    const Profile profile = inFile().front();
    EXPECT_EQ(profile.text(ProfileKey::profileName), u"PROF1"_qs);
    EXPECT_EQ(profile.text(ProfileKey::ssid), u"friends"_qs);
    EXPECT_EQ(profile.text(ProfileKey::channel), u"1"_qs);
    EXPECT_EQ(profile.text(ProfileKey::networkType), u"0"_qs);
    EXPECT_EQ(profile.text(ProfileKey::authenticationType), u"0"_qs);
    EXPECT_EQ(profile.text(ProfileKey::encryptionType), u"0"_qs);
    EXPECT_EQ(profile.text(ProfileKey::bssid), u"001122334402"_qs);
    EXPECT_EQ(profile.text(ProfileKey::hidden), u"0"_qs);
    EXPECT_EQ(table->numberOfRows(), 1) << "the profile page has taken up the new list";
    EXPECT_TRUE(registry.oids().empty()) << "nothing is sent";
}

TEST_F(ProfileFromSurveyTest, WpaPskNetworkOpensWithItsSecurity)
{
    EntryBuilder entry("wpa", 3);
    entry.fixedPart.Privacy = 1;
    entry.elements = wpaElement(4, 2);
    sheets.users.emplace_back([](QDialog& sheet) {
        EXPECT_EQ(sheet.findChild<ComboBox*>(u"AuthenType"_qs)->objectValueOfSelectedItem(), u"WPA-PSK"_qs);
        EXPECT_EQ(sheet.findChild<ComboBox*>(u"EncryType"_qs)->objectValueOfSelectedItem(), u"AES"_qs);
        sheet.findChild<QLineEdit*>(u"WPAPreSharedKey"_qs)->setText(u"passphrase"_qs);
        pressButton(sheet, QDialogButtonBox::Ok);
    });
    addProfileOf(entry);
    ASSERT_EQ(inFile().size(), 1u);
    EXPECT_EQ(inFile().front().text(ProfileKey::authenticationType), u"2"_qs);
    EXPECT_EQ(inFile().front().text(ProfileKey::encryptionType), u"1"_qs);
}

TEST_F(ProfileFromSurveyTest, EnterpriseNetworkOpensAsAWepNetworkWithoutAnAlert)
{
    EntryBuilder entry("enterprise", 4);
    entry.fixedPart.Privacy = 1;
    entry.elements = wpaElement(2, 1);
    sheets.users.emplace_back([](QDialog& sheet) {
        EXPECT_EQ(sheet.findChild<ComboBox*>(u"AuthenType"_qs)->objectValueOfSelectedItem(), u"Open"_qs);
        EXPECT_EQ(sheet.findChild<ComboBox*>(u"EncryType"_qs)->objectValueOfSelectedItem(), u"WEP"_qs);
        pressButton(sheet, QDialogButtonBox::Cancel);
    });
    addProfileOf(entry);
    EXPECT_EQ(sheets.shown.size(), 1u);
    EXPECT_TRUE(alerts.alerts.empty());
    EXPECT_TRUE(inFile().empty());
}

TEST_F(ProfileFromSurveyTest, AdHocWpaNetworkOpensAsAnOpenOne)
{
    EntryBuilder entry("peers", 5);
    entry.fixedPart.Privacy = 1;
    entry.fixedPart.InfrastructureMode = Ndis802_11IBSS;
    entry.elements = wpaElement(2, 2);
    sheets.users.emplace_back([](QDialog& sheet) {
        EXPECT_EQ(sheet.findChild<ComboBox*>(u"AuthenType"_qs)->objectValueOfSelectedItem(), u"Open"_qs);
        EXPECT_EQ(sheet.findChild<ComboBox*>(u"EncryType"_qs)->objectValueOfSelectedItem(), u"NONE"_qs);
        EXPECT_EQ(sheet.findChild<ComboBox*>(u"NetworkType"_qs)->indexOfSelectedItem(), 0);
        pressButton(sheet, QDialogButtonBox::Ok);
    });
    addProfileOf(entry);
    ASSERT_EQ(inFile().size(), 1u);
    EXPECT_EQ(inFile().front().text(ProfileKey::authenticationType), u"0"_qs);
    EXPECT_EQ(inFile().front().text(ProfileKey::encryptionType), u"0"_qs);
    EXPECT_EQ(inFile().front().text(ProfileKey::networkType), u"0"_qs);
}

// An editor with a scripted answer, and a counting profile page.
class AnsweringEditor final : public ProfileEditorSheet {
public:
    [[nodiscard]] bool AddProfile(const ProfileProposal& proposal) override
    {
        proposed.push_back(proposal.SSID);
        return answer;
    }
    void selectFirstTab() override { ++firstTabs; }
    [[nodiscard]] QDialog& ProfileEditorWindow() override { return sheet; }

    bool answer { false };
    std::vector<NetworkName> proposed;
    int firstTabs { 0 };
    QDialog sheet;
};

class RefreshedPage final : public ProfilePage {
public:
    void RefreshProfileList() override { ++refreshes; }
    void CheckProfileSettingForConnect() override { }
    void DisabledActivateProfile() override { }
    int refreshes { 0 };
};

TEST_F(ProfileFromSurveyTest, RefusingEditorIsNotShown)
{
    AnsweringEditor editor;
    RefreshedPage refreshed;
    survey.setProfileEditor(&editor);
    survey.setProfilePage(&refreshed);
    addProfileOf(EntryBuilder("declined", 5));
    EXPECT_EQ(editor.proposed, std::vector { NetworkName("declined") });
    EXPECT_EQ(editor.firstTabs, 0);
    EXPECT_TRUE(sheets.shown.empty());
    EXPECT_EQ(refreshed.refreshes, 0);
    editor.answer = true;
    pressAddProfile();
    EXPECT_EQ(editor.firstTabs, 1);
    EXPECT_EQ(sheets.shown.size(), 1u);
    EXPECT_EQ(refreshed.refreshes, 1);
    survey.setProfileEditor(nullptr);
    survey.setProfilePage(nullptr);
}

TEST_F(ProfileFromSurveyTest, IsTracedOnlyWithTheDebugFlag)
{
    EXPECT_EQ(tracesOf([this] { pressAddProfile(); }), "#### SiteSurveyPageController - OnAddProfile ####\n");
    EXPECT_EQ(standardErrorOf([this] { pressAddProfile(); }), "");
}

TEST_F(ProfileFromSurveyTest, FrequencyOutsideTheTableIsReported)
{
    haveList({ EntryBuilder("a") });
    survey.RefreshAPList();
    survey.findChild<TableView*>(u"ApList"_qs)->selectRowNumber(0);
    EntryBuilder entry("a");
    entry.fixedPart.Configuration.DSConfig = 999;
    haveList({ entry });
    pressAddProfile();
    EXPECT_EQ(assertions.failures,
        (std::vector<RecordingAssertionHandler::Failure> { { "OnAddProfile", "SiteSurveyPageController",
            "SiteSurveyPageController", 1148, "Invalid parameter not satisfying: FALSE" } }));
    EXPECT_TRUE(sheets.shown.empty());
    assertions.goOn = true;
    confirm();
    pressAddProfile();
    EXPECT_EQ(inFile().size(), 1u);
}

TEST_F(ProfileFromSurveyTest, ProfilesAreReloadedAfterCancel)
{
    sheets.users.emplace_back([this](QDialog& sheet) {
        prefs.setArray(u"Profiles"_qs, { sampleProfile(u"from elsewhere"_qs) });
        pressButton(sheet, QDialogButtonBox::Cancel);
    });
    addProfileOf(EntryBuilder("a"));
    EXPECT_EQ(table->numberOfRows(), 1);
}

} // namespace
