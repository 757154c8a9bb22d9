#include "profiles/ui/ChannelBox.h"

#include "driver/records/ChannelTable.h"

#include <QListView>
#include <QStandardItemModel>

namespace {

constexpr int lastOfferedChannel = 14; // of those whose rows of ChannelFreqTable are in their order
const int lastChannel = ChannelFreqTable.back().channel;

} // namespace

ChannelBox::ChannelBox(QWidget* parent)
    : ComboBox(parent)
{
    for (int channel = 1; channel <= lastChannel; ++channel) {
        addItemWithObjectValue(QString::number(channel));
        if (channel > lastOfferedChannel)
            withdraw(channel - 1);
    }
}

void ChannelBox::showPopup()
{
    ComboBox::showPopup();
    // From a row that is not shown no key leads away.
    if (currentIndex() >= lastOfferedChannel)
        view()->setCurrentIndex(model()->index(lastOfferedChannel - 1, modelColumn()));
}

void ChannelBox::withdraw(int index)
{
    qobject_cast<QStandardItemModel*>(model())->item(index)->setEnabled(false);
    qobject_cast<QListView*>(view())->setRowHidden(index, true);
}
