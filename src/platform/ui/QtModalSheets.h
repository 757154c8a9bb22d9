#pragma once

#include "platform/ui/ModalSheets.h"

#include <QPointer>

#include <vector>

class QDialog;

// Window-modal dialogs.
class QtModalSheets final : public ModalSheets {
public:
    [[nodiscard]] int runModalForWindow(QDialog& sheet, QWidget& mainWindow) override;
    void stopModalWithCode(int code) override;
    [[nodiscard]] bool isRunning() const override { return !m_running.empty(); }

private:
    std::vector<QPointer<QDialog>> m_running; // innermost last
};
