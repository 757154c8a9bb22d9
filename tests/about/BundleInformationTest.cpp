#include "about/BundleInformation.h"

#include "tests/about/InstalledBundles.h"

#include <cstdlib>
#include <ctime>

namespace {

class BundleInformationTest : public testing::Test {
protected:
    void install(const QByteArray& content, const QDateTime& changed = noonOf(2005, 3, 14)) const
    {
        InstalledBundles::install(path, content, changed);
    }

    InstalledBundles bundles;
    QString path { bundles.root() + u"/Bundle/Info.plist"_qs };
};

// Sets the time zone of the process for its lifetime.
class LocalTimeZone {
    Q_DISABLE_COPY_MOVE(LocalTimeZone)

public:
    explicit LocalTimeZone(const char* zone)
        : m_before(qgetenv("TZ"))
        , m_wasSet(qEnvironmentVariableIsSet("TZ"))
    {
        qputenv("TZ", zone);
        tzset();
    }
    ~LocalTimeZone()
    {
        if (m_wasSet)
            qputenv("TZ", m_before);
        else
            qunsetenv("TZ");
        tzset();
    }

private:
    QByteArray m_before;
    bool m_wasSet;
};

TEST(BundlePaths, AreFixed)
{
    EXPECT_EQ(utilityInformationPath(), u"/Applications/Vantrel.app/Contents/Info.plist");
    EXPECT_EQ(driverInformationPath(), u"/System/Library/Extensions/Pellvane.kext/Contents/Info.plist");
    EXPECT_EQ(utilityInformationPath(u"/tmp/root"_qs), u"/tmp/root/Applications/Vantrel.app/Contents/Info.plist");
    EXPECT_EQ(driverInformationPath(u"/tmp/root"_qs),
        u"/tmp/root/System/Library/Extensions/Pellvane.kext/Contents/Info.plist");
}

TEST_F(BundleInformationTest, ReadsTheShortVersionAndTheDate)
{
    install(InstalledBundles::informationList("1.4.2b"));
    EXPECT_EQ(bundleInformation(path), (BundleInformation { u"1.4.2b"_qs, u"2005-03-14"_qs }));
}

TEST_F(BundleInformationTest, DoesNotNeedTheDtdOfTheDoctype)
{
    QByteArray list = InstalledBundles::informationList("1.4.2b");
    list.replace("<!DOCTYPE plist>",
        "<!DOCTYPE plist PUBLIC \"-//Quorvane//Property list 1.0//EN\" \"http://lists.quorvane.example/1.0.dtd\">");
    ASSERT_TRUE(list.contains(".dtd"));
    install(list);
    EXPECT_EQ(bundleInformation(path), (BundleInformation { u"1.4.2b"_qs, u"2005-03-14"_qs }));
}

TEST_F(BundleInformationTest, IsEmptyWithoutAFile)
{
    EXPECT_EQ(bundleInformation(path), BundleInformation {});
}

TEST_F(BundleInformationTest, HasOnlyADateForAFileWithoutAVersion)
{
    for (const char* const content :
        { "", "no list", "<plist version=\"1.0\"><array/></plist>", "<plist version=\"1.0\"><dict/></plist>",
            "<plist version=\"1.0\"><dict><key>CFBundleShortVersionString</key><integer>2</integer></dict></plist>" }) {
        install(content);
        EXPECT_EQ(bundleInformation(path), (BundleInformation { QString(), u"2005-03-14"_qs })) << content;
    }
}

TEST_F(BundleInformationTest, HasNoVersionForATruncatedFile)
{
    const QByteArray whole = InstalledBundles::informationList("1.4.2b");
    const qsizetype end = whole.lastIndexOf('>');
    for (qsizetype length = whole.indexOf('>'); length < end; length = whole.indexOf('>', length + 1)) {
        install(whole.first(length + 1));
        EXPECT_EQ(bundleInformation(path), (BundleInformation { QString(), u"2005-03-14"_qs })) << length;
    }
    install(whole.first(end + 1));
    EXPECT_EQ(bundleInformation(path).version, u"1.4.2b");
}

TEST_F(BundleInformationTest, FollowsSymbolicLinks)
{
    install(InstalledBundles::informationList("1.0"));
    const QString link = bundles.root() + u"/link"_qs;
    ASSERT_TRUE(QFile::link(path, link));
    EXPECT_EQ(bundleInformation(link), (BundleInformation { u"1.0"_qs, u"2005-03-14"_qs }));
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_EQ(bundleInformation(link), BundleInformation {});
}

TEST_F(BundleInformationTest, UsesTheLocalTimeZoneForTheDate)
{
    const QDateTime lateInTheEvening(QDate(2005, 3, 14), QTime(22, 30), Qt::UTC);
    install(InstalledBundles::informationList("1.0"), lateInTheEvening);
    {
        const LocalTimeZone east("EAST-9");
        EXPECT_EQ(bundleInformation(path).date, u"2005-03-15");
    }
    const LocalTimeZone west("WEST+5");
    EXPECT_EQ(bundleInformation(path).date, u"2005-03-14");
}

} // namespace
