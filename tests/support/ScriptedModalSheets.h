#pragma once

#include "platform/ui/ModalSheets.h"

#include <QDialog>

#include <deque>
#include <functional>
#include <optional>
#include <vector>

// Runs a sheet by handing it to the next of its users, who fills it in and presses a button. A sheet that its user does
// not stop ends as cancelled, and so does one that nobody is there for.
class ScriptedModalSheets final : public ModalSheets {
public:
    using User = std::function<void(QDialog&)>;

    [[nodiscard]] int runModalForWindow(QDialog& sheet, QWidget& /*mainWindow*/) override
    {
        shown.push_back(sheet.objectName());
        m_code.reset();
        sheet.show();
        if (!users.empty()) {
            const User user = users.front();
            users.pop_front();
            user(sheet);
        }
        sheet.hide();
        return m_code.value_or(sheetCancelled);
    }

    void stopModalWithCode(int code) override
    {
        m_code = code;
        stops.push_back(code);
    }

    std::deque<User> users;
    std::vector<QString> shown; // object names of the sheets that were run
    std::vector<int> stops;

private:
    std::optional<int> m_code;
};
