#include "profiles/ui/ChannelBox.h"

#include "driver/records/ChannelTable.h"

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
}

void ChannelBox::showPopup()
{
    ComboBox::showPopup();
    // The keyboard cannot leave a hidden row.
    if (currentIndex() >= lastSelectableChannel)
        view()->setCurrentIndex(model()->index(lastSelectableChannel - 1, modelColumn()));
}

void ChannelBox::hideItem(int index)
{
    qobject_cast<QStandardItemModel*>(model())->item(index)->setEnabled(false);
    qobject_cast<QListView*>(view())->setRowHidden(index, true);
}
