#include "about/ui/AboutPageController.h"

#include "about/BundleInformation.h"
#include "about/VersionTexts.h"
#include "app/shared/Trace.h"
#include "driver/MacAddressText.h"
#include "driver/VX7100Access.h"
#include "driver/records/NdisRecords.h"
#include "driver/records/Oids.h"
#include "platform/AlertPanels.h"
#include "platform/ui/CaptionAlignment.h"
#include "platform/ui/Images.h"
#include "ui_AboutPage.h"

#include <QEvent>
#include <QFileInfo>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace {

constexpr char className[] = "AboutPageController";

} // namespace

AboutPageController::AboutPageController(
    VX7100Access& adapter, AlertPanels& alerts, QUrl makerUrl, UrlOpener opener, QString root, QWidget* parent)
    : QWidget(parent)
    , Adapter(adapter)
    , m_alerts(alerts)
    , m_makerUrl(std::move(makerUrl))
    , m_opener(std::move(opener))
    , m_root(std::move(root))
    , m_ui(std::make_unique<Ui::AboutPage>())
{
    traceEntry(className, "init");
    m_ui->setupUi(this);
    m_ui->QuorvanePicture->setImage(imageNamed(u"QUORVANE"));
    alignCaptions(*this);
}

AboutPageController::~AboutPageController() = default;

void AboutPageController::awakeFromNib()
{
    traceEntry(className, "awakeFromNib");
    m_ui->QuorvaneWWW->setToolTip(tr("Open %1 in the browser").arg(m_makerUrl.toDisplayString()));
    connect(m_ui->QuorvaneWWW, &QPushButton::clicked, this, [this] { OpenQuorvaneWeb(); });
}

void AboutPageController::GetAllInformation()
{
    traceEntry(className, "GetAllInformation");
    if (!QFileInfo::exists(utilityInformationPath(m_root)))
        return;
    const BundleInformation utility = bundleInformation(utilityInformationPath(m_root));
    const BundleInformation driver = bundleInformation(driverInformationPath(m_root));
    m_ui->QvConfigVersion->setText(utility.version);
    m_ui->QvConfigDate->setText(utility.date);
    m_ui->DriverVersion->setText(driver.version);
    m_ui->DriverDate->setText(driver.date);

    EepromVersion eeprom {};
    (void)queryRecord(Adapter, VX_OID_802_11_EEPROM_VERSION, eeprom);
    m_ui->EEPROMVersion->setText(eepromVersionText(eeprom));

    MacAddress address {};
    (void)queryRecord(Adapter, OID_802_3_CURRENT_ADDRESS, address);
    m_ui->MacAddress->setText(macAddressText(address));
}

void AboutPageController::OpenQuorvaneWeb()
{
    traceEntry(className, "OpenQuorvaneWeb");
    const QPointer<AboutPageController> page(this);
    m_opener(m_makerUrl, [page] {
        if (page)
            page->reportMissingBrowser();
    });
}

void AboutPageController::reportMissingBrowser()
{
    m_alerts.NSRunAlertPanel(tr("The web site could not be opened."),
        tr("No web browser was found. Install one, or open this address on another device: %1")
            .arg(m_makerUrl.toDisplayString()),
        QStringLiteral("OK"));
}

// The notice wraps in a narrow window. The minimum size of the layout includes only some of its lines.
QSize AboutPageController::minimumSizeHint() const
{
    const QSize size = QWidget::minimumSizeHint();
    return { size.width(), std::max(size.height(), layout()->totalMinimumHeightForWidth(size.width())) };
}

void AboutPageController::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        alignCaptions(*this);
}
