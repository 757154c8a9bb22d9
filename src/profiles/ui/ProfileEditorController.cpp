#include "profiles/ui/ProfileEditorController.h"

#include "app/shared/SharedState.h"
#include "app/shared/Trace.h"
#include "driver/BssidList.h"
#include "platform/AlertPanels.h"
#include "platform/NetworkName.h"
#include "platform/ui/ModalSheets.h"
#include "platform/ui/NetworkNameDelegate.h"
#include "profiles/ProfileStore.h"
#include "profiles/ui/SsidValidator.h"
#include "survey/ProfileProposal.h"
#include "survey/SurveyTexts.h"
#include "survey/keys/SecurityControlRules.h"
#include "ui_ProfileEditor.h"

namespace {

constexpr char className[] = "ProfileEditorController";
constexpr int infrastructureItem = 1;

std::unique_ptr<Ui::ProfileEditor> makeForm(QDialog& sheet)
{
    auto form = std::make_unique<Ui::ProfileEditor>();
    form->setupUi(&sheet);
    return form;
}

} // namespace

ProfileEditorController::ProfileEditorController(
    ModalSheets& sheets, AlertPanels& alerts, ProfileStore& store, QWidget* parent)
    : QDialog(parent)
    , m_sheets(sheets)
    , m_alerts(alerts)
    , m_store(store)
    , m_form(makeForm(*this))
    , m_rtsThreshold(
          *m_form->RtsThresholdCheck, *m_form->RtsThresholdSlider, *m_form->RtsThresholdText, rtsThresholdRange)
    , m_fragThreshold(*m_form->FragThresholdCheck, *m_form->FragThresholdSlider, *m_form->FragThresholdText,
          fragmentationThresholdRange)
{
    setUpSsidField();
}

ProfileEditorController::~ProfileEditorController()
{
    traceAlways("ProfileEditorController - dealloc \n");
    saveProfile();
}

void ProfileEditorController::setUpSsidField()
{
    QLineEdit& field = *m_form->SSID->lineEdit();
    field.setAccessibleName(m_form->SSID->accessibleName());
    field.setValidator(new SsidValidator(&field));
    // A name that is typed stays as typed and is not taken for the entry of the list that reads alike: completion
    // would turn one network's name into another's, and the box would select such an entry when it is left.
    m_form->SSID->setCompleter(nullptr);
    m_form->SSID->setItemDelegate(new NetworkNameDelegate(wordForHiddenNetwork(), m_form->SSID));
    QObject::disconnect(&field, &QLineEdit::editingFinished, m_form->SSID, nullptr);
}

void ProfileEditorController::awakeFromNib()
{
    traceEntry(className, "awakeFromNib");
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
    connect(m_form->buttons, &QDialogButtonBox::accepted, this, [this] { OnOK(); });
    connect(m_form->buttons, &QDialogButtonBox::rejected, this, [this] { OnCANCEL(); });
}

void ProfileEditorController::beginEditing(bool isNewData)
{
    m_origin.IsNewData = isNewData;
    records = m_store.loadRecords();
    selectFirstTab();
    m_form->keyFields->hideKeys();
    m_form->ProfileName->setFocus();
}

void ProfileEditorController::selectFirstTab()
{
    m_form->TabView->setCurrentIndex(0);
}

void ProfileEditorController::AddInit()
{
    traceEntry(className, "AddInit");
    beginEditing(true);
    GetBssidList();
    m_form->ProfileName->setText(GetNextProfileName());
    m_form->CamWhenAcPower->setChecked(false);
    m_form->AuthenType->selectItemAtIndex(0);
    OnSelchangeAuthType();
    m_form->Channel->selectItemAtIndex(0);
    m_form->EncryType->selectItemAtIndex(0);
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
    traceEntry(className, "EditInit");
    modifyIndex = row;
    beginEditing(false);
    const bool exists = row >= 0 && static_cast<std::size_t>(row) < records->size();
    const EditedProfile profile = editedProfile(exists ? (*records)[static_cast<std::size_t>(row)] : Profile());
    m_form->ProfileName->setText(profile.ProfileName);
    m_form->CamWhenAcPower->setChecked(profile.CamWhenAcPower != 0);
    m_form->NetworkType->selectItemAtIndex(profile.NetworkType);
    OnNetworkType();
    m_form->AuthenType->selectItemAtIndex(profile.AuthenType);
    OnSelchangeAuthType();
    m_form->Channel->selectItemAtIndex(profile.Channel);
    m_form->EncryType->selectItemAtIndex(profile.EncryType);
    OnSelchangeEncryptionType();
    m_form->PreambleType->selectItemAtIndex(profile.PreambleType);
    showPowerSaving(profile.PSMode);
    m_form->TxPower->selectItemAtIndex(profile.TxPower);
    GetBssidList();
    showSsid(ssidOfEditedProfile(m_form->SSID->itemObjectValues(), profile.SSID));
    showKeys(profile);
    m_origin.copyBSSID = profile.copyBSSID.value_or(m_origin.copyBSSID);
    m_origin.bHidden = profile.bHidden;
    m_form->ProfileName->selectAll();
    update();
}

bool ProfileEditorController::AddProfile(const ProfileProposal& proposal)
{
    traceEntry(className, "AddProfile");
    beginEditing(true);
    m_form->ProfileName->setText(GetNextProfileName());
    m_form->CamWhenAcPower->setChecked(false);
    const AuthenticationChoice choice = authenticationChoiceOf(proposal.AuthenMode);
    if (choice.infrastructureList)
        setAuthenTypeComboText(1);
    m_form->AuthenType->selectItemAtIndex(choice.index);
    OnSelchangeAuthType();
    m_form->Channel->selectItemAtIndex(channelIndexOf(proposal.Channel));
    m_form->EncryType->selectItemAtIndex(encryptionIndexOf(proposal.EcrypStatus, choice.index));
    OnSelchangeEncryptionType();
    m_form->NetworkType->selectItemAtIndex(proposal.Networktype); // without OnNetworkType
    m_form->PreambleType->selectItemAtIndex(0);
    showPowerSaving(false);
    m_form->TxPower->selectItemAtIndex(0);
    GetBssidList();
    showSsid(ssidOfScannedNetwork(m_form->SSID->itemObjectValues(), textFromBytes(QByteArrayView(proposal.SSID))));
    clearKeys();
    m_form->ProfileName->selectAll();
    update();
    m_origin.copyBSSID = proposal.BSSID;
    return true;
}

void ProfileEditorController::clearKeys()
{
    m_form->keyFields->selectHexadecimal();
    m_form->keyFields->clearTexts();
    m_form->keyFields->selectTransmitKey(0);
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
    for (std::size_t key = 0; key < profile.keyTexts.size(); ++key)
        m_form->keyFields->setWepKey(key, profile.keyFormats[key], profile.keyTexts[key]);
    m_form->keyFields->selectTransmitKey(profile.transmitKey);
    m_form->keyFields->setPresharedKey(profile.WPAPreSharedKey);
}

void ProfileEditorController::GetBssidList()
{
    traceEntry(className, "GetBssidList");
    m_form->SSID->setItemObjectValues(::GetBssidList(currentBssidList()));
}

QString ProfileEditorController::GetNextProfileName() const
{
    traceEntry(className, "GetNextProfileName");
    return ::GetNextProfileName(records.value_or(ProfileList()));
}

void ProfileEditorController::setAuthenTypeComboText(int kind)
{
    traceEntry(className, "setAuthenTypeComboText");
    const auto items = authenticationItems(kind);
    if (!items)
        return;
    m_form->AuthenType->setItemObjectValues(*items);
    m_form->AuthenType->selectItemAtIndex(0);
}

void ProfileEditorController::setAuthenTypeCombo(int index)
{
    traceEntry(className, "setAuthenTypeCombo");
    m_form->AuthenType->selectItemAtIndex(index);
}

void ProfileEditorController::setEncryTypeCombo(int index)
{
    traceEntry(className, "setEncryTypeCombo");
    m_form->EncryType->selectItemAtIndex(index);
}

void ProfileEditorController::OnNetworkType()
{
    traceEntry(className, "OnNetworkType");
    const int networkType = m_form->NetworkType->indexOfSelectedItem();
    const bool enabled = channelEnabled(networkType);
    m_form->preambleLabel->setEnabled(enabled);
    m_form->PreambleType->setEnabled(enabled);
    m_form->ChannelText->setEnabled(enabled);
    m_form->Channel->setEnabled(enabled);
    setAuthenTypeComboText(authenticationKindOf(networkType));
    OnSelchangeAuthType();
    update();
}

void ProfileEditorController::OnAuthType()
{
    traceEntry(className, "OnAuthType");
    OnSelchangeAuthType();
}

void ProfileEditorController::OnEncryType()
{
    traceEntry(className, "OnEncryType");
    OnSelchangeEncryptionType();
}

void ProfileEditorController::OnSelchangeAuthType()
{
    traceEntry(className, "OnSelchangeAuthType");
    EncryptionList list { m_form->EncryType->itemObjectValues(), m_form->EncryType->indexOfSelectedItem(), selFlag };
    list = encryptionListAfter(std::move(list), m_form->AuthenType->indexOfSelectedItem(), G_encryCapa);
    m_form->EncryType->setItemObjectValues(list.items);
    m_form->EncryType->selectItemAtIndex(list.selectedIndex);
    selFlag = list.selFlag;
    OnSelchangeEncryptionType();
}

void ProfileEditorController::OnSelchangeEncryptionType()
{
    traceEntry(className, "OnSelchangeEncryptionType");
    m_form->keyFields->enableFor(m_form->AuthenType->indexOfSelectedItem(), m_form->EncryType->indexOfSelectedItem());
}

void ProfileEditorController::OnSelRTS()
{
    traceEntry(className, "OnSelRTS");
    m_rtsThreshold.followCheckBox();
}

void ProfileEditorController::OnRtsSlider()
{
    traceEntry(className, "OnRtsSlider");
    m_rtsThreshold.followSlider();
}

void ProfileEditorController::OnSelFrag()
{
    traceEntry(className, "OnSelFrag");
    m_fragThreshold.followCheckBox();
}

void ProfileEditorController::OnFragSlider()
{
    traceEntry(className, "OnFragSlider");
    m_fragThreshold.followSlider();
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
    values.wepKeys = m_form->keyFields->wepKeyRows();
    values.WPAPreSharedKey = m_form->keyFields->presharedKeyText();
    return values;
}

Profile ProfileEditorController::createProfileData()
{
    traceEntry(className, "createProfileData");
    const ProfileControls values = controls();
    CreatedProfile created = ::createProfileData(values, m_origin, currentBssidList());
    m_origin.bHidden = created.bHidden;
    m_keys = convertedKeys(values).value_or(m_keys);
    return std::move(created.profile);
}

bool ProfileEditorController::VerifyKey()
{
    traceEntry(className, "VerifyKey");
    const auto refusal = keyRefusal(keyControlsOf(controls()));
    if (refusal)
        m_alerts.NSRunAlertPanel(*refusal, QString(), QStringLiteral("OK"));
    return !refusal;
}

void ProfileEditorController::saveProfile()
{
    traceEntry(className, "saveProfile");
    if (records)
        m_store.saveRecords(*records);
}

void ProfileEditorController::OnOK()
{
    traceEntry(className, "OnOK");
    // The key of the button does not take the keyboard out of a field, and the field is put right only as it is left.
    m_rtsThreshold.correctText();
    m_fragThreshold.correctText();
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
    traceEntry(className, "OnCANCEL");
    releaseRecords(sheetCancelled);
}

void ProfileEditorController::releaseRecords(int code)
{
    records.reset();
    m_sheets.stopModalWithCode(code);
}
