#pragma once

#include "app/shared/Pages.h"
#include "platform/ui/ComboBox.h"
#include "platform/ui/TableView.h"
#include "survey/connection/ProfileData.h"
#include "survey/ui/SiteSurveyPageController.h"
#include "tests/support/ManualRunLoop.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/ScriptedModalSheets.h"
#include "tests/survey/SurveyFixture.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

// The site survey page with the real sheets and a scripted user.

class CountingProfilePage final : public ProfilePage {
public:
    void RefreshProfileList() override { }
    void CheckProfileSettingForConnect() override { }
    void DisabledActivateProfile() override { ++disabled; }
    int disabled { 0 };
};

inline EntryBuilder wepEntry(std::string_view ssid = "wep")
{
    EntryBuilder entry(ssid);
    entry.fixedPart.Privacy = 1;
    return entry;
}

inline EntryBuilder wpaNetwork(int cipher, int authentication, std::int32_t mode = Ndis802_11Infrastructure)
{
    EntryBuilder entry = wepEntry("IEEE");
    entry.fixedPart.InfrastructureMode = mode;
    entry.elements = wpaElement(cipher, authentication);
    return entry;
}

inline void press(QDialog& sheet, QDialogButtonBox::StandardButton button)
{
    QTest::mouseClick(sheet.findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
}

class ConnectingFixture : public SurveyFixture {
protected:
    ConnectingFixture()
    {
        G_configFromProfile = 1;
        page.awakeFromNib();
        page.setProfilePage(&profilePage);
        table = page.findChild<TableView*>(u"ApList"_qs);
        page.resize(900, 500);
        page.show();
    }

    void select(const EntryBuilder& entry)
    {
        haveList({ entry });
        page.RefreshAPList();
        table->selectRowNumber(0);
    }

    void connectTo(const EntryBuilder& entry)
    {
        select(entry);
        pressConnect();
    }

    void pressConnect() { QTest::mouseClick(page.findChild<QPushButton*>(u"Connect"_qs), Qt::LeftButton); }

    void typeKey(const QString& field, const QString& text)
    {
        sheets.users.emplace_back([field, text](QDialog& sheet) {
            auto* const line = sheet.findChild<QLineEdit*>(field);
            EXPECT_TRUE(line->isEnabled());
            QTest::keyClicks(line, text);
            press(sheet, QDialogButtonBox::Ok);
        });
    }

    void cancelSheet()
    {
        sheets.users.emplace_back([](QDialog& sheet) { press(sheet, QDialogButtonBox::Cancel); });
    }

    // The queued task; null if there is none.
    static std::shared_ptr<ProfileData> queued() { return TaskQueue::GetTaskObject(); }

    [[nodiscard]] QString joinStatus() const
    {
        const auto* const label = page.findChild<QLabel*>(u"JoinStatus"_qs);
        return label->isVisible() ? label->text() : QString();
    }

    ManualRunLoop runLoop;
    RecordingAssertionHandler assertions;
    ScriptedModalSheets sheets;
    CountingProfilePage profilePage;
    SiteSurveyPageController page { adapter, runLoop, assertions, alerts, sheets };
    TableView* table { nullptr };
};
