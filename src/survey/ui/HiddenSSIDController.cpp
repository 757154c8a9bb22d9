#include "survey/ui/HiddenSSIDController.h"

#include "app/shared/Trace.h"
#include "platform/NetworkName.h"
#include "platform/ui/ModalSheets.h"
#include "survey/ui/SheetReceivers.h"
#include "ui_HiddenSSID.h"

namespace {

constexpr char className[] = "HiddenSSIDController";

} // namespace

HiddenSSIDController::HiddenSSIDController(ModalSheets& sheets, HiddenSSIDReceiver& siteSurvey, QWidget* parent)
    : QDialog(parent)
    , m_sheets(sheets)
    , SiteSurvey(siteSurvey)
    , m_ui(std::make_unique<Ui::HiddenSSID>())
{
    m_ui->setupUi(this);
    // Wide enough for a name of the maximum length.
    QLineEdit& field = *m_ui->HiddenSSIDText;
    field.setMinimumWidth(field.fontMetrics().horizontalAdvance(QString(NetworkName::maxLength + 2, u'n')));
    connect(m_ui->buttons, &QDialogButtonBox::accepted, this, [this] { OnOK(); });
    connect(m_ui->buttons, &QDialogButtonBox::rejected, this, [this] { OnCANCEL(); });
}

HiddenSSIDController::~HiddenSSIDController() = default;

void HiddenSSIDController::OnOK()
{
    traceEntry(className, "OnOK");
    SiteSurvey.ReceiveHiddenSSID(NetworkName::fromText(m_ui->HiddenSSIDText->text()).truncated());
    m_sheets.stopModalWithCode(sheetAccepted);
}

void HiddenSSIDController::OnCANCEL()
{
    traceEntry(className, "OnCANCEL");
    m_sheets.stopModalWithCode(sheetCancelled);
}

void HiddenSSIDController::setNetwork(const QString& bssid)
{
    const QString text = tr("The network at %1 does not send its name. Type the name to join it.").arg(bssid);
    m_ui->explanation->setText(text);
    setAccessibleDescription(text); // read out when the sheet opens
}

void HiddenSSIDController::focusName()
{
    m_ui->HiddenSSIDText->setFocus();
    m_ui->HiddenSSIDText->selectAll();
}
