#include "advanced/ui/AdvancePageController.h"

#include "advanced/AdvancedRequests.h"
#include "advanced/RateRules.h"
#include "advanced/SettingsFile.h"
#include "app/shared/SharedState.h"
#include "app/shared/Trace.h"
#include "driver/VX7100Access.h"
#include "platform/AlertPanels.h"
#include "platform/AssertionHandler.h"
#include "platform/ui/Images.h"
#include "ui_AdvancePage.h"

namespace {

constexpr char className[] = "AdvancePageController";
constexpr int unknownModeLine = 465;

} // namespace

AdvancePageController::AdvancePageController(
    VX7100Access& adapter, AlertPanels& alerts, AssertionHandler& assertions, const QString& homePath, QWidget* parent)
    : QWidget(parent)
    , Adapter(adapter)
    , m_alerts(alerts)
    , m_assertions(assertions)
    , m_form(std::make_unique<Ui::AdvancePage>())
    , ProfileSettingFile(advancedSettingsPath(homePath))
{
    traceEntry(className, "init");
    m_form->setupUi(this);
    m_form->RadioSwitchPic->setImage(imageNamed(u"RADIOON"));
    connectControls();
}

AdvancePageController::~AdvancePageController() = default;

// Signals of the user's hand only: what the page itself selects or checks is no change. Choosing the shown item of a
// list again counts: a list can show another value than the one that was taken from it.
void AdvancePageController::connectControls()
{
    connect(m_form->WirelessMode, &QComboBox::activated, this, [this] { OnSelChangeWirelessMode(); });
    connect(m_form->TXrate, &QComboBox::activated, this, [this] { OnTxRate(); });
    connect(m_form->BGprotection, &QComboBox::activated, this, [this] { OnSelBGProtection(); });
    connect(m_form->EnableTXburst, &QCheckBox::clicked, this, [this] { OnTxBurst(); });
    connect(m_form->AdhocModeUseOFDMrate, &QCheckBox::clicked, this, [this] { OnAdHocUseOFDM(); });
    connect(m_form->Apply, &QPushButton::clicked, this, [this] { OnApply(); });
    connect(m_form->Reset, &QPushButton::clicked, this, [this] { OnReset(); });
    connect(m_form->Radio, &QPushButton::clicked, this, [this] { OnRadioSwitch(); });
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
    m_form->WirelessMode->selectItemAtIndex(m_settings.nWirelessMode);
    if (!rebuildRates())
        return;
    m_form->BGprotection->selectItemAtIndex(m_settings.nBGProtection);
    m_form->TXrate->selectItemAtIndex(m_settings.nTxRate);
    m_form->EnableTXburst->setChecked(m_settings.bTXBurst);
    m_form->AdhocModeUseOFDMrate->setChecked(m_settings.bAdhocOfdm);
    DisabledButton();
}

void AdvancePageController::OnSelChangeWirelessMode()
{
    (void)rebuildRates();
}

// What the selected wireless mode makes of the other controls; the mode itself is taken by Apply. False where a failed
// assertion ends the operation.
bool AdvancePageController::rebuildRates()
{
    traceEntry(className, "OnSelChangeWirelessMode");
    if (!bInitDlg) {
        m_alerts.NSRunAlertPanel(QStringLiteral("If there is a channel conflict in profile, then it will change to "
                                                "default channel."),
            QString(), QStringLiteral("OK"));
        return true;
    }
    m_form->TXrate->removeAllItems();
    const std::int32_t mode = m_form->WirelessMode->indexOfSelectedItem();
    if (!isKnownMode(mode)
        && !m_assertions.handleFailureInMethod(
            "OnSelChangeWirelessMode", className, className, unknownModeLine, invalidParameter)) {
        return false;
    }
    for (const QString& item : transmitRateItems(mode))
        m_form->TXrate->addItemWithObjectValue(item);
    // The list goes on showing its choice while it is without meaning.
    m_form->BGprotection->setEnabled(protectionHasMeaning(mode));
    if (!protectionHasMeaning(mode))
        m_settings.nBGProtection = 0;
    m_settings.nTxRate = transmitRateIndexFor(mode, m_settings.nTxRate);
    m_form->TXrate->selectItemAtIndex(m_settings.nTxRate);
    EnableButton();
    return true;
}

void AdvancePageController::OnTxRate()
{
    traceEntry(className, "OnTxRate");
    m_settings.nTxRate = m_form->TXrate->indexOfSelectedItem();
    EnableButton();
}

void AdvancePageController::OnSelBGProtection()
{
    traceEntry(className, "OnSelBGProtection");
    m_settings.nBGProtection = m_form->BGprotection->indexOfSelectedItem();
    EnableButton();
}

void AdvancePageController::OnTxBurst()
{
    traceEntry(className, "OnTxBurst");
    m_settings.bTXBurst = m_form->EnableTXburst->isChecked();
    EnableButton();
}

void AdvancePageController::OnAdHocUseOFDM()
{
    traceEntry(className, "OnAdHocUseOFDM");
    m_settings.bAdhocOfdm = m_form->AdhocModeUseOFDMrate->isChecked();
    EnableButton();
}

void AdvancePageController::OnApply()
{
    traceEntry(className, "OnApply");
    takeSelections(m_form->TXrate->indexOfSelectedItem(), m_form->WirelessMode->indexOfSelectedItem(), m_settings);
    sendWirelessMode(Adapter, m_settings);
    sendStationConfiguration(Adapter, m_settings);
    if (!sendDesiredRates(Adapter, m_settings, m_assertions))
        return;
    putFirstRecord(records, settingsRecord(m_settings));
    (void)writeSettingsFile(ProfileSettingFile, records);
    DisabledButton();
}

void AdvancePageController::EnableButton()
{
    traceEntry(className, "EnableButton");
    m_form->Apply->setEnabled(true);
    m_form->Reset->setEnabled(true);
}

void AdvancePageController::DisabledButton()
{
    traceEntry(className, "DisabledButton");
    m_form->Apply->setEnabled(false);
    m_form->Reset->setEnabled(false);
}

// The button names what it does, the picture what is.
void AdvancePageController::RadioStatus()
{
    traceEntry(className, "RadioStatus");
    const bool isOn = G_bRadio != 0;
    m_form->Radio->setText(isOn ? QStringLiteral("Radio Off") : QStringLiteral("Radio On"));
    m_form->RadioSwitchPic->setImage(isOn ? imageNamed(u"RADIOON") : imageNamed(u"RADIOOFF"));
    m_form->RadioSwitchPic->setAccessibleName(isOn ? tr("The radio is on") : tr("The radio is off"));
    m_form->radioState->setText(m_form->RadioSwitchPic->accessibleName());
    if (G_configFromProfile != 0)
        G_bCheckedProfileConnect = isOn ? 1 : 0;
}

void AdvancePageController::OnRadioSwitch()
{
    traceEntry(className, "OnRadioSwitch");
    G_bRadio = G_bRadio == 0 ? 1 : 0;
    RadioStatus();
    sendRadio(Adapter);
    Adapter.RescanBssidList();
    Adapter.QueryBssidList();
    G_bRescan = 1;
}
