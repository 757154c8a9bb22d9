#pragma once

#include "platform/ui/ComboBox.h"

// The radio channels by number: item n is channel n + 1. The box has an item for every channel, so that it can show and
// save any channel of a network or profile. The user can select only the channels of a new network, 1 to 14: the other
// items are hidden in the list, and the keyboard skips them.
class ChannelBox final : public ComboBox {
    Q_OBJECT

public:
    explicit ChannelBox(QWidget* parent = nullptr);

    void showPopup() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void hideItem(int index);
    // A key in the open list while none of its items is current. Returns true if the key was handled.
    [[nodiscard]] bool handleKeyWithoutCurrentItem(int key);
};
