#include "advanced/ui/AdvancePageController.h"

#include "advanced/AdvancedRequests.h"
#include "advanced/RadioText.h"
#include "advanced/RateRules.h"
#include "advanced/SettingsFile.h"
#include "app/shared/SharedState.h"
#include "app/shared/Trace.h"
#include "driver/VX7100Access.h"
#include "platform/AlertPanels.h"
#include "platform/AssertionHandler.h"
#include "platform/store/SaveReport.h"
#include "platform/ui/Images.h"
#include "ui_AdvancePage.h"

#include <QSignalBlocker>

namespace {

constexpr char className[] = "AdvancePageController";
constexpr int maxCharactersAcross = 90; // wider lists and texts are hard to read
constexpr int unknownModeLine = 465;

// A change made by the page, without the signals that report one of the user.
void setCheckedQuietly(QCheckBox& box, bool checked)
{
    const QSignalBlocker blocker(box);
    box.setChecked(checked);
}

} // namespace

AdvancePageController::AdvancePageController(VX7100Access& adapter, AlertPanels& alerts, AssertionHandler& assertions,
    SaveReport& saves, const QString& homePath, QWidget* parent)
    : QWidget(parent)
    , Adapter(adapter)
    , m_alerts(alerts)
    , m_assertions(assertions)
    , m_saves(saves)
    , m_ui(std::make_unique<Ui::AdvancePage>())
    , ProfileSettingFile(advancedSettingsPath(homePath))
{
    traceEntry(className, "init");
    m_ui->setupUi(this);
    m_ui->column->setMaximumWidth(fontMetrics().averageCharWidth() * maxCharactersAcross);
    m_ui->RadioSwitchPic->setImage(imageNamed(u"RADIOON"));
    ShowCard();
    connectControls();
}

AdvancePageController::~AdvancePageController() = default;

// The lists report only actions of the user. Selecting the displayed item again also counts, because it may differ from
// the stored value. The check boxes report every change: assistive technology toggles them without a click.
void AdvancePageController::connectControls()
{
    connect(m_ui->WirelessMode, &QComboBox::activated, this, [this] { OnSelChangeWirelessMode(); });
    connect(m_ui->TXrate, &QComboBox::activated, this, [this] { OnTxRate(); });
    connect(m_ui->BGprotection, &QComboBox::activated, this, [this] { OnSelBGProtection(); });
    connect(m_ui->EnableTXburst, &QCheckBox::toggled, this, [this] { OnTxBurst(); });
    connect(m_ui->AdhocModeUseOFDMrate, &QCheckBox::toggled, this, [this] { OnAdHocUseOFDM(); });
    connect(m_ui->Apply, &QPushButton::clicked, this, [this] { OnApply(); });
    connect(m_ui->Reset, &QPushButton::clicked, this, [this] { OnReset(); });
    connect(m_ui->Radio, &QPushButton::clicked, this, [this] { OnRadioSwitch(); });
}

void AdvancePageController::awakeFromNib()
{
    traceEntry(className, "awakeFromNib");
    records = readSettingsFile(ProfileSettingFile);
    readFirstRecord();
    showSettings();
}

void AdvancePageController::OnReset()
{
    traceEntry(className, "OnReset");
    readFirstRecord();
    showSettings();
}

void AdvancePageController::readFirstRecord()
{
    if (const auto record = firstRecord(records))
        readSettings(*record, m_settings);
}

void AdvancePageController::showSettings()
{
    m_ui->WirelessMode->selectItemAtIndex(m_settings.nWirelessMode);
    if (!rebuildRates())
        return;
    m_ui->BGprotection->selectItemAtIndex(m_settings.nBGProtection);
    m_ui->TXrate->selectItemAtIndex(m_settings.nTxRate);
    setCheckedQuietly(*m_ui->EnableTXburst, m_settings.bTXBurst);
    setCheckedQuietly(*m_ui->AdhocModeUseOFDMrate, m_settings.bAdhocOfdm);
    DisabledButton();
}

void AdvancePageController::OnSelChangeWirelessMode()
{
    (void)rebuildRates();
}

// Updates the other controls for the selected wireless mode; only Apply stores the mode itself. Returns false if a
// failed assertion ends the operation.
bool AdvancePageController::rebuildRates()
{
    traceEntry(className, "OnSelChangeWirelessMode");
    if (!bInitDlg) {
        m_alerts.NSRunAlertPanel(
            QStringLiteral("If there is a channel conflict in profile, then it will change to default channel."),
            QString(), QStringLiteral("OK"));
        return true;
    }
    m_ui->TXrate->removeAllItems();
    const std::int32_t mode = m_ui->WirelessMode->indexOfSelectedItem();
    if (!isKnownMode(mode)
        && !m_assertions.handleFailureInMethod(
            "OnSelChangeWirelessMode", className, className, unknownModeLine, invalidParameter)) {
        return false;
    }
    for (const QString& item : transmitRateItems(mode))
        m_ui->TXrate->addItemWithObjectValue(item);
    // A disabled list keeps its displayed item; only the setting becomes 0.
    m_ui->BGprotection->setEnabled(modeHasProtection(mode));
    if (!modeHasProtection(mode))
        m_settings.nBGProtection = 0;
    m_settings.nTxRate = transmitRateIndexFor(mode, m_settings.nTxRate);
    m_ui->TXrate->selectItemAtIndex(m_settings.nTxRate);
    EnableButton();
    return true;
}

void AdvancePageController::OnTxRate()
{
    traceEntry(className, "OnTxRate");
    m_settings.nTxRate = m_ui->TXrate->indexOfSelectedItem();
    EnableButton();
}

void AdvancePageController::OnSelBGProtection()
{
    traceEntry(className, "OnSelBGProtection");
    m_settings.nBGProtection = m_ui->BGprotection->indexOfSelectedItem();
    EnableButton();
}

void AdvancePageController::OnTxBurst()
{
    traceEntry(className, "OnTxBurst");
    m_settings.bTXBurst = m_ui->EnableTXburst->isChecked();
    EnableButton();
}

void AdvancePageController::OnAdHocUseOFDM()
{
    traceEntry(className, "OnAdHocUseOFDM");
    m_settings.bAdhocOfdm = m_ui->AdhocModeUseOFDMrate->isChecked();
    EnableButton();
}

void AdvancePageController::OnApply()
{
    traceEntry(className, "OnApply");
    applySelections(m_ui->TXrate->indexOfSelectedItem(), m_ui->WirelessMode->indexOfSelectedItem(), m_settings);
    sendWirelessMode(Adapter, m_settings);
    cardSwitchOn = sendStationConfiguration(Adapter, m_settings);
    ShowCard();
    if (!sendDesiredRates(Adapter, m_settings, m_assertions))
        return;
    store();
    DisabledButton();
}

void AdvancePageController::store()
{
    setFirstRecord(records, settingsRecord(m_settings));
    const SaveResult result = writeSettingsFile(ProfileSettingFile, records);
    if (result)
        m_saves.saveSucceeded(ProfileSettingFile);
    else
        m_saves.saveFailed(ProfileSettingFile, QString::fromLocal8Bit(result.error.message().c_str()));
}

void AdvancePageController::EnableButton()
{
    traceEntry(className, "EnableButton");
    m_ui->Apply->setEnabled(true);
    m_ui->Reset->setEnabled(true);
}

void AdvancePageController::DisabledButton()
{
    traceEntry(className, "DisabledButton");
    m_ui->Apply->setEnabled(false);
    m_ui->Reset->setEnabled(false);
}

// The button names the action, the picture shows the last choice.
void AdvancePageController::RadioStatus()
{
    traceEntry(className, "RadioStatus");
    const bool isOn = G_bRadio != 0;
    m_ui->Radio->setText(isOn ? QStringLiteral("Radio Off") : QStringLiteral("Radio On"));
    m_ui->RadioSwitchPic->setImage(isOn ? imageNamed(u"RADIOON") : imageNamed(u"RADIOOFF"));
    m_ui->RadioSwitchPic->setAccessibleName(isOn ? tr("Radio setting: on") : tr("Radio setting: off"));
    ShowCard();
    if (G_configFromProfile != 0)
        G_bCheckedProfileConnect = isOn ? 1 : 0;
}

void AdvancePageController::ShowCard()
{
    const std::optional<bool> chosenOn = radioSwitched ? std::optional(G_bRadio != 0) : std::nullopt;
    m_ui->radioState->setText(radioText({ .card = cardPresence,
        .cardExists = G_bDeviceExist != 0,
        .cardSwitchOn = cardSwitchOn,
        .chosenOn = chosenOn,
        .chosenForThisCard = m_switchedForThisCard }));
}

void AdvancePageController::ForgetCard()
{
    cardSwitchOn.reset();
    m_switchedForThisCard = false;
    ShowCard();
}

void AdvancePageController::OnRadioSwitch()
{
    traceEntry(className, "OnRadioSwitch");
    G_bRadio = G_bRadio == 0 ? 1 : 0;
    radioSwitched = true;
    m_switchedForThisCard = G_bDeviceExist != 0;
    RadioStatus();
    sendRadio(Adapter);
    Adapter.RescanBssidList();
    Adapter.QueryBssidList();
    G_bRescan = 1;
}
