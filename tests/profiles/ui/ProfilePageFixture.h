#pragma once

#include "platform/store/PropertyListFile.h"
#include "platform/ui/ComboBox.h"
#include "platform/ui/TableView.h"
#include "profiles/ProfileStore.h"
#include "profiles/ui/ProfilePageController.h"
#include "survey/connection/ConnectionQueue.h"
#include "survey/connection/JoinProgress.h"
#include "survey/connection/ProfileData.h"
#include "tests/profiles/SampleProfile.h"
#include "tests/support/ManualRunLoop.h"
#include "tests/support/MemoryUserDefaults.h"
#include "tests/support/ScriptedModalSheets.h"
#include "tests/survey/SurveyFixture.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

// Records the queued connections and the flags at that time.
class RecordingConnectionQueue final : public ConnectionQueue {
public:
    void SetTaskQueue(std::unique_ptr<PROFILE_DATA> record) override
    {
        calls.push_back(u"SetTaskQueue"_qs);
        rescanWhenQueued = G_bRescan;
        fromProfileWhenQueued = G_configFromProfile;
        records.push_back(std::move(record));
        queued = true;
    }
    void resetFlag() override
    {
        calls.push_back(u"resetFlag"_qs);
        fromProfileWhenReset = G_configFromProfile;
    }

    [[nodiscard]] bool hasQueuedConnection() const override { return queued; }
    [[nodiscard]] const JoinProgress& joinProgress() const override { return progress; }

    bool queued { false };
    JoinProgress progress;
    std::vector<QString> calls;
    std::vector<std::unique_ptr<PROFILE_DATA>> records;
    int rescanWhenQueued { -1 };
    int fromProfileWhenQueued { -1 };
    int fromProfileWhenReset { -1 };
};

inline void pressButton(QDialog& sheet, QDialogButtonBox::StandardButton button)
{
    QTest::mouseClick(sheet.findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
}

// The profile page with its own store and scripted sheets.
class ProfilePageFixture : public SurveyFixture {
protected:
    using Alert = RecordingAlertPanels::Alert;

    ProfilePageFixture()
    {
        page.awakeFromNib();
        table = page.findChild<TableView*>(u"profileList"_qs);
        page.resize(900, 500);
        page.show();
    }

    void haveProfiles(const ProfileList& profiles)
    {
        store.saveRecords(profiles);
        page.RefreshProfileList();
    }

    void press(const QString& button) { QTest::mouseClick(page.findChild<QPushButton*>(button), Qt::LeftButton); }

    [[nodiscard]] QPoint middleOf(int row) const { return table->visualRect(table->model()->index(row, 1)).center(); }

    [[nodiscard]] ProfileList inFile() const { return readDictionariesFile(recordsFile); }
    [[nodiscard]] ProfileList inDefaults() const { return prefs.arrayForKey(u"Profiles"_qs).value_or(ProfileList()); }
    [[nodiscard]] std::optional<ProfileList> setting() const { return prefs.arrayForKey(u"Profile Setting"_qs); }

    [[nodiscard]] std::vector<QString> names(const ProfileList& list) const
    {
        std::vector<QString> result;
        for (const Profile& profile : list)
            result.push_back(profile.text(ProfileKey::profileName));
        return result;
    }

    // The rows with an image, in view order.
    [[nodiscard]] std::vector<int> markedRows() const
    {
        std::vector<int> rows;
        for (int row = 0; row < table->numberOfRows(); ++row) {
            if (!table->model()->index(row, 0).data(Qt::DecorationRole).isNull())
                rows.push_back(row);
        }
        return rows;
    }

    QTemporaryDir folder;
    QString recordsFile { folder.filePath(u"Library/Preferences/Profile.plist"_qs) };
    ManualRunLoop runLoop;
    ScriptedModalSheets sheets;
    MemoryUserDefaults prefs;
    ProfileStore store { prefs, recordsFile };
    RecordingConnectionQueue connections;
    ProfilePageController page { adapter, runLoop, alerts, sheets, store, connections };
    TableView* table { nullptr };
};
