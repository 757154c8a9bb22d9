#pragma once

#include "advanced/AdvancedSettings.h"
#include "app/shared/Pages.h"
#include "platform/store/PropertyList.h"

#include <QDir>
#include <QString>
#include <QWidget>

#include <memory>

class AlertPanels;
class AssertionHandler;
class VX7100Access;

namespace Ui {
class AdvancePage;
}

// The advanced settings page. Its options reach the driver and the settings file by Apply alone, which the device watch
// calls for every card that it finds; the radio switch acts at once.
class AdvancePageController final : public QWidget, public AdvancePage {
    Q_OBJECT

public:
    // What is passed by reference outlives the page. The settings file lies under the home folder.
    AdvancePageController(VX7100Access& adapter, AlertPanels& alerts, AssertionHandler& assertions,
        const QString& homePath = QDir::homePath(), QWidget* parent = nullptr);
    ~AdvancePageController() override;
    AdvancePageController(const AdvancePageController&) = delete;
    AdvancePageController& operator=(const AdvancePageController&) = delete;

    // Loads the settings file and shows it. A missing or unreadable one reads as zeros.
    void awakeFromNib();

    // Sends the options to the driver and stores them. Where a failed assertion ends it, nothing is stored.
    void OnApply() override;
    // Shows the options as they were last loaded or stored; sends nothing.
    void OnReset();
    void OnSelChangeWirelessMode();
    void OnTxRate();
    void OnSelBGProtection();
    void OnTxBurst();
    void OnAdHocUseOFDM();
    void EnableButton();
    void DisabledButton();
    void RadioStatus() override;
    // Switches the radio, then scans, which takes 2 s.
    void OnRadioSwitch();

private:
    void connectControls();
    void readFirstRecord();
    void showSettings();
    [[nodiscard]] bool rebuildRates();

    VX7100Access& Adapter;
    AlertPanels& m_alerts;
    AssertionHandler& m_assertions;
    std::unique_ptr<Ui::AdvancePage> m_form;
    AdvancedSettings m_settings;
    bool bInitDlg { true };
    PropertyArray records;
    QString ProfileSettingFile;
};
