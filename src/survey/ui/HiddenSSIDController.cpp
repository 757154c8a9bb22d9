#include "survey/ui/HiddenSSIDController.h"

#include "app/shared/Trace.h"
#include "platform/NetworkName.h"
#include "platform/ui/ModalSheets.h"
#include "survey/ui/SheetReceivers.h"
#include "ui_HiddenSSID.h"

namespace {

constexpr char className[] = "HiddenSSIDController";
constexpr qsizetype longestSsid = 32; // bytes, IEEE 802.11

} // namespace

HiddenSSIDController::HiddenSSIDController(ModalSheets& sheets, HiddenSSIDReceiver& siteSurvey, QWidget* parent)
    : QDialog(parent)
    , m_sheets(sheets)
    , SiteSurvey(siteSurvey)
    , m_form(std::make_unique<Ui::HiddenSSID>())
{
    m_form->setupUi(this);
    // A name of full length shows whole.
    QLineEdit& field = *m_form->HiddenSSIDText;
    field.setMinimumWidth(field.fontMetrics().horizontalAdvance(QString(longestSsid + 2, u'n')));
    connect(m_form->buttons, &QDialogButtonBox::accepted, this, [this] { OnOK(); });
    connect(m_form->buttons, &QDialogButtonBox::rejected, this, [this] { OnCANCEL(); });
}

HiddenSSIDController::~HiddenSSIDController() = default;

void HiddenSSIDController::OnOK()
{
    traceEntry(className, "OnOK");
    const QByteArray name = bytesFromText(m_form->HiddenSSIDText->text()).left(longestSsid);
    SiteSurvey.ReceiveHiddenSSID(name.toStdString());
    m_sheets.stopModalWithCode(sheetAccepted);
}

void HiddenSSIDController::OnCANCEL()
{
    traceEntry(className, "OnCANCEL");
    m_sheets.stopModalWithCode(sheetCancelled);
}

void HiddenSSIDController::focusName()
{
    m_form->HiddenSSIDText->setFocus();
    m_form->HiddenSSIDText->selectAll();
}
