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
    , m_form(std::make_unique<Ui::WEPSetting>())
{
    m_form->setupUi(this);
}

WEPSettingController::~WEPSettingController() = default;

void WEPSettingController::awakeFromNib()
{
    traceEntry(className, "awakeFromNib");
    m_form->AuthenType->selectItemAtIndex(0);
    m_form->EncryType->selectItemAtIndex(0);
    m_form->keyFields->selectHexadecimal();
    selFlag = 0;
    OnSelchangeAuthType();
    // Only now does the list have an item to select.
    m_form->EncryType->selectItemAtIndex(0);
    OnSelchangeEncryptionType();
    connectControls();
}

void WEPSettingController::connectControls()
{
    connect(m_form->AuthenType, &ComboBox::selectionChosen, this, [this] { OnAuthType(); });
    connect(m_form->EncryType, &ComboBox::selectionChosen, this, [this] { OnEncryType(); });
    connect(m_form->buttons, &QDialogButtonBox::accepted, this, [this] { OnOK(); });
    connect(m_form->buttons, &QDialogButtonBox::rejected, this, [this] { OnCANCEL(); });
}

void WEPSettingController::setAuthenTypeComboText(int kind)
{
    traceEntry(className, "setAuthenTypeComboText");
    const auto items = authenticationItems(kind);
    if (!items)
        return;
    m_form->AuthenType->setItemObjectValues(*items);
    m_form->AuthenType->selectItemAtIndex(0);
}

void WEPSettingController::setAuthenTypeCombo(int index)
{
    traceEntry(className, "setAuthenTypeCombo");
    m_form->AuthenType->selectItemAtIndex(index);
}

void WEPSettingController::setEncryTypeCombo(int index)
{
    traceEntry(className, "setEncryTypeCombo");
    m_form->EncryType->selectItemAtIndex(index);
}

int WEPSettingController::getAuthenTypeCombo() const
{
    traceEntry(className, "getAuthenTypeCombo");
    return m_form->AuthenType->indexOfSelectedItem();
}

void WEPSettingController::clearText()
{
    traceEntry(className, "clearText");
    m_form->keyFields->hideKeys();
    m_form->keyFields->clearTexts();
    OnSelchangeAuthType();
}

void WEPSettingController::focusFirstKey()
{
    if (!m_form->keyFields->focusFirstKey())
        m_form->AuthenType->setFocus();
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
    const int authenType = m_form->AuthenType->indexOfSelectedItem();
    const std::int32_t family = authenType == wpaAuthenTypeIndex ? 1 : 0;
    const bool familyChanged = family != selFlag;
    if (familyChanged)
        m_form->EncryType->removeAllItems();
    // Between "Open" and "Shared" the items are inserted once more: what is selected keeps its number.
    int place = 0;
    for (const QString& item : encryptionItems(authenType, G_encryCapa))
        m_form->EncryType->insertItemWithObjectValue(item, place++);
    if (familyChanged) {
        m_form->EncryType->selectItemAtIndex(0);
        selFlag = family;
    }
    OnSelchangeEncryptionType();
}

void WEPSettingController::OnSelchangeEncryptionType()
{
    traceEntry(className, "OnSelchangeEncryptionType");
    selAuth = m_form->AuthenType->indexOfSelectedItem();
    selEncry = m_form->EncryType->indexOfSelectedItem();
    m_form->keyFields->enableFor(selAuth, selEncry);
}

bool WEPSettingController::VerifyKey(const KeyControls& controls)
{
    traceEntry(className, "VerifyKey");
    const auto refusal = keyRefusal(controls);
    if (refusal)
        m_alerts.NSRunAlertPanel(*refusal, QString(), QStringLiteral("OK"));
    return !refusal;
}

void WEPSettingController::OnOK()
{
    traceEntry(className, "OnOK");
    const KeyControls controls = m_form->keyFields->keyControls(
        m_form->AuthenType->indexOfSelectedItem(), m_form->EncryType->indexOfSelectedItem());
    if (controls.authenTypeIndex != selAuth && controls.encryTypeIndex != selEncry) {
        m_alerts.NSRunAlertPanel(
            QStringLiteral("Encryption type is incorrect, please re-select the correct Encryption type."), QString(),
            QStringLiteral("OK"));
        return;
    }
    if (!VerifyKey(controls))
        return;
    m_settings.AuthenType = controls.authenTypeIndex;
    m_settings.EncryType = controls.encryTypeIndex;
    m_settings.SelKeyIndex = selectedKeyIndex(controls.wepKeys);
    if (usesWepKeys(controls.authenTypeIndex, controls.encryTypeIndex)) {
        for (std::size_t index = 0; index < controls.wepKeys.size(); ++index)
            m_settings.WepKeys[index] = wepKeyOf(controls.wepKeys[index].formatIndex, controls.wepKeys[index].text);
    }
    m_settings.WPAPSK = controls.presharedKey;
    SiteSurvey.ReceiveWEPsetting(m_settings);
    m_sheets.stopModalWithCode(sheetAccepted);
}

void WEPSettingController::OnCANCEL()
{
    traceEntry(className, "OnCANCEL");
    m_sheets.stopModalWithCode(sheetCancelled);
}
