#include "survey/ui/SiteSurveyPageController.h"
#include "tests/profiles/ui/ProfilePageFixture.h"
#include "tests/support/NameIn.h"
#include "tests/support/RecordingAssertionHandler.h"

// Profiles made of scanned networks: names of the maximum length, and a list that differs
// from the displayed rows.

namespace {

constexpr char longName[] = "thirty-two letters of a network!";

class ListedNetworkTest : public ProfilePageFixture {
protected:
    ListedNetworkTest()
    {
        survey.awakeFromNib();
        survey.setProfilePage(&page);
        survey.setProfileEditor(&page.profileEditor());
        survey.show();
    }

    void showList(const std::vector<EntryBuilder>& entries)
    {
        haveList(entries);
        survey.RefreshAPList();
    }

    void addProfileOfRow(int row)
    {
        survey.findChild<TableView*>(u"ApList"_qs)->selectRowNumber(row);
        pressAddProfile();
    }

    void pressAddProfile() { QTest::mouseClick(survey.findChild<QPushButton*>(u"AddProfile"_qs), Qt::LeftButton); }

    RecordingAssertionHandler assertions;
    SiteSurveyPageController survey { adapter, runLoop, assertions, alerts, sheets };
};

EntryBuilder presharedKeyNetwork(std::string_view ssid, std::uint8_t lastAddressByte)
{
    EntryBuilder entry(ssid, lastAddressByte);
    entry.fixedPart.Privacy = 1; // the byte that follows the name
    entry.elements = wpaElement(4, 2);
    return entry;
}

// The bytes after a name of 32 bytes must be neither saved nor hashed.
TEST_F(ListedNetworkTest, NameOf32BytesIsSavedAndHashedWithoutTheFollowingBytes)
{
    showList({ EntryBuilder("first", 9), presharedKeyNetwork(longName, 3), EntryBuilder("last", 8) });
    sheets.users.emplace_back([](QDialog& sheet) {
        EXPECT_EQ(sheet.findChild<ComboBox*>(u"SSID"_qs)->indexOfSelectedItem(), 1);
        sheet.findChild<QLineEdit*>(u"WPAPreSharedKey"_qs)->setText(u"anchor and chain"_qs);
        pressButton(sheet, QDialogButtonBox::Ok);
    });
    addProfileOfRow(1);
    ASSERT_EQ(inFile().size(), 1u);
    EXPECT_EQ(inDefaults(), inFile());
    const Profile profile = inFile().front();
    EXPECT_EQ(profile.text(ProfileKey::ssid), QString::fromLatin1(longName));
    EXPECT_EQ(profile.text(ProfileKey::ssid).toUtf8().size(), 32);
    EXPECT_EQ(profile.text(ProfileKey::bssid), u"001122334403"_qs);
    EXPECT_EQ(profile.text(ProfileKey::hidden), u"0"_qs);
    EXPECT_EQ(profile.text(ProfileKey::authenticationType), u"2"_qs);

    table->selectRowNumber(0);
    press(u"Activate"_qs);
    ASSERT_EQ(connections.records.size(), 1u);
    const PROFILE_DATA& record = *connections.records.front();
    EXPECT_EQ(nameIn(record.Ssid), QByteArray(longName));
    ASSERT_EQ(record.pWpaKey.size(), 71u);
    // Expected value from another PBKDF2 implementation.
    EXPECT_EQ(QByteArray(reinterpret_cast<const char*>(record.pWpaKey.data()) + 28, 32).toHex(),
        "eb4507d8f927bbb4f1c7abfafdae2e10987a440b3546af745a08397c00d9a6f4");
}

TEST_F(ListedNetworkTest, StaleRowMakesAProfileOfTheNetworkThatItShows)
{
    showList({ EntryBuilder("first", 1), EntryBuilder("second", 2) });
    haveList({ EntryBuilder("second", 2), EntryBuilder("other", 3) }); // scanned, and not yet shown
    sheets.users.emplace_back(
        [](QDialog& sheet) { EXPECT_EQ(sheet.findChild<QComboBox*>(u"SSID"_qs)->currentText(), u"second"); });
    addProfileOfRow(1);
    EXPECT_EQ(sheets.shown.size(), 1u);
    haveList({ EntryBuilder("first", 1) });
    pressAddProfile();
    EXPECT_EQ(sheets.shown.size(), 1u) << "the network has left the list";
    EXPECT_TRUE(alerts.alerts.empty());
    EXPECT_TRUE(assertions.failures.empty());
    EXPECT_TRUE(inFile().empty());

    showList({ EntryBuilder("second", 2), EntryBuilder("other", 3) });
    sheets.users.emplace_back([](QDialog& sheet) { pressButton(sheet, QDialogButtonBox::Ok); });
    addProfileOfRow(1);
    ASSERT_EQ(inFile().size(), 1u) << "once it is shown it can be meant";
    EXPECT_EQ(inFile().front().text(ProfileKey::ssid), u"other"_qs);
}

// The same network after another scan: the profile uses the new scan.
TEST_F(ListedNetworkTest, RowOfARescannedNetworkMakesAProfileOfTheNewScan)
{
    showList({ EntryBuilder("first", 1), EntryBuilder("second", 2) });
    haveList({ EntryBuilder("other", 3), presharedKeyNetwork("renamed", 2) });
    sheets.users.emplace_back([](QDialog& sheet) {
        EXPECT_EQ(sheet.findChild<ComboBox*>(u"AuthenType"_qs)->objectValueOfSelectedItem(), u"WPA-PSK"_qs);
        sheet.findChild<QLineEdit*>(u"WPAPreSharedKey"_qs)->setText(u"anchor and chain"_qs);
        pressButton(sheet, QDialogButtonBox::Ok);
    });
    addProfileOfRow(1);
    ASSERT_EQ(inFile().size(), 1u);
    EXPECT_EQ(inFile().front().text(ProfileKey::ssid), u"renamed"_qs);
    EXPECT_EQ(inFile().front().text(ProfileKey::bssid), u"001122334402"_qs);
}

} // namespace
