#include "profiles/ui/ChannelBox.h"

#include "driver/records/ChannelTable.h"

namespace {

constexpr int lastOfferedChannel = 14; // of those whose rows of ChannelFreqTable are in their order
const int lastChannel = ChannelFreqTable.back().channel;

} // namespace

ChannelBox::ChannelBox(QWidget* parent)
    : ComboBox(parent)
{
    offerChannelsUpTo(lastOfferedChannel);
}

void ChannelBox::offerChannelsUpTo(int channel)
{
    for (int next = numberOfItems() + 1; next <= channel; ++next)
        addItemWithObjectValue(QString::number(next));
}

void ChannelBox::selectChannel(int index)
{
    if (index < lastChannel)
        offerChannelsUpTo(index + 1);
    selectItemAtIndex(index);
}
