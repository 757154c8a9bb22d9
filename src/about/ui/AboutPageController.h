#pragma once

#include "about/BrowserLauncher.h"
#include "app/shared/Pages.h"

#include <QString>
#include <QUrl>
#include <QWidget>

#include <functional>
#include <memory>

class AlertPanels;
class VX7100Access;

namespace Ui {
class AboutPage;
}

// Opens an address in a browser. Calls the second argument, at once or later, if no browser could be started.
using UrlOpener = std::function<void(const QUrl&, std::function<void()>)>;

// The about page. Shows the versions and dates of the utility and the driver, the EEPROM version and MAC address of the
// card, and a link to the maker's web site.
class AboutPageController final : public QWidget, public AboutPage {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(AboutPageController)

public:
    // The adapter and the alerts must outlive the page. root is prepended to the fixed paths of the property lists, for
    // tests.
    AboutPageController(VX7100Access& adapter, AlertPanels& alerts, QUrl makerUrl, UrlOpener opener = openInBrowser,
        QString root = QString(), QWidget* parent = nullptr);
    ~AboutPageController() override;

    void awakeFromNib();

    // Updates all fields. Does nothing and sends no request if the utility's property list is missing.
    void GetAllInformation() override;
    void OpenQuorvaneWeb();

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void reportMissingBrowser();

    VX7100Access& Adapter;
    AlertPanels& m_alerts;
    QUrl m_makerUrl;
    UrlOpener m_opener;
    QString m_root;
    std::unique_ptr<Ui::AboutPage> m_ui;
};
