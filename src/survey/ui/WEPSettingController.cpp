#include "survey/ui/WEPSettingController.h"

#include "app/shared/SharedState.h"
#include "app/shared/Trace.h"
#include "platform/AlertPanels.h"
#include "platform/ui/ModalSheets.h"
#include "survey/keys/SecurityControlRules.h"
#include "survey/ui/SheetReceivers.h"
#include "ui_WEPSetting.h"

namespace {

constexpr char className[] = "WEPSettingController";

} // namespace

WEPSettingController::WEPSettingController(
    ModalSheets& sheets, AlertPanels& alerts, SecuritySettingsReceiver& siteSurvey, QWidget* parent)
    : QDialog(parent)
    , m_sheets(sheets)
    , m_alerts(alerts)
    , SiteSurvey(siteSurvey)
    , m_ui(std::make_unique<Ui::WEPSetting>())
{
    m_ui->setupUi(this);
    m_ui->keyFields->setKeyUse(KeyUse::Connection);
    m_ui->keyFields->setUnusedWepKeysHidden(true);
}

WEPSettingController::~WEPSettingController() = default;

void WEPSettingController::awakeFromNib()
{
    traceEntry(className, "awakeFromNib");
    m_ui->AuthenType->selectItemAtIndex(0);
    m_ui->EncryType->selectItemAtIndex(0);
    m_ui->keyFields->selectHexadecimal();
    selFlag = 0;
    OnSelchangeAuthType();
    // The list was empty before OnSelchangeAuthType().
    m_ui->EncryType->selectItemAtIndex(0);
    OnSelchangeEncryptionType();
    connectControls();
}

void WEPSettingController::connectControls()
{
    connect(m_ui->AuthenType, &ComboBox::selectionChosen, this, [this] { OnAuthType(); });
    connect(m_ui->EncryType, &ComboBox::selectionChosen, this, [this] { OnEncryType(); });
    connect(m_ui->buttons, &QDialogButtonBox::accepted, this, [this] { OnOK(); });
    connect(m_ui->buttons, &QDialogButtonBox::rejected, this, [this] { OnCANCEL(); });
}

void WEPSettingController::setAuthenTypeComboText(int kind)
{
    traceEntry(className, "setAuthenTypeComboText");
    const auto items = authenticationItems(kind);
    if (!items)
        return;
    m_ui->AuthenType->setItemObjectValues(*items);
    m_ui->AuthenType->selectItemAtIndex(0);
}

void WEPSettingController::setAuthenTypeCombo(int index)
{
    traceEntry(className, "setAuthenTypeCombo");
    m_ui->AuthenType->selectItemAtIndex(index);
}

void WEPSettingController::setEncryTypeCombo(int index)
{
    traceEntry(className, "setEncryTypeCombo");
    m_ui->EncryType->selectItemAtIndex(index);
}

int WEPSettingController::getAuthenTypeCombo() const
{
    traceEntry(className, "getAuthenTypeCombo");
    return m_ui->AuthenType->indexOfSelectedItem();
}

void WEPSettingController::setNetwork(const NetworkName& name, const QString& bssid)
{
    const QString text = name.isEmpty() ? tr("To join the network at %1:").arg(bssid)
                                        : tr("To join the network “%1”:").arg(name.displayText());
    m_ui->network->setText(text);
    setAccessibleDescription(text); // read out when the sheet opens
}

void WEPSettingController::clearText()
{
    traceEntry(className, "clearText");
    m_ui->keyFields->hideKeys();
    m_ui->keyFields->clearTexts();
    OnSelchangeAuthType();
}

void WEPSettingController::focusFirstKey()
{
    if (!m_ui->keyFields->focusFirstKey())
        m_ui->AuthenType->setFocus();
}

void WEPSettingController::OnAuthType()
{
    traceEntry(className, "OnAuthType");
    OnSelchangeAuthType();
}

void WEPSettingController::OnEncryType()
{
    traceEntry(className, "OnEncryType");
    OnSelchangeEncryptionType();
}

void WEPSettingController::OnSelchangeAuthType()
{
    traceEntry(className, "OnSelchangeAuthType");
    const int authenType = m_ui->AuthenType->indexOfSelectedItem();
    EncryptionList list { m_ui->EncryType->itemObjectValues(), m_ui->EncryType->indexOfSelectedItem(), selFlag };
    list = encryptionListAfter(std::move(list), authenType, authenType == wpaAuthenTypeIndex ? 1 : 0, G_encryCapa);
    m_ui->EncryType->setItemObjectValues(list.items);
    m_ui->EncryType->selectItemAtIndex(list.selectedIndex);
    selFlag = list.selFlag;
    OnSelchangeEncryptionType();
}

void WEPSettingController::OnSelchangeEncryptionType()
{
    traceEntry(className, "OnSelchangeEncryptionType");
    selAuth = m_ui->AuthenType->indexOfSelectedItem();
    selEncry = m_ui->EncryType->indexOfSelectedItem();
    const QSize before = sizeHint();
    m_ui->keyFields->enableFor(selAuth, selEncry);
    if (sizeHint() != before) // other keys are visible now
        adjustSize();
}

KeyControls WEPSettingController::controls() const
{
    return m_ui->keyFields->keyControls(
        m_ui->AuthenType->indexOfSelectedItem(), m_ui->EncryType->indexOfSelectedItem());
}

bool WEPSettingController::VerifyKey()
{
    traceEntry(className, "VerifyKey");
    const auto refusal = keyRefusal(controls());
    if (refusal)
        m_alerts.NSRunAlertPanel(*refusal, QString(), QStringLiteral("OK"));
    return !refusal;
}

void WEPSettingController::OnOK()
{
    traceEntry(className, "OnOK");
    const KeyControls controls = this->controls();
    if (controls.authenTypeIndex != selAuth && controls.encryTypeIndex != selEncry) {
        m_alerts.NSRunAlertPanel(
            QStringLiteral("Encryption type is incorrect, please re-select the correct Encryption type."), QString(),
            QStringLiteral("OK"));
        return;
    }
    if (!VerifyKey())
        return;
    m_settings.AuthenType = controls.authenTypeIndex;
    m_settings.EncryType = controls.encryTypeIndex;
    m_settings.SelKeyIndex = selectedKeyIndex(controls.wepKeys);
    if (usesWepKeys(controls.authenTypeIndex, controls.encryTypeIndex)) {
        for (std::size_t index = 0; index < controls.wepKeys.size(); ++index)
            m_settings.WepKeys[index]
                = wepKeyOf(controls.wepKeys[index].formatIndex, controls.wepKeys[index].text.view());
    }
    m_settings.WPAPSK = controls.WPAPSK;
    SiteSurvey.ReceiveWEPsetting(m_settings);
    m_settings.WPAPSK = {};
    m_ui->keyFields->clearTexts();
    m_sheets.stopModalWithCode(sheetAccepted);
}

void WEPSettingController::OnCANCEL()
{
    traceEntry(className, "OnCANCEL");
    m_ui->keyFields->clearTexts();
    m_sheets.stopModalWithCode(sheetCancelled);
}
