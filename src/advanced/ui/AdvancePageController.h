#pragma once

#include "advanced/AdvancedSettings.h"
#include "app/shared/Pages.h"
#include "platform/store/PropertyList.h"

#include <QDir>
#include <QString>
#include <QWidget>

#include <memory>
#include <optional>

class AlertPanels;
class AssertionHandler;
class SaveReport;
class VX7100Access;

namespace Ui {
class AdvancePage;
}

// The advanced settings page. Only Apply sends the settings to the driver and writes the settings file; the device
// watch calls it for every card that it finds. The radio switch takes effect immediately.
class AdvancePageController final : public QWidget, public AdvancePage {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(AdvancePageController)

public:
    // Arguments passed by reference must outlive the page, except homePath, the home directory of the settings file.
    AdvancePageController(VX7100Access& adapter, AlertPanels& alerts, AssertionHandler& assertions, SaveReport& saves,
        const QString& homePath = QDir::homePath(), QWidget* parent = nullptr);
    ~AdvancePageController() override;

    // Loads and shows the settings file. If it is missing or unreadable, all settings are 0.
    void awakeFromNib();

    // Sends the settings to the driver and stores them. Stores nothing if a failed assertion ends the operation.
    void OnApply() override;
    // Shows the settings as last loaded or stored. Sends no requests.
    void OnReset();
    void OnSelChangeWirelessMode();
    void OnTxRate();
    void OnSelBGProtection();
    void OnTxBurst();
    void OnAdHocUseOFDM();
    void EnableButton();
    void DisabledButton();
    void RadioStatus() override;
    void ForgetCard() override;
    void ShowCard() override;
    // Switches the radio and scans, which takes 2 s.
    void OnRadioSwitch();

private:
    void connectControls();
    void store();
    void readFirstRecord();
    void showSettings();
    [[nodiscard]] bool rebuildRates();

    VX7100Access& Adapter;
    AlertPanels& m_alerts;
    AssertionHandler& m_assertions;
    SaveReport& m_saves;
    std::unique_ptr<Ui::AdvancePage> m_ui;
    AdvancedSettings m_settings;
    bool m_switchedForThisCard { false };
    bool bInitDlg { true };
    PropertyArray records;
    QString ProfileSettingFile;
};
