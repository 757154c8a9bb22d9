#include "app/MainWindow.h"

#include "app/WindowPlacement.h"
#include "platform/store/WindowSettings.h"

#include <QApplication>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

class MainWindowTest : public testing::Test {
protected:
    void show(MainWindow& window)
    {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QTemporaryDir directory;
    WindowSettings settings { directory.filePath(u"settings.plist"_qs) };
};

TEST_F(MainWindowTest, HasSixTabsInOrder)
{
    const MainWindow window(settings);
    const QTabWidget& tabs = window.tabView();
    QStringList titles;
    for (int index = 0; index < tabs.count(); ++index)
        titles.push_back(tabs.tabText(index).remove(u'&'));
    EXPECT_EQ(titles,
        (QStringList { u"Site Survey"_qs, u"Profiles"_qs, u"Link Status"_qs, u"Statistics"_qs, u"Advanced Settings"_qs,
            u"About"_qs }));
    EXPECT_EQ(window.windowTitle(), QApplication::applicationDisplayName());
    EXPECT_FALSE(window.windowIcon().isNull());
}

TEST_F(MainWindowTest, PageReplacesThePlaceholder)
{
    MainWindow window(settings);
    auto* const content = new QPushButton(u"content"_qs);
    window.setPage(MainWindow::Page::Profiles, content);
    QWidget* const body = window.tabView().widget(1);
    EXPECT_TRUE(body->findChildren<QLabel*>().isEmpty());
    window.tabView().setCurrentIndex(1);
    show(window);
    EXPECT_TRUE(content->isVisible());
    EXPECT_TRUE(body->isAncestorOf(content));
}

TEST_F(MainWindowTest, AbsentPageShowsAPlaceholder)
{
    MainWindow window(settings);
    show(window);
    for (int index = 0; index < window.tabView().count(); ++index) {
        window.tabView().setCurrentIndex(index);
        const auto labels = window.tabView().widget(index)->findChildren<QLabel*>();
        ASSERT_EQ(labels.size(), 1);
        EXPECT_TRUE(labels.first()->isVisible());
        EXPECT_FALSE(labels.first()->text().isEmpty());
    }
}

TEST_F(MainWindowTest, SwitchesTabsWithTheKeyboard)
{
    MainWindow window(settings);
    show(window);
    QTest::keyClick(&window, Qt::Key_L, Qt::AltModifier);
    EXPECT_EQ(window.tabView().currentIndex(), 2);
    QTest::keyClick(&window, Qt::Key_S, Qt::AltModifier);
    EXPECT_EQ(window.tabView().currentIndex(), 0);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(window.tabView().currentIndex(), 1);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(window.tabView().currentIndex(), 0);
}

TEST_F(MainWindowTest, EveryTabHasItsOwnShortcut)
{
    const MainWindow window(settings);
    QSet<QChar> keys;
    for (int index = 0; index < window.tabView().count(); ++index) {
        const QString title = window.tabView().tabText(index);
        ASSERT_TRUE(title.contains(u'&'));
        keys.insert(title.at(title.indexOf(u'&') + 1).toUpper());
    }
    EXPECT_EQ(keys.size(), window.tabView().count());
}

TEST_F(MainWindowTest, ClosesWithCtrlQ)
{
    MainWindow window(settings);
    show(window);
    QTest::keyClick(&window, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(MainWindowTest, RestoresItsSize)
{
    QSize previous;
    {
        MainWindow window(settings);
        show(window);
        previous = window.size() - QSize(37, 23);
        window.resize(previous);
        window.close();
    }
    const MainWindow again(settings);
    EXPECT_EQ(again.size(), previous);
}

TEST_F(MainWindowTest, SettingsFileIsPrivate)
{
    MainWindow window(settings);
    show(window);
    window.close();
    const auto permissions = QFileInfo(directory.filePath(u"settings.plist"_qs)).permissions();
    EXPECT_FALSE(permissions.testAnyFlags(
        QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOwner));
    EXPECT_TRUE(permissions.testFlag(QFile::ReadOwner));
}

TEST_F(MainWindowTest, InvalidPlacementGivesTheDefaultSize)
{
    settings.setText(u"MainWindow/geometry"_qs, u"not a geometry"_qs);
    const MainWindow window(settings);
    EXPECT_GT(window.width(), window.fontMetrics().averageCharWidth() * 60);
    EXPECT_GT(window.height(), window.fontMetrics().height() * 20);
}

TEST_F(MainWindowTest, OnlyTheTabsLimitItsWidth)
{
    const MainWindow window(settings);
    const int tabs = window.tabView().tabBar()->sizeHint().width();
    EXPECT_LT(window.minimumSizeHint().width(), tabs + window.fontMetrics().averageCharWidth() * 10);
}

TEST_F(MainWindowTest, ComesToTheFrontFromAMinimizedState)
{
    MainWindow window(settings);
    show(window);
    window.showMinimized();
    window.bringToFront("token");
    EXPECT_FALSE(window.isMinimized());
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN")) << "only Wayland uses it";
}

} // namespace
