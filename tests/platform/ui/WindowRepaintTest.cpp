// What is on the screen of a real window system while a wait blocks the event loop. The offscreen platform repaints more
// than a real one, so these tests prove nothing there.

#include "platform/ui/TableView.h"
#include "platform/ui/WindowTickClock.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

// Takes a picture of the window on the screen during the wait.
class PhotographingClock final : public TickClock {
public:
    explicit PhotographingClock(QWidget& window)
        : m_window(window)
    {
    }

    void Delay(std::uint32_t /*numTicks*/) override { picture = pictureOf(m_window); }
    [[nodiscard]] std::chrono::nanoseconds elapsed() const override { return {}; }

    static QImage pictureOf(QWidget& window)
    {
        return window.screen()->grabWindow(window.winId()).toImage().convertToFormat(QImage::Format_RGB32);
    }

    QImage picture;

private:
    QWidget& m_window;
};

class WindowRepaintTest : public testing::Test {
protected:
    WindowRepaintTest()
    {
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(table);
        table->setEmptyTextSource([this] { return emptyText; });
        window.resize(400, 300);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        QTest::qWait(200); // until the window manager is done with the window
    }

    void SetUp() override { ASSERT_EQ(QGuiApplication::platformName(), u"xcb"_qs); }

    QString emptyText { u"before"_qs };
    QWidget window;
    TableView* table { new TableView(&window) };
};

TEST_F(WindowRepaintTest, TextWithoutAChangeSignalIsOnTheScreenDuringAWait)
{
    PhotographingClock clock(window);
    const QImage before = PhotographingClock::pictureOf(window);
    ASSERT_FALSE(before.isNull());
    emptyText = u"Searching for networks"_qs;
    WindowTickClock(clock).Delay(ticksPerSecond);
    const QImage during = clock.picture;
    EXPECT_NE(during, before);
    table->viewport()->update();
    QTest::qWait(200);
    EXPECT_EQ(during, PhotographingClock::pictureOf(window)) << "all of it was painted";
}

TEST_F(WindowRepaintTest, ShortWaitLeavesTheScreenUnchanged)
{
    PhotographingClock clock(window);
    const QImage before = PhotographingClock::pictureOf(window);
    emptyText = u"Searching for networks"_qs;
    WindowTickClock(clock).Delay(ticksPerSecond - 1);
    EXPECT_EQ(clock.picture, before);
}

} // namespace
