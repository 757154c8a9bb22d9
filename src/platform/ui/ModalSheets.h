#pragma once

class QDialog;
class QWidget;

inline constexpr int sheetCancelled = 0;
inline constexpr int sheetAccepted = 1;

// Sheets run modally over a window. Timers keep firing meanwhile.
class ModalSheets {
public:
    virtual ~ModalSheets() = default;
    // Begins the sheet over the window, runs it until its modal run is stopped, ends it and orders it out; it can
    // be run again. Returns the code it was stopped with. Escape and the closing of the sheet press its Cancel
    // button; in a sheet that has none they stop it with sheetCancelled.
    [[nodiscard]] virtual int runModalForWindow(QDialog& sheet, QWidget& mainWindow) = 0;
    // Stops the innermost sheet that is running; harmless when none is.
    virtual void stopModalWithCode(int code) = 0;
};
