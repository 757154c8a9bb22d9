#include "survey/ui/ChannelView.h"

#include "platform/ui/FaintText.h"
#include "survey/ChannelViewText.h"
#include "survey/ui/ChannelViewPainter.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QTextDocument>
#include <QToolTip>

#include <utility>

namespace {

constexpr QSize preferredSizeInCharacters { 64, 14 };
constexpr QSize minimumSizeInCharacters { 30, 8 };

QAccessibleInterface* makeAccessibleView(const QString& className, QObject* object)
{
    if (className != QLatin1String(ChannelView::staticMetaObject.className()))
        return nullptr;
    return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Chart);
}

std::optional<ChannelStep> stepOfKey(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return ChannelStep::LowerFrequency;
    case Qt::Key_Right:
        return ChannelStep::HigherFrequency;
    case Qt::Key_Up:
        return ChannelStep::Stronger;
    case Qt::Key_Down:
        return ChannelStep::Weaker;
    case Qt::Key_Home:
        return ChannelStep::First;
    case Qt::Key_End:
        return ChannelStep::Last;
    default:
        return std::nullopt;
    }
}

} // namespace

ChannelView::ChannelView(QWidget* parent)
    : QFrame(parent)
{
    static const bool factoryInstalled = [] {
        QAccessible::installFactory(makeAccessibleView);
        return true;
    }();
    (void)factoryInstalled;
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setFocusPolicy(Qt::StrongFocus);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setAccessibleName(tr("Channels"));
}

void ChannelView::setNetworks(std::vector<ChannelViewNetwork> networks, int joinedRow)
{
    m_model = { std::move(networks), joinedRow, -1 };
    m_pressedRow = -1;
    showChanges();
}

void ChannelView::setJoinedRow(int row)
{
    if (std::exchange(m_model.joinedRow, row) != row)
        showChanges();
}

void ChannelView::setSelectedRow(int row)
{
    if (std::exchange(m_model.selectedRow, row) != row)
        showChanges();
}

void ChannelView::setEmptyText(const QString& text)
{
    setEmptyTextSource([text] { return text; });
}

void ChannelView::setEmptyTextSource(std::function<QString()> source)
{
    m_emptyTextSource = std::move(source);
    updateEmptyText();
}

void ChannelView::updateEmptyText()
{
    showChanges();
}

QString ChannelView::emptyText() const
{
    return m_model.networks.empty() && m_emptyTextSource ? m_emptyTextSource() : QString();
}

void ChannelView::showChanges()
{
    const QString description = m_model.networks.empty() ? emptyText() : channelViewDescription(m_model);
    if (accessibleDescription() != description)
        setAccessibleDescription(description);
    update();
}

QSize ChannelView::sizeHint() const
{
    return { fontMetrics().averageCharWidth() * preferredSizeInCharacters.width(),
        fontMetrics().height() * preferredSizeInCharacters.height() };
}

QSize ChannelView::minimumSizeHint() const
{
    return { fontMetrics().averageCharWidth() * minimumSizeInCharacters.width(),
        fontMetrics().height() * minimumSizeInCharacters.height() };
}

ChannelViewGeometry ChannelView::geometryOfContents() const
{
    return { QRectF(contentsRect()), fontMetrics(), m_model };
}

const ChannelViewNetwork* ChannelView::networkAtPoint(const QPointF& point) const
{
    const ChannelViewGeometry geometry = geometryOfContents();
    return networkAt(point, geometry, placeChannelViewLabels(geometry, m_model, fontMetrics()));
}

bool ChannelView::isSelectionDrawn() const
{
    const ChannelViewNetwork* const selected = m_model.networkOfRow(m_model.selectedRow);
    return selected != nullptr && isDrawn(*selected);
}

void ChannelView::select(int row)
{
    if (row == m_model.selectedRow)
        return;
    setSelectedRow(row);
    Q_EMIT rowSelected(row);
}

void ChannelView::paintEvent(QPaintEvent* event)
{
    QFrame::paintEvent(event);
    QPainter painter(this);
    // A selection stays as strong while another window is active, as in the list.
    const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    const ChannelViewPainter viewPainter(painter, palette(), group);
    const ChannelViewGeometry geometry = geometryOfContents();
    if (m_model.networks.empty())
        paintFaintText(painter, *this, contentsRect(), emptyText());
    else
        viewPainter.paint(m_model, geometry, placeChannelViewLabels(geometry, m_model, fontMetrics()));
    if (hasFocus())
        viewPainter.paintFocusFrame(QRectF(contentsRect()), geometry);
}

void ChannelView::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)
        return;
    updateGeometry();
    update();
}

bool ChannelView::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QFrame::event(event);
    showToolTip(*static_cast<QHelpEvent*>(event));
    return true;
}

void ChannelView::showToolTip(const QHelpEvent& event)
{
    const ChannelViewNetwork* const network = networkAtPoint(QPointF(event.pos()));
    if (network == nullptr) {
        QToolTip::hideText();
        return;
    }
    // A name is plain text, whatever markup it contains.
    const QString text = channelNetworkText(*network, network->row == m_model.joinedRow);
    QToolTip::showText(event.globalPos(), Qt::convertFromPlainText(text), this);
}

void ChannelView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QFrame::mousePressEvent(event);
        return;
    }
    const ChannelViewNetwork* const network = networkAtPoint(event->position());
    m_pressedRow = network != nullptr ? network->row : -1;
    if (m_pressedRow >= 0)
        select(m_pressedRow);
}

void ChannelView::mouseDoubleClickEvent(QMouseEvent* event)
{
    // The row of the first press: the names may have moved since.
    if (event->button() == Qt::LeftButton && m_pressedRow >= 0)
        Q_EMIT rowActivated(m_pressedRow);
}

void ChannelView::keyPressEvent(QKeyEvent* event)
{
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isPlain && isReturn && isSelectionDrawn()) {
        Q_EMIT rowActivated(m_model.selectedRow);
        return;
    }
    const auto step = isPlain ? stepOfKey(event->key()) : std::nullopt;
    const int row = step ? rowAfterStep(m_model, *step) : -1;
    if (row >= 0)
        select(row);
    else
        QFrame::keyPressEvent(event);
}
