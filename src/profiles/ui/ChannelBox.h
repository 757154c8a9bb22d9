#pragma once

#include "platform/ui/ComboBox.h"

// The radio channels by their numbers: item n is channel n + 1. The items are always all of them, so that a network or
// a profile on any channel shows it and keeps it; but the user can choose only those that a new network may be given,
// 1 to 14: the others do not appear in the list, and the keyboard passes over them.
class ChannelBox final : public ComboBox {
    Q_OBJECT

public:
    explicit ChannelBox(QWidget* parent = nullptr);

    void showPopup() override;

private:
    void withdraw(int index);
};
