#include "platform/ui/WindowTickClock.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

class PaintCounter final : public QWidget {
public:
    int painted { 0 };

protected:
    void paintEvent(QPaintEvent* /*event*/) override { ++painted; }
};

// Records the state of the window during the wait.
class ObservingClock final : public TickClock {
public:
    explicit ObservingClock(const PaintCounter& window)
        : m_window(window)
    {
    }

    void Delay(std::uint32_t numTicks) override
    {
        ticks = numTicks;
        paintedBefore = m_window.painted;
        waitCursor
            = QApplication::overrideCursor() != nullptr && QApplication::overrideCursor()->shape() == Qt::WaitCursor;
    }

    [[nodiscard]] std::chrono::nanoseconds elapsed() const override { return {}; }

    std::uint32_t ticks { 0 };
    int paintedBefore { 0 };
    bool waitCursor { false };

private:
    const PaintCounter& m_window;
};

class WindowTickClockTest : public testing::Test {
protected:
    WindowTickClockTest()
    {
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        QCoreApplication::processEvents();
        window.painted = 0;
    }

    PaintCounter window;
    ObservingClock observer { window };
    WindowTickClock clock { observer };
};

TEST_F(WindowTickClockTest, ShowsWaitCursorAndPaintsBeforeWaitOfOneSecond)
{
    clock.Delay(60);
    EXPECT_EQ(observer.ticks, 60U);
    EXPECT_TRUE(observer.waitCursor);
    EXPECT_GT(observer.paintedBefore, 0);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(WindowTickClockTest, ChangesNothingForShortWait)
{
    clock.Delay(59);
    EXPECT_EQ(observer.ticks, 59U);
    EXPECT_FALSE(observer.waitCursor);
    EXPECT_EQ(observer.paintedBefore, 0);
}

TEST_F(WindowTickClockTest, NeverFiresTimers)
{
    bool fired = false;
    QTimer::singleShot(0, &window, [&fired] { fired = true; });
    clock.Delay(120);
    EXPECT_FALSE(fired);
}

} // namespace
