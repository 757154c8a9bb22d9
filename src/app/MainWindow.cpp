#include "app/MainWindow.h"

#include "app/WindowPlacement.h"
#include "platform/ui/Images.h"
#include "ui_MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeySequence>
#include <QScreen>
#include <QShortcut>

namespace {

// The first size of the window, in the font's own units, so that it suits every font and screen.
QSize defaultSize(const QWidget& window)
{
    constexpr int charactersAcross = 165;
    constexpr int linesDown = 38;
    const QFontMetrics metrics = window.fontMetrics();
    const QSize wished(metrics.averageCharWidth() * charactersAcross, metrics.height() * linesDown);
    return wished.boundedTo(window.screen()->availableSize()).expandedTo(window.minimumSizeHint());
}

} // namespace

MainWindow::MainWindow(QSettings& defaults, QWidget* parent)
    : QMainWindow(parent)
    , m_defaults(defaults)
    , m_form(std::make_unique<Ui::MainWindow>())
{
    m_form->setupUi(this);
    setWindowTitle(QApplication::applicationDisplayName());
    setWindowIcon(applicationIcon());
    auto* const quitKey = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q), this);
    connect(quitKey, &QShortcut::activated, this, &QWidget::close);
    if (!restoreWindowPlacement(m_defaults, *this))
        resize(defaultSize(*this));
}

MainWindow::~MainWindow() = default;

QTabWidget& MainWindow::tabView() const
{
    return *m_form->TabView;
}

void MainWindow::setPage(Page page, QWidget* content)
{
    QWidget* const body = tabView().widget(static_cast<int>(page));
    const auto placeholders = body->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    qDeleteAll(placeholders);
    body->layout()->addWidget(content);
    body->layout()->setContentsMargins(0, 0, 0, 0); // the page brings its own
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    saveWindowPlacement(m_defaults, *this);
    QMainWindow::closeEvent(event);
}
