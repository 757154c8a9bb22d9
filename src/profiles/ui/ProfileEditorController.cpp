#include "profiles/ui/ProfileEditorController.h"

#include "app/shared/SharedState.h"
#include "app/shared/Trace.h"
#include "driver/BssidList.h"
#include "platform/AlertPanels.h"
#include "platform/ui/ModalSheets.h"
#include "platform/ui/PageScrollArea.h"
#include "profiles/ProfileStore.h"
#include "survey/connection/ProfileProposal.h"
#include "survey/keys/SecurityControlRules.h"
#include "ui_ProfileEditor.h"

#include <QScreen>

namespace {

constexpr char className[] = "ProfileEditorController";
constexpr int infrastructureItem = 1;
constexpr int securityTab = 1;

std::unique_ptr<Ui::ProfileEditor> makeForm(QDialog& sheet)
{
    auto form = std::make_unique<Ui::ProfileEditor>();
    form->setupUi(&sheet);
    for (QWidget* const page : { form->generalPage, form->securityPage, form->advancedPage })
        PageScrollArea::wrapTab(*form->TabView, *page, PageScrollArea::MinWidth::OfPage);
    // A new parent moves a widget to the end of the tab order; the buttons stay the last.
    form->buttons->setParent(nullptr);
    form->sheetLayout->addWidget(form->buttons);
    return form;
}

} // namespace

ProfileEditorController::ProfileEditorController(
    ModalSheets& sheets, AlertPanels& alerts, ProfileStore& store, QWidget* parent)
    : QDialog(parent)
    , m_sheets(sheets)
    , m_alerts(alerts)
    , m_store(store)
    , m_ui(makeForm(*this))
    , m_rtsThreshold(*m_ui->RtsThresholdCheck, *m_ui->RtsThresholdSlider, *m_ui->RtsThresholdText, rtsThresholdRange)
    , m_fragThreshold(
          *m_ui->FragThresholdCheck, *m_ui->FragThresholdSlider, *m_ui->FragThresholdText, fragmentationThresholdRange)
{
}

ProfileEditorController::~ProfileEditorController()
{
    traceAlways("ProfileEditorController - dealloc \n");
    saveProfile();
}

void ProfileEditorController::awakeFromNib()
{
    traceEntry(className, "awakeFromNib");
    m_keys = {};
    selFlag = 0;
    m_origin.bHidden = false;
    m_ui->ChannelText->setEnabled(false);
    m_ui->Channel->setEnabled(false);
    connectControls();
    // By itself, a window opens on two thirds of the screen at most, and the tabs would be scrolled needlessly.
    resize(sizeHint().boundedTo(screen()->availableSize()));
}

void ProfileEditorController::connectControls()
{
    connect(m_ui->NetworkType, &ComboBox::selectionChosen, this, [this] { OnNetworkType(); });
    // An opening may have selected the type without enabling its fields. Choosing it again does.
    connect(m_ui->NetworkType, &ComboBox::activated, this, [this] { enableNetworkTypeFields(); });
    connect(m_ui->AuthenType, &ComboBox::selectionChosen, this, [this] { OnAuthType(); });
    connect(m_ui->EncryType, &ComboBox::selectionChosen, this, [this] { OnEncryType(); });
    connect(m_ui->RtsThresholdCheck, &QCheckBox::toggled, this, [this] { OnSelRTS(); });
    connect(m_ui->RtsThresholdSlider, &QSlider::valueChanged, this, [this] { OnRtsSlider(); });
    connect(m_ui->FragThresholdCheck, &QCheckBox::toggled, this, [this] { OnSelFrag(); });
    connect(m_ui->FragThresholdSlider, &QSlider::valueChanged, this, [this] { OnFragSlider(); });
    connect(m_ui->buttons, &QDialogButtonBox::accepted, this, [this] { OnOK(); });
    connect(m_ui->buttons, &QDialogButtonBox::rejected, this, [this] { OnCANCEL(); });
}

void ProfileEditorController::beginEditing(bool isNewData)
{
    m_origin.IsNewData = isNewData;
    records = m_store.loadRecords();
    selectFirstTab();
    m_ui->keyFields->hideKeys();
    m_ui->ProfileName->setFocus();
}

void ProfileEditorController::selectFirstTab()
{
    m_ui->TabView->setCurrentIndex(0);
}

// In the sheet as well, because not every desktop shows the title of a sheet.
void ProfileEditorController::showSubject(const QString& subject)
{
    setAccessibleDescription(subject);
    m_ui->subject->setText(subject);
}

void ProfileEditorController::AddInit()
{
    traceEntry(className, "AddInit");
    beginEditing(true);
    showSubject(tr("New profile"));
    GetBssidList();
    m_ui->ProfileName->setText(GetNextProfileName());
    m_ui->CamWhenAcPower->setChecked(false);
    m_ui->AuthenType->selectItemAtIndex(0);
    OnSelchangeAuthType();
    m_ui->Channel->selectItemAtIndex(0);
    m_ui->EncryType->selectItemAtIndex(0);
    OnSelchangeEncryptionType();
    // Without OnNetworkType(): the authentication list and the channel still match the previous network type.
    m_ui->NetworkType->selectItemAtIndex(infrastructureItem);
    m_ui->PreambleType->selectItemAtIndex(0);
    showPowerSaving(false);
    m_ui->TxPower->selectItemAtIndex(0);
    if (m_ui->SSID->numberOfItems() > 0)
        m_ui->SSID->setEditText(QString());
    clearKeys();
    m_ui->ProfileName->selectAll();
    update();
}

void ProfileEditorController::EditInit(std::int32_t row)
{
    traceEntry(className, "EditInit");
    modifyIndex = row;
    beginEditing(false);
    const bool exists = row >= 0 && static_cast<std::size_t>(row) < records->size();
    const EditedProfile profile = editedProfile(exists ? (*records)[static_cast<std::size_t>(row)] : Profile());
    showSubject(profile.ProfileName.isEmpty() ? tr("Profile without a name")
                                              : tr("Profile \u201C%1\u201D").arg(profile.ProfileName));
    m_ui->ProfileName->setText(profile.ProfileName);
    m_ui->CamWhenAcPower->setChecked(profile.CamWhenAcPower != 0);
    m_ui->NetworkType->selectItemAtIndex(profile.NetworkType);
    OnNetworkType();
    m_ui->AuthenType->selectItemAtIndex(profile.AuthenType);
    OnSelchangeAuthType();
    m_ui->Channel->selectItemAtIndex(profile.Channel);
    m_ui->EncryType->selectItemAtIndex(profile.EncryType);
    OnSelchangeEncryptionType();
    m_ui->PreambleType->selectItemAtIndex(profile.PreambleType);
    showPowerSaving(profile.PSMode);
    m_ui->TxPower->selectItemAtIndex(profile.TxPower);
    GetBssidList();
    m_ui->SSID->showSelection(ssidOfEditedProfile(m_ui->SSID->itemObjectValues(), profile.SSID));
    showKeys(profile);
    m_origin.copyBSSID = profile.copyBSSID.value_or(m_origin.copyBSSID);
    m_origin.bHidden = profile.bHidden;
    m_ui->ProfileName->selectAll();
    update();
}

bool ProfileEditorController::AddProfile(const ProfileProposal& proposal)
{
    traceEntry(className, "AddProfile");
    beginEditing(true);
    showSubject(proposal.SSID.isEmpty()
            ? tr("New profile for a network without a name")
            : tr("New profile for the network \u201C%1\u201D").arg(proposal.SSID.displayText()));
    m_ui->ProfileName->setText(GetNextProfileName());
    m_ui->CamWhenAcPower->setChecked(false);
    const AuthenticationChoice choice = authenticationChoiceOf(proposal.AuthenMode);
    if (choice.infrastructureList)
        setAuthenTypeComboText(1);
    m_ui->AuthenType->selectItemAtIndex(choice.index);
    OnSelchangeAuthType();
    m_ui->Channel->selectItemAtIndex(channelIndexOf(proposal.Channel));
    m_ui->EncryType->selectItemAtIndex(encryptionIndexOf(proposal.EcrypStatus, choice.index));
    OnSelchangeEncryptionType();
    m_ui->NetworkType->selectItemAtIndex(proposal.Networktype); // without OnNetworkType
    m_ui->PreambleType->selectItemAtIndex(0);
    showPowerSaving(false);
    m_ui->TxPower->selectItemAtIndex(0);
    GetBssidList();
    m_ui->SSID->showSelection(ssidOfScannedNetwork(m_ui->SSID->itemObjectValues(), proposal.SSID.text()));
    clearKeys();
    m_ui->ProfileName->selectAll();
    update();
    m_origin.copyBSSID = proposal.BSSID;
    return true;
}

void ProfileEditorController::clearKeys()
{
    m_ui->keyFields->selectHexadecimal();
    m_ui->keyFields->clearTexts();
    m_ui->keyFields->selectTransmitKey(0);
}

void ProfileEditorController::showPowerSaving(bool powerSaving)
{
    (powerSaving ? m_ui->PSMode : m_ui->CAM)->setChecked(true);
}

void ProfileEditorController::showKeys(const EditedProfile& profile)
{
    for (std::size_t key = 0; key < profile.keyTexts.size(); ++key)
        m_ui->keyFields->setWepKey(key, profile.keyFormats[key], profile.keyTexts[key]);
    m_ui->keyFields->selectTransmitKey(profile.transmitKey);
    m_ui->keyFields->setWPAPSK(profile.WPAPreSharedKey);
}

void ProfileEditorController::GetBssidList()
{
    traceEntry(className, "GetBssidList");
    m_ui->SSID->setItemObjectValues(::GetBssidList(currentBssidList()));
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
    m_ui->AuthenType->setItemObjectValues(*items);
    m_ui->AuthenType->selectItemAtIndex(0);
}

void ProfileEditorController::setAuthenTypeCombo(int index)
{
    traceEntry(className, "setAuthenTypeCombo");
    m_ui->AuthenType->selectItemAtIndex(index);
}

void ProfileEditorController::setEncryTypeCombo(int index)
{
    traceEntry(className, "setEncryTypeCombo");
    m_ui->EncryType->selectItemAtIndex(index);
}

void ProfileEditorController::OnNetworkType()
{
    traceEntry(className, "OnNetworkType");
    enableNetworkTypeFields();
    setAuthenTypeComboText(authenticationKindOf(m_ui->NetworkType->indexOfSelectedItem()));
    OnSelchangeAuthType();
    update();
}

void ProfileEditorController::enableNetworkTypeFields()
{
    const bool enabled = channelEnabled(m_ui->NetworkType->indexOfSelectedItem());
    m_ui->preambleLabel->setEnabled(enabled);
    m_ui->PreambleType->setEnabled(enabled);
    m_ui->ChannelText->setEnabled(enabled);
    m_ui->Channel->setEnabled(enabled);
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
    const int authenType = m_ui->AuthenType->indexOfSelectedItem();
    EncryptionList list { m_ui->EncryType->itemObjectValues(), m_ui->EncryType->indexOfSelectedItem(), selFlag };
    list = encryptionListAfter(std::move(list), authenType, selFlagAfter(authenType, selFlag), G_encryCapa);
    m_ui->EncryType->setItemObjectValues(list.items);
    m_ui->EncryType->selectItemAtIndex(list.selectedIndex);
    selFlag = list.selFlag;
    OnSelchangeEncryptionType();
}

void ProfileEditorController::OnSelchangeEncryptionType()
{
    traceEntry(className, "OnSelchangeEncryptionType");
    m_ui->keyFields->enableFor(m_ui->AuthenType->indexOfSelectedItem(), m_ui->EncryType->indexOfSelectedItem());
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
    values.ProfileName = m_ui->ProfileName->text();
    values.CamWhenAcPower = m_ui->CamWhenAcPower->isChecked() ? 1 : 0;
    values.AuthenType = m_ui->AuthenType->indexOfSelectedItem();
    values.Channel = m_ui->Channel->objectValueOfSelectedItem();
    values.EncryType = m_ui->EncryType->indexOfSelectedItem();
    values.FragThresholdText = m_ui->FragThresholdText->text();
    values.NetworkType = m_ui->NetworkType->indexOfSelectedItem();
    values.PreambleType = m_ui->PreambleType->indexOfSelectedItem();
    values.PSMode = m_ui->PSMode->isChecked() ? 1 : 0;
    values.RtsThresholdText = m_ui->RtsThresholdText->text();
    values.SSID = m_ui->SSID->currentText();
    values.ssidIndex = m_ui->SSID->indexOfSelectedItem();
    values.ssidItem = m_ui->SSID->objectValueOfSelectedItem();
    values.TxPower = m_ui->TxPower->indexOfSelectedItem();
    values.wepKeys = m_ui->keyFields->wepKeyRows();
    values.WPAPreSharedKey = m_ui->keyFields->WPAPSK();
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
    const KeyControls keys = keyControlsOf(controls());
    const auto refusal = keyRefusal(keys);
    if (!refusal)
        return true;
    // The key may be on a hidden tab. The alert takes the focus, so the field gets it afterwards.
    m_ui->TabView->setCurrentIndex(securityTab);
    m_alerts.NSRunAlertPanel(*refusal, QString(), QStringLiteral("OK"));
    m_ui->keyFields->focusRefusedKey(keys);
    return false;
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
    if (!VerifyKey() || !records)
        return;
    // The button's shortcut does not move the focus, so the fields have not corrected their text yet.
    m_rtsThreshold.correctText();
    m_fragThreshold.correctText();
    const std::optional<std::size_t> edited
        = m_origin.IsNewData ? std::nullopt : std::optional(static_cast<std::size_t>(modifyIndex));
    m_store.putProfile(*records, createProfileData(), edited);
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
    m_ui->keyFields->hideKeys();
    m_ui->keyFields->clearTexts();
}
