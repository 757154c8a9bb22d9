#pragma once

#include <QDialog>

#include <memory>

class HiddenSSIDReceiver;
class ModalSheets;

namespace Ui {
class HiddenSSID;
}

// Asks for the name of a hidden network. Stops with 1 for OK and 0 for Cancel.
class HiddenSSIDController final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HiddenSSIDController)

public:
    HiddenSSIDController(ModalSheets& sheets, HiddenSSIDReceiver& siteSurvey, QWidget* parent = nullptr);
    ~HiddenSSIDController() override;

    // Returns the name, truncated to 32 bytes and not checked otherwise.
    void OnOK();
    void OnCANCEL();
    // Says in the sheet which network it asks for, by the address of its access point.
    void setNetwork(const QString& bssid);
    // Focuses the name and selects a previous one, so that typing replaces it.
    void focusName();

private:
    ModalSheets& m_sheets;
    HiddenSSIDReceiver& SiteSurvey;
    std::unique_ptr<Ui::HiddenSSID> m_ui;
};
