#include "survey/ui/NetworkViews.h"

#include "platform/NetworkName.h"
#include "platform/ui/NetworkNameDelegate.h"
#include "platform/ui/TableView.h"
#include "survey/AccessPoint.h"
#include "survey/ChannelViewModel.h"
#include "survey/ui/ChannelView.h"
#include "survey/ui/CheckMarkIcon.h"
#include "survey/ui/SignalBarsDelegate.h"
#include "survey/ui/SurveyColumns.h"
#include "ui_SiteSurveyPage.h"

#include <QItemSelectionModel>

#include <utility>

namespace {

// Neither higher than other buttons nor of a changing width.
void setUpSwitch(QPushButton& button)
{
    const int side = button.fontMetrics().ascent();
    button.setIconSize({ side, side });
    button.setIcon(checkMarkIcon());
    button.setMinimumWidth(button.sizeHint().width());
    button.setIcon({});
}

} // namespace

NetworkViews::NetworkViews(Ui::SiteSurveyPage& form, TableDataSource& source, const std::function<QString()>& emptyText)
    : m_form(form)
    , m_list(*form.ApList)
    , m_channels(*form.channelView)
{
    setUpList(source, emptyText);
    setUpChannels(emptyText);
}

NetworkViews::~NetworkViews()
{
    m_list.setDataSource(nullptr);
}

void NetworkViews::setUpList(TableDataSource& source, const std::function<QString()>& emptyText)
{
    m_list.setTableColumns(surveyColumns());
    m_list.setDelegateForTableColumn(u"ssid", new NetworkNameDelegate(NetworkName::hiddenPlaceholder(), &m_list));
    m_list.setDelegateForTableColumn(u"signal", new SignalBarsDelegate(&m_list));
    m_list.setDataSource(&source);
    // No signal arrives between finding a card and the end of its first scan, so ask at paint time.
    m_list.setEmptyTextSource(emptyText);
}

void NetworkViews::setUpChannels(const std::function<QString()>& emptyText)
{
    m_channels.setEmptyTextSource(emptyText);
    connect(&m_channels, &ChannelView::rowSelected, &m_list, &TableView::selectRowNumber);
    connect(&m_channels, &ChannelView::rowActivated, this, [this](int row) {
        m_list.selectRowNumber(row);
        Q_EMIT networkActivated();
    });
    connect(m_list.selectionModel(), &QItemSelectionModel::selectionChanged, this,
        [this] { m_channels.setSelectedRow(m_list.selectedRow()); });
    setUpSwitch(*m_form.showChannels);
    connect(m_form.showChannels, &QPushButton::toggled, this, [this](bool shown) { showChannels(shown); });
}

void NetworkViews::showChannels(bool shown)
{
    m_form.showChannels->setIcon(shown ? checkMarkIcon() : QIcon());
    QWidget* const view = shown ? static_cast<QWidget*>(&m_channels) : &m_list;
    m_form.views->setCurrentWidget(view);
    m_form.listLabel->setBuddy(view);
}

void NetworkViews::setNetworks(const std::vector<AccessPoint>& rows)
{
    m_newNetworks = channelViewNetworks(rows);
}

void NetworkViews::reloadData(int joinedRow)
{
    m_list.reloadData();
    if (m_newNetworks)
        m_channels.setNetworks(*std::exchange(m_newNetworks, std::nullopt), joinedRow);
    m_channels.setJoinedRow(joinedRow);
    m_channels.setSelectedRow(m_list.selectedRow());
    updateEmptyTexts();
}

void NetworkViews::updateEmptyTexts()
{
    m_list.updateEmptyText();
    m_channels.updateEmptyText();
}

void NetworkViews::showJoined(int row, const QString& bssid)
{
    if (bssid == m_joinedBssid)
        return;
    m_joinedBssid = bssid;
    if (const int selected = m_list.selectedRow(); selected < 0 || selected == row)
        m_list.scrollToRowNumber(row);
}
