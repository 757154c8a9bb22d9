#include "platform/ui/PageScrollArea.h"
#include "tests/app/ApplicationFixture.h"

#include <QAbstractButton>
#include <QDialog>
#include <QTabBar>
#include <QTest>

namespace {

// The smallest supported screen, in logical pixels, less a title bar.
constexpr QSize smallWindow(640, 370);
constexpr QSize smallScreen(640, 400);

// The pages in the real window.
class PagesInWindowTest : public ApplicationFixture {
protected:
    PagesInWindowTest()
    {
        application.awakeFromNib();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key, Qt::AltModifier); }
    [[nodiscard]] static bool isOnButton() { return qobject_cast<QAbstractButton*>(QApplication::focusWidget()); }

    // The controls of the page that the keyboard reaches.
    [[nodiscard]] QList<QWidget*> controls(int page) const
    {
        QList<QWidget*> found = tabs.widget(page)->findChildren<QWidget*>();
        found.removeIf([](const QWidget* widget) {
            return !widget->isVisible() || !widget->isEnabled() || (widget->focusPolicy() & Qt::TabFocus) == 0;
        });
        return found;
    }

    MainWindow& window { application.window() };
    QTabWidget& tabs { window.tabView() };
    const std::vector<Qt::Key> keys { Qt::Key_S, Qt::Key_P, Qt::Key_L, Qt::Key_T, Qt::Key_V, Qt::Key_U };
};

TEST_F(PagesInWindowTest, ShortcutOfAPageLeavesNoButtonUnderSpace)
{
    for (std::size_t from = 0; from < keys.size(); ++from) {
        for (std::size_t to = 0; to < keys.size(); ++to) {
            press(keys[from]);
            controls(static_cast<int>(from)).first()->setFocus();
            press(keys[to]);
            ASSERT_EQ(tabs.currentIndex(), static_cast<int>(to));
            EXPECT_TRUE(from == to || !isOnButton()) << from << " to " << to;
        }
    }
}

TEST_F(PagesInWindowTest, ReturnToAPageDoesNotFocusItsButtonAgain)
{
    for (const char16_t* const name : { u"Radio", u"ResetCounter", u"QuorvaneWWW", u"dBm" }) {
        auto* const button = window.findChild<QAbstractButton*>(QStringView(name).toString());
        ASSERT_NE(button, nullptr);
        for (int page = 0; page < tabs.count(); ++page) {
            if (tabs.widget(page)->isAncestorOf(button))
                tabs.setCurrentIndex(page);
        }
        const int page = tabs.currentIndex();
        button->setFocus();
        ASSERT_TRUE(isOnButton()) << qPrintable(button->objectName());
        press(keys[0]);
        press(keys[static_cast<std::size_t>(page)]);
        EXPECT_EQ(tabs.currentIndex(), page);
        EXPECT_FALSE(isOnButton());
        registry.forgetCalls();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        EXPECT_TRUE(registry.oids().empty());
    }
}

TEST_F(PagesInWindowTest, WindowFitsOnASmallScreen)
{
    EXPECT_LE(window.minimumSizeHint().width(), smallWindow.width());
    EXPECT_LE(window.minimumSizeHint().height(), smallWindow.height());
    window.resize(smallWindow);
    EXPECT_EQ(window.size(), smallWindow);
}

TEST_F(PagesInWindowTest, EveryControlIsReachableOnASmallScreen)
{
    window.resize(smallWindow);
    for (int page = 0; page < tabs.count(); ++page) {
        tabs.setCurrentIndex(page);
        const QWidget* const viewport = tabs.widget(page)->findChild<PageScrollArea*>()->viewport();
        ASSERT_FALSE(controls(page).isEmpty());
        for (QWidget* const control : controls(page)) {
            control->setFocus(Qt::TabFocusReason);
            const QRect shown(control->mapTo(viewport, QPoint()), control->size());
            EXPECT_TRUE(viewport->rect().intersects(shown)) << qPrintable(control->objectName());
            EXPECT_TRUE(control->height() > viewport->height() || viewport->rect().contains(shown.center()))
                << qPrintable(control->objectName());
        }
    }
}

TEST_F(PagesInWindowTest, AllTabsAreVisibleAtTheSmallestWidth)
{
    window.resize(window.minimumSizeHint());
    const QTabBar& bar = *tabs.tabBar();
    for (int page = 0; page < bar.count(); ++page) {
        EXPECT_TRUE(bar.rect().contains(bar.tabRect(page))) << page;
        const QString title = bar.tabText(page).remove(u'&');
        EXPECT_LT(bar.fontMetrics().horizontalAdvance(title), bar.tabRect(page).width()) << qPrintable(title);
    }
}

TEST_F(PagesInWindowTest, SheetsFitOnASmallScreen)
{
    const auto sheets = window.findChildren<QDialog*>();
    for (const QDialog* const sheet : sheets) {
        EXPECT_LE(sheet->minimumSizeHint().width(), smallScreen.width()) << qPrintable(sheet->objectName());
        EXPECT_LE(sheet->minimumSizeHint().height(), smallWindow.height()) << qPrintable(sheet->objectName());
    }
}

} // namespace
