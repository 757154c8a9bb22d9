#include "tests/advanced/ui/AdvancePageFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <functional>
#include <utility>

namespace {

class AdvancePageStoring : public AdvancePageFixture {
protected:
    // Opens the page with this settings file.
    void openWithFile(const QByteArray& content)
    {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(settingsFile()).path()));
        QFile file(settingsFile());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
        file.close();
        open();
    }
    [[nodiscard]] QString unreadableFile() const { return settingsFile() + u".unreadable"_qs; }
};

// Calls a function when a widget is enabled or disabled.
class EnabledWatcher final : public QObject {
public:
    EnabledWatcher(QWidget& widget, std::function<void()> changed)
        : m_changed(std::move(changed))
    {
        widget.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::EnabledChange)
            m_changed();
        return false;
    }

private:
    std::function<void()> m_changed;
};

TEST_F(AdvancePageStoring, WritesFiveZerosIfThereIsNoFile)
{
    open();
    EXPECT_EQ(apply(), expectedApply({ .rates = mixedAutoRates }));
    EXPECT_EQ(traces, modeTrace(0, 0, 0));
    EXPECT_EQ(stored(), oneRecord(0, 0, 0, 0, 0));
    const auto permissions = QFile::permissions(settingsFile());
    EXPECT_FALSE(permissions.testAnyFlags(QFile::ReadGroup | QFile::ReadOther));
}

TEST_F(AdvancePageStoring, HappensAfterTheLastRequestAndBeforeTheButtonsAreDisabled)
{
    store(3, 1, 1, 0, 0);
    open();
    choose(u"TXrate", 4);
    const PropertyDictionaries before { record(3, 1, 1, 0, 0) };
    const PropertyDictionaries after { record(4, 1, 1, 0, 0) };
    std::vector<std::uint32_t> oids;
    registry.onCall = [&](const RecordedRegistryCall& call) {
        if (call.call == RegistryCall::IOConnectMethodStructureIStructureO)
            oids.push_back(call.index);
        EXPECT_EQ(stored(), before);
        EXPECT_TRUE(buttonsAreEnabled());
    };
    int timesDisabled = 0;
    const EnabledWatcher watcher(button(u"Apply"), [&] {
        ++timesDisabled;
        EXPECT_EQ(stored(), after);
    });
    (void)apply();
    EXPECT_EQ(oids,
        (std::vector<std::uint32_t> { VX_OID_802_11_PHY_MODE, VX_OID_802_11_STA_CONFIG, asSet(VX_OID_802_11_STA_CONFIG),
            asSet(OID_802_11_DESIRED_RATES) }));
    EXPECT_EQ(timesDisabled, 1);
    EXPECT_EQ(stored(), after);
    EXPECT_FALSE(buttonsAreEnabled());
}

TEST_F(AdvancePageStoring, NeedsNoCard)
{
    registry.serviceCount = 0;
    open();
    choose(u"TXrate", 2);
    EXPECT_EQ(apply(), Requests {});
    // Both queries read as zeros, which match the settings.
    EXPECT_EQ(traces, modeTrace(0, 0, 0));
    EXPECT_EQ(stored(), oneRecord(2, 0, 0, 0, 0));
    EXPECT_FALSE(buttonsAreEnabled());
    EXPECT_EQ(registry.held(), std::vector<std::uint32_t> {});
}

TEST_F(AdvancePageStoring, ReplacesOnlyTheFirstRecord)
{
    PropertyDictionary first = record(1, 0, 0, 0, 0);
    first.set(u"Comment"_qs, u"mine"_qs);
    ASSERT_TRUE(writeDictionariesFile(settingsFile(), { first, record(2, 2, 1, 1, 3) }));
    open();
    (void)apply();
    EXPECT_EQ(stored(), (PropertyDictionaries { record(1, 0, 0, 0, 0), record(2, 2, 1, 1, 3) }));
}

TEST_F(AdvancePageStoring, KeepsABackupOfAnUnreadableFile)
{
    openWithFile("<plist>broken");
    EXPECT_EQ(shown(), (Shown { 0, 0, 0, false, false }));
    (void)apply();
    EXPECT_EQ(stored(), oneRecord(0, 0, 0, 0, 0));
    QFile kept(unreadableFile());
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "<plist>broken");
}

TEST_F(AdvancePageStoring, PreservesAllOtherElements)
{
    const QByteArray others = "<string>mine</string><integer>5</integer>"
                              "<dict><key>Tx Rate</key><integer>7</integer></dict><array><true/></array>";
    openWithFile("<plist version=\"1.0\"><array><dict><key>Tx Rate</key><string>3</string></dict>" + others
        + "</array></plist>");
    EXPECT_EQ(shown(), (Shown { 0, 3, 0, false, false })) << "only the first record is used";
    choose(u"BGprotection", 2);
    (void)apply();

    const auto root = readPropertyListFile(settingsFile());
    ASSERT_TRUE(root && root->array());
    PropertyArray records = *root->array();
    EXPECT_EQ(dictionariesOf({ PropertyArray { records.front() } }), oneRecord(3, 2, 0, 0, 0));
    const auto expected = readPropertyList("<plist version=\"1.0\"><array>" + others + "</array></plist>");
    ASSERT_TRUE(expected);
    records.erase(records.begin());
    EXPECT_TRUE(PropertyValue { records } == *expected);
    EXPECT_FALSE(QFile::exists(unreadableFile())) << "the file was readable";
}

TEST_F(AdvancePageStoring, ReplacesAFirstElementThatIsNotARecord)
{
    openWithFile("<plist version=\"1.0\"><array><string>mine</string>"
                 "<dict><key>Tx Rate</key><string>7</string></dict></array></plist>");
    EXPECT_EQ(shown(), (Shown { 0, 0, 0, false, false }));
    choose(u"TXrate", 2);
    click(u"Reset");
    EXPECT_EQ(shown().rate, 0) << "it contains no settings";
    (void)apply();
    EXPECT_EQ(stored(), (PropertyDictionaries { record(0, 0, 0, 0, 0), { { u"Tx Rate"_qs, u"7"_qs } } }));
    EXPECT_TRUE(QFile::exists(unreadableFile())) << "the old element would be lost otherwise";
}

TEST_F(AdvancePageStoring, ReportsAFailureWithoutAnAlertUntilASaveSucceeds)
{
    // There is a file in place of the directory.
    QFile file(home.filePath(u"Library"_qs));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    open();
    choose(u"TXrate", 2);
    EXPECT_EQ(apply().size(), 3u);
    EXPECT_FALSE(buttonsAreEnabled());
    EXPECT_EQ(alerts.alerts.size(), 0u);
    EXPECT_EQ(saves.failures, (std::map<QString, QString> { { settingsFile(), u"Not a directory"_qs } }));
    choose(u"TXrate", 5);
    click(u"Reset");
    EXPECT_EQ(shown().rate, 2) << "the page keeps the applied settings";
    ASSERT_TRUE(file.remove());
    (void)apply();
    EXPECT_TRUE(saves.failures.empty());
    EXPECT_EQ(stored(), oneRecord(2, 0, 0, 0, 0));
}

} // namespace
