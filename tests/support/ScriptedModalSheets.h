#pragma once

#include "platform/ui/ModalSheets.h"

#include <QDialog>

#include <deque>
#include <functional>
#include <optional>
#include <vector>

// Runs a sheet by passing it to the next scripted user, who fills it in and presses a button. A sheet that is not
// stopped, or for which no user is left, ends as cancelled.
class ScriptedModalSheets final : public ModalSheets {
public:
    using User = std::function<void(QDialog&)>;

    [[nodiscard]] int runModalForWindow(QDialog& sheet, QWidget& /*mainWindow*/) override
    {
        shown.push_back(sheet.objectName());
        m_code.reset();
        ++m_running;
        sheet.show();
        if (!users.empty()) {
            const User user = users.front();
            users.pop_front();
            user(sheet);
        }
        sheet.hide();
        --m_running;
        return m_code.value_or(sheetCancelled);
    }

    void stopModalWithCode(int code) override
    {
        m_code = code;
        stops.push_back(code);
    }

    [[nodiscard]] bool isRunning() const override { return m_running > 0; }

    std::deque<User> users;
    std::vector<QString> shown; // object names of the sheets, in order
    std::vector<int> stops;

private:
    std::optional<int> m_code;
    int m_running { 0 };
};
