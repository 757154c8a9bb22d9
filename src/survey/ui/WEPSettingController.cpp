#include "survey/ui/WEPSettingController.h"

#include "app/shared/SharedState.h"
#include "platform/AlertPanels.h"
#include "platform/ui/ModalSheets.h"
#include "survey/KeyHints.h"
#include "survey/SecurityControlRules.h"
#include "survey/ui/SheetReceivers.h"
#include "ui_WEPSetting.h"

WEPSettingController::WEPSettingController(
    ModalSheets& sheets, AlertPanels& alerts, SecuritySettingsReceiver& siteSurvey, QWidget* parent)
    : QDialog(parent)
    , m_sheets(sheets)
    , m_alerts(alerts)
    , SiteSurvey(siteSurvey)
    , m_form(std::make_unique<Ui::WEPSetting>())
{
    m_form->setupUi(this);
    m_keyRows = { {
        { m_form->WEPKey1Radio, m_form->WEPKey1Combo, m_form->WEPKey1Text, m_form->WEPKey1Hint },
        { m_form->WEPKey2Radio, m_form->WEPKey2Combo, m_form->WEPKey2Text, m_form->WEPKey2Hint },
        { m_form->WEPKey3Radio, m_form->WEPKey3Combo, m_form->WEPKey3Text, m_form->WEPKey3Hint },
        { m_form->WEPKey4Radio, m_form->WEPKey4Combo, m_form->WEPKey4Text, m_form->WEPKey4Hint },
    } };
    // The longest WEP key shows whole.
    constexpr int longestWepKeyText = 26;
    const int width = fontMetrics().horizontalAdvance(QString(longestWepKeyText + 4, u'0'));
    for (const KeyRow& row : m_keyRows)
        row.text->setMinimumWidth(width);
}

WEPSettingController::~WEPSettingController() = default;

void WEPSettingController::awakeFromNib()
{
    m_form->AuthenType->selectItemAtIndex(0);
    m_form->EncryType->selectItemAtIndex(0);
    for (const KeyRow& row : m_keyRows)
        row.format->selectItemAtIndex(0);
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
    for (const KeyRow& row : m_keyRows) {
        connect(row.text, &QLineEdit::textChanged, this, [this] { showWhatIsMissing(); });
        connect(row.format, &ComboBox::currentIndexChanged, this, [this] { showWhatIsMissing(); });
        connect(row.radio, &QRadioButton::toggled, this, [this] { showWhatIsMissing(); });
    }
    connect(m_form->WPAPreSharedKey, &QLineEdit::textChanged, this, [this] { showWhatIsMissing(); });
    connect(m_form->showKeys, &QCheckBox::toggled, this, [this](bool shown) {
        const auto echo = shown ? QLineEdit::Normal : QLineEdit::Password;
        m_form->WPAPreSharedKey->setEchoMode(echo);
        for (const KeyRow& row : m_keyRows)
            row.text->setEchoMode(echo);
    });
    connect(m_form->buttons, &QDialogButtonBox::accepted, this, [this] { OnOK(); });
    connect(m_form->buttons, &QDialogButtonBox::rejected, this, [this] { OnCANCEL(); });
}

void WEPSettingController::setAuthenTypeComboText(int kind)
{
    const auto items = authenticationItems(kind);
    if (!items)
        return;
    m_form->AuthenType->removeAllItems();
    for (const QString& item : *items)
        m_form->AuthenType->addItemWithObjectValue(item);
    m_form->AuthenType->selectItemAtIndex(0);
}

void WEPSettingController::setAuthenTypeCombo(int index)
{
    m_form->AuthenType->selectItemAtIndex(index);
}

void WEPSettingController::setEncryTypeCombo(int index)
{
    m_form->EncryType->selectItemAtIndex(index);
}

int WEPSettingController::getAuthenTypeCombo() const
{
    return m_form->AuthenType->indexOfSelectedItem();
}

void WEPSettingController::clearText()
{
    m_form->showKeys->setChecked(false);
    m_form->WPAPreSharedKey->clear();
    for (const KeyRow& row : m_keyRows)
        row.text->clear();
    OnSelchangeAuthType();
}

void WEPSettingController::focusFirstKey()
{
    if (m_form->WPAPreSharedKey->isEnabled())
        m_form->WPAPreSharedKey->setFocus();
    else if (m_form->WEPKey1Text->isEnabled())
        m_keyRows[static_cast<std::size_t>(selectedKeyIndex(keyControls().wepKeys))].text->setFocus();
    else
        m_form->AuthenType->setFocus();
}

void WEPSettingController::OnAuthType()
{
    OnSelchangeAuthType();
}

void WEPSettingController::OnEncryType()
{
    OnSelchangeEncryptionType();
}

void WEPSettingController::OnSelchangeAuthType()
{
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
    selAuth = m_form->AuthenType->indexOfSelectedItem();
    selEncry = m_form->EncryType->indexOfSelectedItem();
    if (const auto enabled = keyFieldsEnabled(selAuth, selEncry)) {
        m_form->WPAPreSharedKey->setEnabled(enabled->presharedKey);
        for (const KeyRow& row : m_keyRows) {
            row.radio->setEnabled(enabled->wepKeys);
            row.format->setEnabled(enabled->wepKeys);
            row.text->setEnabled(enabled->wepKeys);
        }
    }
    showWhatIsMissing();
}

KeyControls WEPSettingController::keyControls() const
{
    KeyControls controls;
    controls.authenTypeIndex = m_form->AuthenType->indexOfSelectedItem();
    controls.encryTypeIndex = m_form->EncryType->indexOfSelectedItem();
    for (std::size_t index = 0; index < m_keyRows.size(); ++index) {
        const KeyRow& row = m_keyRows[index];
        controls.wepKeys[index]
            = { row.format->indexOfSelectedItem(), row.text->text().toStdString(), row.radio->isChecked() };
    }
    controls.presharedKey = m_form->WPAPreSharedKey->text().toStdString();
    return controls;
}

bool WEPSettingController::VerifyKey(const KeyControls& controls)
{
    const auto refusal = keyRefusal(controls);
    if (refusal)
        m_alerts.NSRunAlertPanel(*refusal, QString(), QStringLiteral("OK"));
    return !refusal;
}

void WEPSettingController::OnOK()
{
    const KeyControls controls = keyControls();
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
    m_sheets.stopModalWithCode(sheetCancelled);
}

void WEPSettingController::showWhatIsMissing()
{
    const KeyControls controls = keyControls();
    const auto selected = static_cast<std::size_t>(selectedKeyIndex(controls.wepKeys));
    for (std::size_t index = 0; index < m_keyRows.size(); ++index) {
        const bool inUse = m_keyRows[index].text->isEnabled();
        m_keyRows[index].hint->setText(inUse ? wepKeyHint(controls.wepKeys[index], index == selected) : QString());
    }
    const bool inUse = m_form->WPAPreSharedKey->isEnabled();
    m_form->WPAPreSharedKeyHint->setText(inUse ? presharedKeyHint(controls.presharedKey) : QString());
}
