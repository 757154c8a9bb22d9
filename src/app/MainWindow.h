#pragma once

#include <QMainWindow>

#include <memory>

class QSettings;
class QTabWidget;

namespace Ui {
class MainWindow;
}

// The one window: six tabs, each with the page that was set for it or, until then, a line saying that it is empty.
class MainWindow final : public QMainWindow {
    Q_OBJECT

public:
    // In the order of the tabs.
    enum class Page { SiteSurvey, Profiles, LinkStatus, Statistics, AdvancedSettings, About };

    // The defaults outlive the window; its place is read from them now and written when it closes.
    explicit MainWindow(QSettings& defaults, QWidget* parent = nullptr);
    ~MainWindow() override;
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    [[nodiscard]] QTabWidget& tabView() const;
    // The body of a tab that stays the window's own; a controller of the page becomes its only content.
    void setPage(Page page, QWidget* content);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QSettings& m_defaults;
    std::unique_ptr<Ui::MainWindow> m_form;
};
