#pragma once

#include "platform/ui/ComboBox.h"

// The radio channels by their numbers: item n is channel n + 1.
class ChannelBox final : public ComboBox {
    Q_OBJECT

public:
    explicit ChannelBox(QWidget* parent = nullptr);

    // A channel beyond those that are offered at first belongs to a network or a profile that has it already, and must
    // not be lost by opening it: the list grows as far, so that every item still stands at its number. Nothing is
    // selected for an index that no channel has.
    void selectChannel(int index);

private:
    void offerChannelsUpTo(int channel);
};
