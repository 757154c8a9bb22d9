#include "platform/ui/AnnouncedLine.h"
#include "tests/profiles/ui/ProfilePageFixture.h"

#include <QAccessible>

namespace {

// The status line of the profile page, with scripted progress.
class ConnectionStatusTest : public ProfilePageFixture {
protected:
    ConnectionStatusTest() { haveProfiles({ sampleProfile(u"one"_qs), sampleProfile(u"two"_qs) }); }

    void activate()
    {
        table->selectRowNumber(1);
        press(u"Activate"_qs);
    }

    void begin(const QString& network = u"home"_qs) { connections.progress.begin(network, { .key = true }); }

    void fail()
    {
        for (int tick = 0; tick < 10; ++tick)
            connections.progress.tick(false, false);
        page.OnTimer();
    }

    [[nodiscard]] QString status() const { return line.isVisible() ? line.text() : QString(); }

    AnnouncedLine& line { *page.findChild<AnnouncedLine*>(u"connectionStatus"_qs) };
};

TEST_F(ConnectionStatusTest, FollowsTheActivationToItsFailureAndSuccess)
{
    EXPECT_EQ(status(), QString());
    begin();
    activate();
    EXPECT_EQ(status(), u"Connecting to “home”…"_qs);
    fail();
    EXPECT_TRUE(status().startsWith(u"No connection to “home”"_qs)) << qPrintable(status());
    connections.progress.tick(true, false);
    page.OnTimer();
    EXPECT_EQ(status(), QString());
}

TEST_F(ConnectionStatusTest, FollowsAnAutomaticActivation)
{
    activate();
    G_configFromProfile = 0;
    begin();
    page.CheckProfileSettingForConnect();
    EXPECT_EQ(status(), u"Connecting to “home”…"_qs);
}

TEST_F(ConnectionStatusTest, IsEmptyForAConnectionOfTheSiteSurvey)
{
    begin();
    activate();
    G_configFromProfile = 0;
    page.OnTimer();
    EXPECT_EQ(status(), QString());
}

TEST_F(ConnectionStatusTest, NamesTheRadioThatIsOff)
{
    begin();
    activate();
    G_bRadio = 0;
    fail();
    EXPECT_TRUE(status().contains(u"radio"_qs)) << qPrintable(status());
    EXPECT_FALSE(status().contains(u"key"_qs)) << qPrintable(status());
}

TEST_F(ConnectionStatusTest, SaysWhatAnActivationWithoutACardWaitsFor)
{
    G_bDeviceExist = 0;
    activate();
    EXPECT_TRUE(status().contains(u"when a wireless card is ready"_qs)) << qPrintable(status());
    press(u"Delete"_qs); // the active profile, but its connection stays in the queue
    EXPECT_TRUE(status().contains(u"when a wireless card is ready"_qs)) << qPrintable(status());
    connections.queued = false;
    page.OnTimer();
    EXPECT_EQ(status(), QString());
}

TEST_F(ConnectionStatusTest, SendsNoRequests)
{
    begin();
    activate();
    registry.forgetCalls();
    fail();
    EXPECT_TRUE(registry.oids().empty());
}

TEST_F(ConnectionStatusTest, IsAnnouncedEachTimeItChanges)
{
    begin();
    activate();
    QAccessibleInterface* const alert = QAccessible::queryAccessibleInterface(&line);
    EXPECT_EQ(alert->role(), QAccessible::AlertMessage);
    EXPECT_EQ(alert->text(QAccessible::Name), line.text());

    std::vector<QEvent::Type> events;
    class Observer final : public QObject {
    public:
        explicit Observer(std::vector<QEvent::Type>& events)
            : m_events(events)
        {
        }
        bool eventFilter(QObject* /*watched*/, QEvent* event) override
        {
            if (event->type() == QEvent::Show)
                m_events.push_back(event->type());
            return false;
        }

    private:
        std::vector<QEvent::Type>& m_events;
    } observer(events);
    line.installEventFilter(&observer);
    page.OnTimer();
    EXPECT_TRUE(events.empty()) << "an unchanged text is not announced again";
    fail();
    EXPECT_EQ(events.size(), 1u);
}

TEST_F(ConnectionStatusTest, DoesNotMoveTheListOrTheButtons)
{
    for (const int width : { 900, 600, 420 }) {
        connections.progress.reset();
        page.OnTimer();
        page.resize(width, 500);
        QCoreApplication::processEvents();
        const QRect list = table->geometry();
        const QRect button = page.findChild<QPushButton*>(u"Activate"_qs)->geometry();
        begin(QString(32, u'n'));
        activate();
        QCoreApplication::processEvents();
        EXPECT_EQ(table->geometry(), list) << width;
        fail();
        QCoreApplication::processEvents();
        EXPECT_EQ(table->geometry(), list) << width;
        EXPECT_EQ(page.findChild<QPushButton*>(u"Activate"_qs)->geometry(), button) << width;
        EXPECT_GE(line.height(), line.heightForWidth(line.width())) << "nothing is cut off";
    }
}

} // namespace
