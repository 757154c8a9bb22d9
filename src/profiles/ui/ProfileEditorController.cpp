#include "profiles/ui/ProfileEditorController.h"

#include "app/shared/SharedState.h"
#include "app/shared/Trace.h"
#include "driver/BssidList.h"
#include "driver/records/ChannelTable.h"
#include "platform/AlertPanels.h"
#include "platform/NetworkName.h"
#include "platform/ui/ModalSheets.h"
#include "profiles/ProfileStore.h"
#include "profiles/ui/SsidValidator.h"
#include "profiles/ui/ThresholdValidator.h"
#include "survey/KeyHints.h"
#include "survey/ProfileProposal.h"
#include "survey/SecurityControlRules.h"
#include "ui_ProfileEditor.h"

#include <QSignalBlocker>

namespace {

constexpr int infrastructureItem = 1;
constexpr int longestWepKeyText = 26;
constexpr int longestThreshold = 4; // digits
constexpr int lastChannel = 14; // those whose rows of ChannelFreqTable are in their order
const int lastChannelOfAll = ChannelFreqTable.back().channel;

std::vector<QString> itemsOf(const ComboBox& combo)
{
    std::vector<QString> items;
    for (int index = 0; index < combo.numberOfItems(); ++index)
        items.push_back(combo.itemObjectValueAtIndex(index));
    return items;
}

void setItems(ComboBox& combo, const std::vector<QString>& items)
{
    combo.removeAllItems();
    for (const QString& item : items)
        combo.addItemWithObjectValue(item);
}

} // namespace

ProfileEditorController::ProfileEditorController(
    ModalSheets& sheets, AlertPanels& alerts, ProfileStore& store, QWidget* parent)
    : QDialog(parent)
    , m_sheets(sheets)
    , m_alerts(alerts)
    , m_store(store)
    , m_form(std::make_unique<Ui::ProfileEditor>())
{
    m_form->setupUi(this);
    m_keyRows = { {
        { m_form->WEPKey1Radio, m_form->WEPKey1Combo, m_form->WEPKey1Text, m_form->WEPKey1Hint },
        { m_form->WEPKey2Radio, m_form->WEPKey2Combo, m_form->WEPKey2Text, m_form->WEPKey2Hint },
        { m_form->WEPKey3Radio, m_form->WEPKey3Combo, m_form->WEPKey3Text, m_form->WEPKey3Hint },
        { m_form->WEPKey4Radio, m_form->WEPKey4Combo, m_form->WEPKey4Text, m_form->WEPKey4Hint },
    } };
    offerChannelsUpTo(lastChannel);
    // The longest WEP key shows whole, and the sheet does not grow by what is told of a key while it is typed.
    const QString longestKey(longestWepKeyText + 4, u'0');
    const QString longestHint = wepKeyHint({ .formatIndex = 0, .text = "0123456789", .radioOn = true }, true);
    for (const KeyRow& row : m_keyRows) {
        row.text->setMinimumWidth(fontMetrics().horizontalAdvance(longestKey));
        row.hint->setMinimumWidth(fontMetrics().horizontalAdvance(longestHint));
    }
    setUpSsidField();
    setUpThresholds();
}

ProfileEditorController::~ProfileEditorController()
{
    traceAlways("ProfileEditorController - dealloc \n");
    saveProfile();
}

void ProfileEditorController::setUpSsidField()
{
    QLineEdit& field = *m_form->SSID->lineEdit();
    field.setValidator(new SsidValidator(&field));
    // A name that is typed stays as typed and is not taken for the entry of the list that reads alike: completion
    // would turn one network's name into another's, and the box would select such an entry when it is left.
    m_form->SSID->setCompleter(nullptr);
    QObject::disconnect(&field, &QLineEdit::editingFinished, m_form->SSID, nullptr);
}

void ProfileEditorController::setUpThresholds()
{
    const auto setUp = [](QSlider& slider, QLineEdit& field, ThresholdRange range) {
        slider.setRange(range.least, range.most);
        slider.setValue(range.most);
        field.setText(QString::number(range.most));
        field.setValidator(new ThresholdValidator(range, &field));
        field.setMaximumWidth(field.fontMetrics().horizontalAdvance(QString(longestThreshold + 4, u'0')));
        connect(&field, &QLineEdit::textChanged, &slider, [&slider, range](const QString& text) {
            const QSignalBlocker quiet(slider); // the slider would write the text anew while it is typed
            slider.setValue(sliderValueOf(text, range));
        });
    };
    setUp(*m_form->RtsThresholdSlider, *m_form->RtsThresholdText, rtsThresholdRange);
    setUp(*m_form->FragThresholdSlider, *m_form->FragThresholdText, fragmentationThresholdRange);
    OnSelRTS();
    OnSelFrag();
}

void ProfileEditorController::awakeFromNib()
{
    m_keys = {};
    selFlag = 0;
    m_origin.bHidden = false;
    m_form->ChannelText->setEnabled(false);
    m_form->Channel->setEnabled(false);
    connectControls();
}

void ProfileEditorController::connectControls()
{
    connect(m_form->NetworkType, &ComboBox::selectionChosen, this, [this] { OnNetworkType(); });
    connect(m_form->AuthenType, &ComboBox::selectionChosen, this, [this] { OnAuthType(); });
    connect(m_form->EncryType, &ComboBox::selectionChosen, this, [this] { OnEncryType(); });
    connect(m_form->RtsThresholdCheck, &QCheckBox::toggled, this, [this] { OnSelRTS(); });
    connect(m_form->RtsThresholdSlider, &QSlider::valueChanged, this, [this] { OnRtsSlider(); });
    connect(m_form->FragThresholdCheck, &QCheckBox::toggled, this, [this] { OnSelFrag(); });
    connect(m_form->FragThresholdSlider, &QSlider::valueChanged, this, [this] { OnFragSlider(); });
    for (const KeyRow& row : m_keyRows) {
        connect(row.text, &QLineEdit::textChanged, this, [this] { showWhatIsMissing(); });
        connect(row.format, &ComboBox::currentIndexChanged, this, [this] { showWhatIsMissing(); });
        connect(row.radio, &QRadioButton::toggled, this, [this] { showWhatIsMissing(); });
    }
    connect(m_form->WPAPreSharedKey, &QLineEdit::textChanged, this, [this] { showWhatIsMissing(); });
    connect(m_form->showKeys, &QCheckBox::toggled, this, [this](bool shown) { setKeysShown(shown); });
    connect(m_form->buttons, &QDialogButtonBox::accepted, this, [this] { OnOK(); });
    connect(m_form->buttons, &QDialogButtonBox::rejected, this, [this] { OnCANCEL(); });
}

void ProfileEditorController::open(bool isNewData)
{
    m_origin.IsNewData = isNewData;
    records = m_store.loadRecords();
    selectFirstTab();
    m_form->showKeys->setChecked(false);
    m_form->ProfileName->setFocus();
}

void ProfileEditorController::selectFirstTab()
{
    m_form->TabView->setCurrentIndex(0);
}

void ProfileEditorController::AddInit()
{
    open(true);
    GetBssidList();
    m_form->ProfileName->setText(GetNextProfileName());
    m_form->CamWhenAcPower->setChecked(false);
    setAuthenTypeCombo(0);
    OnSelchangeAuthType();
    m_form->Channel->selectItemAtIndex(0);
    setEncryTypeCombo(0);
    OnSelchangeEncryptionType();
    // Without OnNetworkType: the authentications and the channel stay those of the last profile's network type.
    m_form->NetworkType->selectItemAtIndex(infrastructureItem);
    m_form->PreambleType->selectItemAtIndex(0);
    showPowerSaving(false);
    m_form->TxPower->selectItemAtIndex(0);
    if (m_form->SSID->numberOfItems() > 0)
        m_form->SSID->setEditText(QString());
    clearKeys();
    m_form->ProfileName->selectAll();
    update();
}

void ProfileEditorController::EditInit(std::int32_t row)
{
    modifyIndex = row;
    open(false);
    const bool exists = row >= 0 && static_cast<std::size_t>(row) < records->size();
    const EditedProfile profile = editedProfile(exists ? (*records)[static_cast<std::size_t>(row)] : Profile());
    m_form->ProfileName->setText(profile.ProfileName);
    m_form->CamWhenAcPower->setChecked(profile.CamWhenAcPower != 0);
    m_form->NetworkType->selectItemAtIndex(profile.NetworkType);
    OnNetworkType();
    setAuthenTypeCombo(profile.AuthenType);
    OnSelchangeAuthType();
    selectChannel(profile.Channel);
    setEncryTypeCombo(profile.EncryType);
    OnSelchangeEncryptionType();
    m_form->PreambleType->selectItemAtIndex(profile.PreambleType);
    showPowerSaving(profile.PSMode);
    m_form->TxPower->selectItemAtIndex(profile.TxPower);
    GetBssidList();
    showSsid(ssidOfEditedProfile(itemsOf(*m_form->SSID), profile.SSID));
    showKeys(profile);
    m_origin.copyBSSID = profile.copyBSSID.value_or(m_origin.copyBSSID);
    m_origin.bHidden = profile.bHidden;
    m_form->ProfileName->selectAll();
    update();
}

bool ProfileEditorController::AddProfile(const ProfileProposal& proposal)
{
    open(true);
    m_form->ProfileName->setText(GetNextProfileName());
    m_form->CamWhenAcPower->setChecked(false);
    const AuthenticationChoice choice = authenticationChoiceOf(proposal.AuthenMode);
    if (choice.infrastructureList)
        setAuthenTypeComboText(1);
    setAuthenTypeCombo(choice.index);
    OnSelchangeAuthType();
    selectChannel(channelIndexOf(proposal.Channel));
    setEncryTypeCombo(encryptionIndexOf(proposal.EcrypStatus, choice.index));
    OnSelchangeEncryptionType();
    m_form->NetworkType->selectItemAtIndex(proposal.Networktype); // without OnNetworkType
    m_form->PreambleType->selectItemAtIndex(0);
    showPowerSaving(false);
    m_form->TxPower->selectItemAtIndex(0);
    GetBssidList();
    showSsid(ssidOfScannedNetwork(itemsOf(*m_form->SSID), textFromBytes(QByteArrayView(proposal.SSID))));
    clearKeys();
    m_form->ProfileName->selectAll();
    update();
    m_origin.copyBSSID = proposal.BSSID;
    return true;
}

void ProfileEditorController::clearKeys()
{
    for (const KeyRow& row : m_keyRows) {
        row.format->selectItemAtIndex(0);
        row.text->clear();
    }
    m_form->WPAPreSharedKey->clear();
    m_form->WEPKey1Radio->setChecked(true);
}

void ProfileEditorController::showSsid(const std::optional<SsidSelection>& selection)
{
    if (!selection)
        return;
    m_form->SSID->selectItemAtIndex(selection->index);
    m_form->SSID->setEditText(selection->text);
}

void ProfileEditorController::showPowerSaving(bool powerSaving)
{
    (powerSaving ? m_form->PSMode : m_form->CAM)->setChecked(true);
}

void ProfileEditorController::showKeys(const EditedProfile& profile)
{
    for (std::size_t index = 0; index < m_keyRows.size(); ++index) {
        m_keyRows[index].format->selectItemAtIndex(profile.keyFormats[index]);
        m_keyRows[index].text->setText(profile.keyTexts[index]);
    }
    if (profile.transmitKey)
        m_keyRows[*profile.transmitKey].radio->setChecked(true);
    m_form->WPAPreSharedKey->setText(profile.WPAPreSharedKey);
}

void ProfileEditorController::setKeysShown(bool shown)
{
    const auto echo = shown ? QLineEdit::Normal : QLineEdit::Password;
    m_form->WPAPreSharedKey->setEchoMode(echo);
    for (const KeyRow& row : m_keyRows)
        row.text->setEchoMode(echo);
}

void ProfileEditorController::GetBssidList()
{
    setItems(*m_form->SSID, ::GetBssidList(currentBssidList()));
}

QString ProfileEditorController::GetNextProfileName() const
{
    return ::GetNextProfileName(records.value_or(ProfileList()));
}

void ProfileEditorController::setAuthenTypeComboText(int kind)
{
    const auto items = authenticationItems(kind);
    if (!items)
        return;
    setItems(*m_form->AuthenType, *items);
    setAuthenTypeCombo(0);
}

void ProfileEditorController::setAuthenTypeCombo(int index)
{
    m_form->AuthenType->selectItemAtIndex(index);
}

void ProfileEditorController::setEncryTypeCombo(int index)
{
    m_form->EncryType->selectItemAtIndex(index);
}

void ProfileEditorController::OnNetworkType()
{
    const int networkType = m_form->NetworkType->indexOfSelectedItem();
    const bool enabled = channelEnabled(networkType);
    m_form->PreambleType->setEnabled(enabled);
    m_form->ChannelText->setEnabled(enabled);
    m_form->Channel->setEnabled(enabled);
    setAuthenTypeComboText(authenticationKindOf(networkType));
    OnSelchangeAuthType();
    update();
}

void ProfileEditorController::OnAuthType()
{
    OnSelchangeAuthType();
}

void ProfileEditorController::OnEncryType()
{
    OnSelchangeEncryptionType();
}

void ProfileEditorController::OnSelchangeAuthType()
{
    EncryptionList list { itemsOf(*m_form->EncryType), m_form->EncryType->indexOfSelectedItem(), selFlag };
    list = encryptionListAfter(std::move(list), m_form->AuthenType->indexOfSelectedItem(), G_encryCapa);
    setItems(*m_form->EncryType, list.items);
    setEncryTypeCombo(list.selectedIndex);
    selFlag = list.selFlag;
    OnSelchangeEncryptionType();
}

void ProfileEditorController::OnSelchangeEncryptionType()
{
    const auto enabled
        = keyFieldsEnabled(m_form->AuthenType->indexOfSelectedItem(), m_form->EncryType->indexOfSelectedItem());
    if (enabled) {
        m_form->WPAPreSharedKey->setEnabled(enabled->presharedKey);
        for (const KeyRow& row : m_keyRows) {
            row.radio->setEnabled(enabled->wepKeys);
            row.format->setEnabled(enabled->wepKeys);
            row.text->setEnabled(enabled->wepKeys);
        }
    }
    showWhatIsMissing();
}

void ProfileEditorController::OnSelRTS()
{
    const bool on = m_form->RtsThresholdCheck->isChecked();
    m_form->RtsThresholdSlider->setEnabled(on);
    m_form->RtsThresholdText->setEnabled(on);
}

void ProfileEditorController::OnRtsSlider()
{
    m_form->RtsThresholdText->setText(QString::number(m_form->RtsThresholdSlider->value()));
}

void ProfileEditorController::OnSelFrag()
{
    const bool on = m_form->FragThresholdCheck->isChecked();
    m_form->FragThresholdSlider->setEnabled(on);
    m_form->FragThresholdText->setEnabled(on);
}

void ProfileEditorController::OnFragSlider()
{
    m_form->FragThresholdText->setText(QString::number(m_form->FragThresholdSlider->value()));
}

ProfileControls ProfileEditorController::controls() const
{
    ProfileControls values;
    values.ProfileName = m_form->ProfileName->text();
    values.CamWhenAcPower = m_form->CamWhenAcPower->isChecked() ? 1 : 0;
    values.AuthenType = m_form->AuthenType->indexOfSelectedItem();
    values.Channel = m_form->Channel->objectValueOfSelectedItem();
    values.EncryType = m_form->EncryType->indexOfSelectedItem();
    values.FragThresholdText = m_form->FragThresholdText->text();
    values.NetworkType = m_form->NetworkType->indexOfSelectedItem();
    values.PreambleType = m_form->PreambleType->indexOfSelectedItem();
    values.PSMode = m_form->PSMode->isChecked() ? 1 : 0;
    values.RtsThresholdText = m_form->RtsThresholdText->text();
    values.SSID = m_form->SSID->currentText();
    values.ssidIndex = m_form->SSID->indexOfSelectedItem();
    values.ssidItem = m_form->SSID->objectValueOfSelectedItem();
    values.TxPower = m_form->TxPower->indexOfSelectedItem();
    for (std::size_t index = 0; index < m_keyRows.size(); ++index) {
        const KeyRow& row = m_keyRows[index];
        values.wepKeys[index] = { row.format->indexOfSelectedItem(), row.text->text(), row.radio->isChecked() };
    }
    values.WPAPreSharedKey = m_form->WPAPreSharedKey->text();
    return values;
}

Profile ProfileEditorController::createProfileData()
{
    const ProfileControls values = controls();
    CreatedProfile created = ::createProfileData(values, m_origin, currentBssidList());
    m_origin.bHidden = created.bHidden;
    m_keys = convertedKeys(values).value_or(m_keys);
    return std::move(created.profile);
}

bool ProfileEditorController::VerifyKey()
{
    const auto refusal = keyRefusal(keyControlsOf(controls()));
    if (refusal)
        m_alerts.NSRunAlertPanel(*refusal, QString(), QStringLiteral("OK"));
    return !refusal;
}

void ProfileEditorController::saveProfile()
{
    if (records)
        m_store.saveRecords(*records);
}

void ProfileEditorController::OnOK()
{
    if (!VerifyKey() || !records)
        return;
    Profile profile = createProfileData();
    const bool exists = modifyIndex >= 0 && static_cast<std::size_t>(modifyIndex) < records->size();
    if (!m_origin.IsNewData && exists)
        (*records)[static_cast<std::size_t>(modifyIndex)] = std::move(profile);
    else
        records->push_back(std::move(profile));
    saveProfile();
    releaseRecords(sheetAccepted);
}

void ProfileEditorController::OnCANCEL()
{
    releaseRecords(sheetCancelled);
}

void ProfileEditorController::releaseRecords(int code)
{
    records.reset();
    m_sheets.stopModalWithCode(code);
}

void ProfileEditorController::showWhatIsMissing()
{
    const KeyControls keys = keyControlsOf(controls());
    const auto selected = static_cast<std::size_t>(selectedKeyIndex(keys.wepKeys));
    for (std::size_t index = 0; index < m_keyRows.size(); ++index) {
        const bool inUse = m_keyRows[index].text->isEnabled();
        m_keyRows[index].hint->setText(inUse ? wepKeyHint(keys.wepKeys[index], index == selected) : QString());
    }
    const bool inUse = m_form->WPAPreSharedKey->isEnabled();
    m_form->WPAPreSharedKeyHint->setText(inUse ? presharedKeyHint(keys.presharedKey) : QString());
}

void ProfileEditorController::offerChannelsUpTo(int channel)
{
    for (int next = m_form->Channel->numberOfItems() + 1; next <= channel; ++next)
        m_form->Channel->addItemWithObjectValue(QString::number(next));
}

// A channel beyond those that are offered at first belongs to a network or a profile that has it already, and must not
// be lost by opening it: the list grows as far, so that every item still stands at its number.
void ProfileEditorController::selectChannel(int index)
{
    if (index < lastChannelOfAll)
        offerChannelsUpTo(index + 1);
    m_form->Channel->selectItemAtIndex(index);
}
