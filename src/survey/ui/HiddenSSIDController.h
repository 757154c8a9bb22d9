#pragma once

#include <QDialog>

#include <memory>

class HiddenSSIDReceiver;
class ModalSheets;

namespace Ui {
class HiddenSSID;
}

// Asks for the name of a network that does not send it. Stops with 1 for OK and 0 for Cancel.
class HiddenSSIDController final : public QDialog {
    Q_OBJECT

public:
    HiddenSSIDController(ModalSheets& sheets, HiddenSSIDReceiver& siteSurvey, QWidget* parent = nullptr);
    ~HiddenSSIDController() override;
    HiddenSSIDController(const HiddenSSIDController&) = delete;
    HiddenSSIDController& operator=(const HiddenSSIDController&) = delete;

    // Hands the name back as it is, cut at 32 bytes; nothing else is asked of it.
    void OnOK();
    void OnCANCEL();
    // The keyboard goes to the name; one typed before is selected, so that typing replaces it.
    void focusName();

private:
    ModalSheets& m_sheets;
    HiddenSSIDReceiver& SiteSurvey;
    std::unique_ptr<Ui::HiddenSSID> m_form;
};
