#include "app/MainWindow.h"

#include "app/StartupNotification.h"
#include "app/WindowPlacement.h"
#include "platform/ui/Images.h"
#include "platform/ui/PageScrollArea.h"
#include "ui_MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeySequence>
#include <QScreen>
#include <QShortcut>

namespace {

// In font metrics, so that the size suits every font and screen.
QSize defaultSize(const QWidget& window)
{
    constexpr int charactersAcross = 165;
    constexpr int linesDown = 38;
    const QFontMetrics metrics = window.fontMetrics();
    const QSize preferred(metrics.averageCharWidth() * charactersAcross, metrics.height() * linesDown);
    return preferred.boundedTo(window.screen()->availableSize()).expandedTo(window.minimumSizeHint());
}

} // namespace

MainWindow::MainWindow(WindowSettings& settings, QWidget* parent)
    : QMainWindow(parent)
    , m_settings(settings)
    , m_ui(std::make_unique<Ui::MainWindow>())
{
    m_ui->setupUi(this);
    setWindowTitle(QApplication::applicationDisplayName());
    setWindowIcon(applicationIcon());
    auto* const quitKey = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q), this);
    connect(quitKey, &QShortcut::activated, this, &QWidget::close);
    // A page remembers its focus, so this runs each time that it comes to the front.
    connect(m_ui->TabView, &QTabWidget::currentChanged, this, [this] {
        if (auto* const page = m_ui->TabView->currentWidget()->findChild<PageScrollArea*>())
            page->leaveButtons();
    });
    if (!restoreWindowPlacement(m_settings, *this))
        resize(defaultSize(*this));
}

MainWindow::~MainWindow() = default;

QTabWidget& MainWindow::tabView() const
{
    return *m_ui->TabView;
}

SaveReport& MainWindow::saveReport() const
{
    return *m_ui->saveFailures;
}

void MainWindow::setPage(Page page, QWidget* content)
{
    QWidget* const body = tabView().widget(static_cast<int>(page));
    const auto placeholders = body->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    qDeleteAll(placeholders);
    body->layout()->addWidget(new PageScrollArea(*content, PageScrollArea::MinWidth::Any, body));
    body->layout()->setContentsMargins(0, 0, 0, 0); // the page has its own margins
}

void MainWindow::bringToFront(const QByteArray& activationToken)
{
    // Qt reads the token from the environment when it activates a window, but only on Wayland.
    if (!activationToken.isEmpty() && QApplication::platformName().startsWith(u"wayland"))
        qputenv("XDG_ACTIVATION_TOKEN", activationToken);
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    activateForLaunch(*windowHandle(), activationToken);
    if (QWidget* const sheet = QApplication::activeModalWidget()) {
        sheet->raise();
        sheet->activateWindow();
    }
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    saveWindowPlacement(m_settings, *this);
    QMainWindow::closeEvent(event);
}
