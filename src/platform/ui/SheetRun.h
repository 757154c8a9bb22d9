#pragma once

#include <vector>

class ModalSheets;
class QDialog;
class QPushButton;
class QWidget;

// Runs a sheet over the window of a page and returns its stop code. The actions of the page are disabled meanwhile,
// because assistive technology can press them; afterwards the widget that had the focus has it again.
[[nodiscard]] int runSheetOverPage(
    ModalSheets& sheets, QDialog& sheet, const QWidget& page, std::vector<QPushButton*> actions);
