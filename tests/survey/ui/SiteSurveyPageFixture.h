#pragma once

#include "app/shared/CardPresence.h"
#include "platform/ui/TableView.h"
#include "survey/connection/ProfileData.h"
#include "survey/ui/ChannelView.h"
#include "survey/ui/SiteSurveyPageController.h"
#include "tests/support/ManualRunLoop.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/ScriptedModalSheets.h"
#include "tests/survey/SurveyFixture.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <vector>

// The address of the second network of a list.
inline constexpr MacAddress second { 0x00, 0x11, 0x22, 0x33, 0x44, 0x02 };

// The site survey page, with its widgets.
class SiteSurveyPageTest : public SurveyFixture {
protected:
    SiteSurveyPageTest()
    {
        cardPresence = CardPresence::Unknown;
        page.awakeFromNib();
        table = page.findChild<TableView*>(u"ApList"_qs);
        status = page.findChild<QLabel*>(u"ConnectStatus"_qs);
        rescan = page.findChild<QPushButton*>(u"Rescan"_qs);
        channels = page.findChild<ChannelView*>(u"channelView"_qs);
        showChannels = page.findChild<QPushButton*>(u"showChannels"_qs);
    }

    void show()
    {
        page.resize(900, 500);
        page.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&page));
    }

    // The cells of a column from the top of the view.
    [[nodiscard]] std::vector<QString> column(const QString& title) const
    {
        std::vector<QString> texts;
        const QAbstractItemModel& model = *table->model();
        for (int column = 0; column < model.columnCount(); ++column) {
            if (model.headerData(column, Qt::Horizontal).toString() != title)
                continue;
            for (int row = 0; row < model.rowCount(); ++row)
                texts.push_back(model.index(row, column).data().toString());
        }
        return texts;
    }

    // The marked rows of the view.
    [[nodiscard]] std::vector<int> markedRows() const
    {
        std::vector<int> rows;
        for (int row = 0; row < table->model()->rowCount(); ++row) {
            if (!table->model()->index(row, 0).data(Qt::DecorationRole).value<QIcon>().isNull())
                rows.push_back(row);
        }
        return rows;
    }

    ManualRunLoop runLoop;
    RecordingAssertionHandler assertions;
    ScriptedModalSheets sheets;
    SiteSurveyPageController page { adapter, runLoop, assertions, alerts, sheets };
    TableView* table { nullptr };
    QLabel* status { nullptr };
    QPushButton* rescan { nullptr };
    ChannelView* channels { nullptr };
    QPushButton* showChannels { nullptr };
};
