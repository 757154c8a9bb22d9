#pragma once

#include "app/shared/Pages.h"

#include <QString>
#include <QUrl>
#include <QWidget>

#include <functional>
#include <memory>

class VX7100Access;

namespace Ui {
class AboutPage;
}

// Hands an address to the desktop's browser; false when nothing took it.
using UrlOpener = std::function<bool(const QUrl&)>;
[[nodiscard]] bool openInBrowser(const QUrl& url);

// The about page: versions and dates of the utility and the driver, the card's EEPROM version and MAC address, and a
// link to the maker.
class AboutPageController final : public QWidget, public AboutPage {
    Q_OBJECT

public:
    // The adapter outlives the page. The root stands before the fixed paths of the property lists; only tests have one.
    AboutPageController(VX7100Access& adapter, QUrl makerUrl, UrlOpener opener = openInBrowser,
        QString root = QString(), QWidget* parent = nullptr);
    ~AboutPageController() override;
    AboutPageController(const AboutPageController&) = delete;
    AboutPageController& operator=(const AboutPageController&) = delete;

    void awakeFromNib();

    // Fills the page. Where the utility is not installed at its place nothing changes, and the driver is not asked.
    void GetAllInformation() override;
    void OpenQuorvaneWeb();

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void alignColumns();

    VX7100Access& Adapter;
    QUrl m_makerUrl;
    UrlOpener m_opener;
    QString m_root;
    std::unique_ptr<Ui::AboutPage> m_form;
};
