#include "profiles/ui/ChannelBox.h"

#include "driver/records/ChannelTable.h"

#include <QKeyEvent>
#include <QListView>
#include <QStandardItemModel>

namespace {

constexpr int lastSelectableChannel = 14; // up to here channel n is row n of ChannelFreqTable
const int lastChannel = ChannelFreqTable.back().channel;

} // namespace

ChannelBox::ChannelBox(QWidget* parent)
    : ComboBox(parent)
{
    for (int channel = 1; channel <= lastChannel; ++channel) {
        addItemWithObjectValue(QString::number(channel));
        if (channel > lastSelectableChannel)
            hideItem(channel - 1);
    }
    view()->installEventFilter(this);
}

void ChannelBox::showPopup()
{
    ComboBox::showPopup();
    if (currentIndex() < lastSelectableChannel)
        return;
    // The keyboard cannot leave a hidden row, and with another row as the current one Enter would change the channel.
    view()->setCurrentIndex({});
    view()->scrollToBottom();
}

bool ChannelBox::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == view() && event->type() == QEvent::KeyPress && !view()->currentIndex().isValid()
        && handleKeyWithoutCurrentItem(static_cast<QKeyEvent*>(event)->key()))
        return true;
    return ComboBox::eventFilter(watched, event);
}

bool ChannelBox::handleKeyWithoutCurrentItem(int key)
{
    switch (key) {
    case Qt::Key_Enter:
    case Qt::Key_Return:
    case Qt::Key_Select:
        hidePopup();
        return true;
    case Qt::Key_Up:
        view()->setCurrentIndex(model()->index(lastSelectableChannel - 1, modelColumn()));
        return true;
    default:
        return false;
    }
}

void ChannelBox::hideItem(int index)
{
    qobject_cast<QStandardItemModel*>(model())->item(index)->setEnabled(false);
    qobject_cast<QListView*>(view())->setRowHidden(index, true);
}
