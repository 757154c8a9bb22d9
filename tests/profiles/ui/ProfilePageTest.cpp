#include "platform/ByteText.h"
#include "platform/ui/Images.h"
#include "platform/ui/NetworkNameDelegate.h"
#include "tests/profiles/ui/ProfilePageFixture.h"

#include <QAccessible>
#include <QApplication>
#include <QTabWidget>

namespace {

using namespace std::chrono_literals;
using Names = std::vector<QString>;

using ProfilePageTest = ProfilePageFixture;

ProfileList three()
{
    return { sampleProfile(u"one"_qs), sampleProfile(u"two"_qs), sampleProfile(u"three"_qs) };
}

TEST_F(ProfilePageTest, ShowsTheStoredProfilesInOrder)
{
    haveProfiles({ sampleProfile(u"home"_qs),
        with(sampleProfile(u"ad hoc"_qs),
            { { ProfileKey::networkType, u"0"_qs }, { ProfileKey::authenticationType, u"2"_qs } }) });
    Names shown;
    for (int row = 0; row < table->numberOfRows(); ++row) {
        for (int column = 1; column < table->model()->columnCount(); ++column)
            shown.push_back(table->model()->index(row, column).data().toString());
    }
    EXPECT_EQ(shown,
        (Names { u"home"_qs, u"home"_qs, u"Auto"_qs, u"Open"_qs, u"UnKnown"_qs, u"Infrastructure"_qs, //
            u"ad hoc"_qs, u"home"_qs, u"Auto"_qs, u"WPA-NONE"_qs, u"UnKnown"_qs, u"Ad Hoc"_qs }));
    EXPECT_EQ(table->selectedRow(), -1);
}

TEST_F(ProfilePageTest, MalformedNameIsDisplayedReadablyAndKept)
{
    const QString name = textFromBytes(QByteArrayView("caf\xE9"));
    haveProfiles({ with(sampleProfile(), { { ProfileKey::ssid, name } }), sampleProfile() });
    const QModelIndex cell = table->model()->index(0, 2);
    EXPECT_EQ(cell.data().toString(), name);
    EXPECT_NE(qobject_cast<NetworkNameDelegate*>(table->itemDelegateForIndex(cell)), nullptr);
    EXPECT_TRUE(cell.data(Qt::ToolTipRole).toString().contains(u"63 61 66 e9"_qs));
    EXPECT_EQ(table->model()->index(1, 2).data(Qt::ToolTipRole).toString(), QString());
    EXPECT_EQ(table->model()->index(0, 1).data(Qt::ToolTipRole).toString(), QString());
}

TEST_F(ProfilePageTest, ActivatesTheRowSelectedWithTheKeyboard)
{
    haveProfiles(three());
    table->setFocus();
    QTest::keyClick(table, Qt::Key_Home);
    press(u"Activate"_qs);
    EXPECT_EQ(markedRows(), std::vector { 0 });
    QTest::keyClick(table, Qt::Key_End);
    press(u"Activate"_qs);
    EXPECT_EQ(markedRows(), std::vector { 2 });
    EXPECT_EQ(connections.records.size(), 2u);
    page.OnTimer();
    EXPECT_EQ(table->selectedRow(), 2);
}

TEST_F(ProfilePageTest, RefreshClearsTheSelection)
{
    haveProfiles(three());
    table->selectRowNumber(1);
    page.RefreshProfileList();
    EXPECT_EQ(table->selectedRow(), -1);
    page.ClearProfileList();
    EXPECT_EQ(table->numberOfRows(), 0);
}

TEST_F(ProfilePageTest, ReadsTheFileOnlyIfTheDefaultsHaveNoList)
{
    ASSERT_TRUE(writeDictionariesFile(recordsFile, { sampleProfile(u"by hand"_qs) }));
    page.RefreshProfileList();
    EXPECT_EQ(table->model()->index(0, 1).data().toString(), u"by hand"_qs);
    prefs.setArray(u"Profiles"_qs, { sampleProfile(u"kept"_qs) });
    page.RefreshProfileList();
    EXPECT_EQ(table->model()->index(0, 1).data().toString(), u"kept"_qs);
}

TEST_F(ProfilePageTest, EmptyListSaysWhatToDo)
{
    const QString before = table->emptyText();
    EXPECT_FALSE(before.isEmpty());
    page.RefreshProfileList();
    EXPECT_EQ(table->numberOfRows(), 0);
    EXPECT_FALSE(table->emptyText().isEmpty());
    EXPECT_NE(table->emptyText(), before);
}

TEST_F(ProfilePageTest, AddWithoutACardIsRefused)
{
    G_bDeviceExist = 0;
    press(u"Add"_qs);
    EXPECT_EQ(alerts.alerts,
        (std::vector<Alert> {
            { u"Device not exist."_qs, u"Please insert your Network Card and then set profile."_qs, u"OK"_qs } }));
    EXPECT_TRUE(sheets.shown.empty());
}

TEST_F(ProfilePageTest, EditAndDeleteWithoutASelectionAreRefused)
{
    haveProfiles(three());
    const ProfileList before = inFile();
    press(u"Edit"_qs);
    press(u"Delete"_qs);
    EXPECT_EQ(alerts.alerts,
        (std::vector<Alert> { { u"No selected item"_qs, u"Please select an item to edit."_qs, u"OK"_qs },
            { u"No selected item"_qs, u"Please select an item to delete."_qs, u"OK"_qs } }));
    EXPECT_TRUE(sheets.shown.empty());
    EXPECT_EQ(inFile(), before);
}

TEST_F(ProfilePageTest, EmptyListHasNothingToEditOrDelete)
{
    page.RefreshProfileList();
    press(u"Edit"_qs);
    EXPECT_EQ(alerts.alerts,
        (std::vector<Alert> { { u"No selected item"_qs, u"Please select an item to edit."_qs, u"OK"_qs } }));
    alerts.alerts.clear();
    press(u"Delete"_qs);
    EXPECT_EQ(alerts.alerts,
        (std::vector<Alert> { { u"No selected item"_qs, u"Please select an item to delete."_qs, u"OK"_qs } }));
    EXPECT_TRUE(sheets.shown.empty());
    EXPECT_FALSE(prefs.arrayForKey(u"Profiles"_qs)) << "nothing is saved";
}

TEST_F(ProfilePageTest, AddRunsTheEditorAndShowsTheNewProfile)
{
    sheets.users.emplace_back([](QDialog& sheet) {
        EXPECT_EQ(sheet.findChild<QLineEdit*>(u"ProfileName"_qs)->text(), u"PROF1"_qs);
        sheet.findChild<ComboBox*>(u"SSID"_qs)->setEditText(u"typed"_qs);
        pressButton(sheet, QDialogButtonBox::Ok);
    });
    press(u"Add"_qs);
    EXPECT_EQ(sheets.shown, Names { u"ProfileEditorWindow"_qs });
    EXPECT_EQ(names(inFile()), Names { u"PROF1"_qs });
    EXPECT_EQ(inDefaults(), inFile());
    EXPECT_EQ(table->model()->index(0, 2).data().toString(), u"typed"_qs);
}

TEST_F(ProfilePageTest, EditNeedsNoCardAndChangesTheSelectedProfile)
{
    G_bDeviceExist = 0;
    haveProfiles(three());
    table->selectRowNumber(1);
    sheets.users.emplace_back([](QDialog& sheet) {
        auto* const name = sheet.findChild<QLineEdit*>(u"ProfileName"_qs);
        EXPECT_EQ(name->text(), u"two"_qs);
        name->setText(u"second"_qs);
        pressButton(sheet, QDialogButtonBox::Ok);
    });
    press(u"Edit"_qs);
    EXPECT_EQ(names(inFile()), (Names { u"one"_qs, u"second"_qs, u"three"_qs }));
    EXPECT_EQ(table->model()->index(1, 1).data().toString(), u"second"_qs);
    EXPECT_TRUE(alerts.alerts.empty());
}

TEST_F(ProfilePageTest, ListIsReloadedAfterCancel)
{
    haveProfiles(three());
    table->selectRowNumber(0);
    sheets.users.emplace_back([this](QDialog& sheet) {
        prefs.setArray(u"Profiles"_qs, { sampleProfile(u"from elsewhere"_qs) });
        pressButton(sheet, QDialogButtonBox::Cancel);
    });
    press(u"Edit"_qs);
    EXPECT_EQ(table->numberOfRows(), 1);
    EXPECT_EQ(table->model()->index(0, 1).data().toString(), u"from elsewhere"_qs);
}

// Assistive technology can press the buttons of the window behind a sheet.
TEST_F(ProfilePageTest, ButtonsDoNothingWhileTheEditorIsOpen)
{
    haveProfiles(three());
    table->selectRowNumber(1);
    sheets.users.emplace_back([this](QDialog& sheet) {
        for (const auto& button : { u"Add"_qs, u"Edit"_qs, u"Delete"_qs, u"Activate"_qs })
            EXPECT_FALSE(page.findChild<QPushButton*>(button)->isEnabled()) << qPrintable(button);
        page.OnAdd(); // as from the action of a row that assistive technology sends
        page.OnEdit();
        page.OnDelete();
        page.OnActivate();
        EXPECT_EQ(sheet.findChild<QLineEdit*>(u"ProfileName"_qs)->text(), u"two"_qs);
        EXPECT_TRUE(prefs.arrayForKey(u"Profile Setting"_qs).value_or(PropertyDictionaries()).empty());
        pressButton(sheet, QDialogButtonBox::Ok);
    });
    press(u"Edit"_qs);
    EXPECT_TRUE(page.findChild<QPushButton*>(u"Edit"_qs)->isEnabled());
    EXPECT_EQ(names(inFile()), (Names { u"one"_qs, u"two"_qs, u"three"_qs }));
    EXPECT_EQ(sheets.shown.size(), 1U);
    EXPECT_TRUE(alerts.alerts.empty());
}

TEST_F(ProfilePageTest, DeleteRemovesTheProfileFromFileAndDefaultsWithoutConfirmation)
{
    haveProfiles(three());
    table->selectRowNumber(1);
    press(u"Delete"_qs);
    EXPECT_EQ(names(inFile()), (Names { u"one"_qs, u"three"_qs }));
    EXPECT_EQ(inDefaults(), inFile());
    EXPECT_EQ(table->numberOfRows(), 2);
    EXPECT_EQ(table->selectedRow(), -1);
    EXPECT_TRUE(alerts.alerts.empty());
}

// Deletion is not confirmed and cannot be undone, so a single key must not cause it.
TEST_F(ProfilePageTest, DeleteKeyDeletesNothing)
{
    haveProfiles(three());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&page));
    page.activateWindow();
    table->setFocus();
    table->selectRowNumber(2);
    QTest::keyClick(table, Qt::Key_Delete);
    EXPECT_EQ(names(inFile()), (Names { u"one"_qs, u"two"_qs, u"three"_qs }));
    EXPECT_EQ(table->numberOfRows(), 3);
}

TEST_F(ProfilePageTest, SortedListEditsAndDeletesTheSelectedProfile)
{
    haveProfiles(three());
    table->sortByColumn(1, Qt::AscendingOrder); // one, three, two
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, middleOf(1));
    press(u"Delete"_qs);
    EXPECT_EQ(names(inFile()), (Names { u"one"_qs, u"two"_qs }));
}

TEST_F(ProfilePageTest, DeletingTheActiveProfileEndsItsActivation)
{
    haveProfiles(three());
    table->selectRowNumber(1);
    press(u"Activate"_qs);
    ASSERT_TRUE(setting());
    table->selectRowNumber(1);
    press(u"Delete"_qs);
    EXPECT_FALSE(setting());
    page.CheckProfileSettingForConnect();
    EXPECT_EQ(connections.records.size(), 1u) << "nothing is left to be applied again";
}

TEST_F(ProfilePageTest, DeletingAProfileAboveTheActiveOneDoesNotChangeItsRowNumber)
{
    haveProfiles(three());
    table->selectRowNumber(1);
    press(u"Activate"_qs);
    table->selectRowNumber(0);
    press(u"Delete"_qs);
    ASSERT_TRUE(setting());
    EXPECT_EQ(setting()->front().text(u"Selected"), u"1"_qs);
    EXPECT_EQ(setting()->front().text(ProfileKey::profileName), u"two"_qs);
    EXPECT_EQ(markedRows(), std::vector<int> { 1 }) << "the row that now has the old number";
    table->selectRowNumber(1);
    press(u"Delete"_qs);
    EXPECT_FALSE(setting()) << "the number decides, not the profile";
}

TEST_F(ProfilePageTest, MarksTheLastActivatedRowAndChecksItWhileConnected)
{
    haveProfiles(three());
    EXPECT_EQ(markedRows(), std::vector<int> {});
    table->selectRowNumber(2);
    press(u"Activate"_qs);
    EXPECT_EQ(markedRows(), std::vector<int> { 2 });
    const auto image = [this] { return page.objectValueForTableColumn(u"pi", 2).value<QIcon>().cacheKey(); };
    EXPECT_EQ(image(), imageNamed(u"UNCHECKMRK").cacheKey());
    EXPECT_FALSE(imageNamed(u"UNCHECKMRK").isNull());
    G_bCheckedProfileConnect = 1;
    const auto shown
        = [this] { return table->model()->index(2, 0).data(Qt::DecorationRole).value<QIcon>().cacheKey(); };
    const auto said = [this](int row) {
        return QAccessible::queryAccessibleInterface(table)->tableInterface()->cellAt(row, 0)->text(QAccessible::Name);
    };
    EXPECT_EQ(shown(), imageNamed(u"UNCHECKMRK").cacheKey());
    EXPECT_EQ(said(2), u"Activated, not connected"_qs);
    EXPECT_EQ(said(1), QString());
    runLoop.advance(2000ms);
    EXPECT_EQ(shown(), imageNamed(u"CHECKMRK").cacheKey());
    EXPECT_EQ(said(2), u"Activated, connected"_qs);
    EXPECT_EQ(said(1), QString());
    EXPECT_FALSE(imageNamed(u"CHECKMRK").isNull());
    EXPECT_EQ(runLoop.activeIntervals(), std::vector<std::chrono::milliseconds> { 2000ms });
}

TEST_F(ProfilePageTest, KeySelectsTheFirstRowAfterTheListGetsFocus)
{
    page.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&page));
    for (const ProfileList& profiles : { three(), ProfileList { three().front() } }) {
        for (const Qt::Key key : { Qt::Key_Down, Qt::Key_Up, Qt::Key_Space }) {
            haveProfiles(profiles);
            page.findChild<QPushButton*>(u"Add"_qs)->setFocus();
            QTest::keyClick(&page, Qt::Key_R, Qt::AltModifier);
            ASSERT_TRUE(table->hasFocus());
            EXPECT_EQ(table->selectedRow(), -1);
            QTest::keyClick(table, key);
            EXPECT_EQ(table->selectedRow(), 0) << key << " of " << profiles.size();
        }
    }
}

TEST_F(ProfilePageTest, EditedCellChangesTheRowButNotTheProfile)
{
    haveProfiles(three());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&page));
    prefs.arrays.erase(u"Profiles"_qs);
    const int synchronizations = prefs.synchronizations;
    table->setFocus();
    table->setCurrentIndex(table->model()->index(1, 1));
    QTest::keyClick(table, Qt::Key_F2);
    auto* const cell = table->viewport()->findChild<QLineEdit*>();
    ASSERT_NE(cell, nullptr);
    QTest::keyClicks(cell, u"renamed"_qs);
    QTest::keyClick(cell, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([this] { return table->model()->index(1, 1).data().toString() == u"renamed"_qs; }));
    EXPECT_TRUE(connections.calls.empty()) << "Return ends the editing and does not activate";
    EXPECT_EQ(names(inDefaults()), (Names { u"one"_qs, u"two"_qs, u"three"_qs }));
    EXPECT_EQ(inFile(), inDefaults());
    EXPECT_EQ(prefs.synchronizations, synchronizations + 1);
    page.RefreshProfileList();
    EXPECT_EQ(table->model()->index(1, 1).data().toString(), u"two"_qs);
}

// The device watch reloads the list when the card returns, even while a cell is edited.
TEST_F(ProfilePageTest, ReloadDiscardsACellEdit)
{
    haveProfiles(three());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&page));
    page.activateWindow();
    table->setFocus();
    table->selectRowNumber(1);
    table->setCurrentIndex(table->model()->index(1, 1));
    QTest::keyClick(table, Qt::Key_F2);
    auto* const cell = table->viewport()->findChild<QLineEdit*>();
    ASSERT_NE(cell, nullptr);
    QTest::keyClicks(cell, u"renamed"_qs);
    const int synchronizations = prefs.synchronizations;
    page.RefreshProfileList();
    EXPECT_EQ(prefs.synchronizations, synchronizations);
    ASSERT_EQ(table->numberOfRows(), 3);
    EXPECT_EQ(table->model()->index(1, 1).data().toString(), u"two"_qs);
    EXPECT_EQ(names(inDefaults()), (Names { u"one"_qs, u"two"_qs, u"three"_qs }));
}

TEST_F(ProfilePageTest, DeleteKeyInACellDeletesACharacter)
{
    haveProfiles(three());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&page));
    page.activateWindow();
    table->setFocus();
    table->setCurrentIndex(table->model()->index(1, 1));
    QTest::keyClick(table, Qt::Key_F2);
    auto* const cell = table->viewport()->findChild<QLineEdit*>();
    ASSERT_NE(cell, nullptr);
    QTest::keyClick(cell, Qt::Key_Delete);
    EXPECT_EQ(inFile().size(), 3u);
}

TEST_F(ProfilePageTest, ListHasTheRoomThatIsLeft)
{
    for (const int height : { 350, 700 }) {
        page.resize(600, height);
        QCoreApplication::processEvents();
        EXPECT_GT(table->height(), height - page.fontMetrics().height() * 10);
    }
}

TEST_F(ProfilePageTest, CanBeMadeSmall)
{
    EXPECT_LT(page.minimumSizeHint().width(), page.fontMetrics().averageCharWidth() * 80);
    EXPECT_LT(page.minimumSizeHint().height(), page.fontMetrics().height() * 20);
    EXPECT_LT(page.heightForWidth(600), page.fontMetrics().height() * 20) << "the list shrinks before the page scrolls";
    EXPECT_GT(table->minimumHeight(), page.fontMetrics().height() * 3);
}

} // namespace
