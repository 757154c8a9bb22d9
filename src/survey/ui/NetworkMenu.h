#pragma once

#include <QMenu>

// The menu of the selected network.
class NetworkMenu final : public QMenu {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(NetworkMenu)

public:
    // Names the actions as the buttons do. The key of the copy action works in the views and their children.
    NetworkMenu(const QString& connectText, const QString& addProfileText, QWidget& views);

    // Closes the menu as well.
    void setActionsEnabled(bool enabled);

Q_SIGNALS:
    void connectChosen();
    void addProfileChosen();
    void copyChosen();
};
