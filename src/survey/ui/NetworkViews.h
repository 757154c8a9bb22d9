#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

class AccessPoint;
class ChannelView;
struct ChannelViewNetwork;
class TableDataSource;
class TableView;

namespace Ui {
class SiteSurveyPage;
}

// The list and the channel view of the site survey page, of which one is visible. Both show the same networks and select
// the same one; the list holds the selection.
class NetworkViews final : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(NetworkViews)

public:
    // The widgets of the form and the source outlive the views. emptyText explains why there are no networks.
    NetworkViews(Ui::SiteSurveyPage& form, TableDataSource& source, const std::function<QString()>& emptyText);
    ~NetworkViews() override;

    // The networks that the channel view shows from the next reload on; the list has them from its source.
    void setNetworks(const std::vector<AccessPoint>& rows);
    void reloadData(int joinedRow);
    void updateEmptyTexts();
    // Scrolls the list to the joined row, unless another row is selected. Once per join: afterwards the user decides
    // what is visible.
    void showJoined(int row, const QString& bssid);
    void forgetJoined() { m_joinedBssid.clear(); }

Q_SIGNALS:
    // The user activated a network in the channel view; it is selected now.
    void networkActivated();

private:
    void setUpList(TableDataSource& source, const std::function<QString()>& emptyText);
    void setUpChannels(const std::function<QString()>& emptyText);
    void showChannels(bool shown);

    Ui::SiteSurveyPage& m_form;
    TableView& m_list;
    ChannelView& m_channels;
    std::optional<std::vector<ChannelViewNetwork>> m_newNetworks; // until the next reload
    QString m_joinedBssid; // of the row that was last shown; empty while none is joined
};
