#pragma once

class QDialog;
class QWidget;

inline constexpr int sheetCancelled = 0;
inline constexpr int sheetAccepted = 1;

// Sheets run modally over a window. Timers keep firing meanwhile.
class ModalSheets {
public:
    virtual ~ModalSheets() = default;
    // Shows the sheet over the window, runs it until it is stopped, hides it and returns the stop code. A sheet can be
    // run again. Escape and closing the sheet click its Cancel button; without one, they stop it with sheetCancelled.
    [[nodiscard]] virtual int runModalForWindow(QDialog& sheet, QWidget& mainWindow) = 0;
    // Stops the innermost running sheet; a no-op if there is none.
    virtual void stopModalWithCode(int code) = 0;
    // Assistive technology can press a button of a window that a sheet blocks for mouse and keyboard, so the pages ask.
    [[nodiscard]] virtual bool isRunning() const = 0;
};
