#pragma once

#include <QMainWindow>

#include <memory>

class QTabWidget;
class SaveReport;
class WindowSettings;

namespace Ui {
class MainWindow;
}

// The main window: six tabs, each showing its page or, without one, a placeholder text.
class MainWindow final : public QMainWindow {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MainWindow)

public:
    // In tab order.
    enum class Page { SiteSurvey, Profiles, LinkStatus, Statistics, AdvancedSettings, About };

    // Restores the window's placement from the settings and saves it there on close. The settings outlive the window.
    explicit MainWindow(WindowSettings& settings, QWidget* parent = nullptr);
    ~MainWindow() override;

    [[nodiscard]] QTabWidget& tabView() const;
    // Shows the failures at the foot of the window.
    [[nodiscard]] SaveReport& saveReport() const;
    // Replaces the content of the page's tab.
    void setPage(Page page, QWidget* content);
    // Shows the window, or the sheet that is open, in front of other windows. The token lets it take the focus on
    // window systems that require one; it may be empty.
    void bringToFront(const QByteArray& activationToken);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    WindowSettings& m_settings;
    std::unique_ptr<Ui::MainWindow> m_ui;
};
