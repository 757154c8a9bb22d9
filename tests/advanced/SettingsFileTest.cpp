#include "advanced/SettingsFile.h"

#include "platform/store/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QString key = QStringLiteral("Tx Rate");

class SettingsFile : public testing::Test {
protected:
    void write(const QByteArray& elements) const
    {
        ASSERT_TRUE(writeFileAtomically(path, "<plist version=\"1.0\">" + elements + "</plist>"));
    }
    [[nodiscard]] bool isBackedUp() const { return QFile::exists(path + u".unreadable"_qs); }

    QTemporaryDir directory;
    QString path { directory.filePath(u"settings.plist"_qs) };
};

TEST_F(SettingsFile, IsEmptyIfMissing)
{
    EXPECT_TRUE(readSettingsFile(path).empty());
    EXPECT_FALSE(firstRecord({}));
}

TEST_F(SettingsFile, UsesOnlyItsFirstElement)
{
    for (const char* const others :
        { "", "<dict/>", "<string/>", "<dict><key>a</key><integer>1</integer></dict>", "<array><true/></array>" }) {
        SCOPED_TRACE(others);
        write(QByteArray("<array><dict><key>Tx Rate</key><string>3</string></dict>") + others + "</array>");
        const PropertyArray records = readSettingsFile(path);
        EXPECT_EQ(records.size(), *others == 0 ? 1u : 2u);
        EXPECT_EQ(firstRecord(records), (PropertyDictionary { { key, u"3"_qs } }));
    }
}

TEST_F(SettingsFile, IsUnreadableIfItIsNotAnArray)
{
    for (const char* const content : { "<dict/>", "<string>3</string>" }) {
        SCOPED_TRACE(content);
        write(content);
        EXPECT_TRUE(readSettingsFile(path).empty());
        EXPECT_TRUE(writeSettingsFile(path, {}));
        EXPECT_TRUE(isBackedUp());
        ASSERT_TRUE(QFile::remove(path + u".unreadable"_qs));
    }
}

TEST_F(SettingsFile, PreservesOtherElementsIfTheFirstIsNotADictionary)
{
    for (const char* const first : { "<string>3</string>", "<array/>", "<integer>3</integer>", "<true/>" }) {
        SCOPED_TRACE(first);
        write(QByteArray("<array>") + first + "<dict/><string>mine</string></array>");
        PropertyArray records = readSettingsFile(path);
        EXPECT_EQ(firstRecord(records), PropertyDictionary());
        setFirstRecord(records, { { key, u"1"_qs } });
        EXPECT_TRUE(writeSettingsFile(path, records));
        EXPECT_TRUE(readSettingsFile(path)
            == (PropertyArray { { PropertyTree { { key, { u"1"_qs } } } }, { PropertyTree {} }, { u"mine"_qs } }));
        EXPECT_TRUE(isBackedUp());
        ASSERT_TRUE(QFile::remove(path + u".unreadable"_qs));
    }
}

TEST_F(SettingsFile, ReadsNumbersAsTexts)
{
    write("<array><dict><key>Tx Rate</key><integer>3</integer></dict></array>");
    EXPECT_EQ(firstRecord(readSettingsFile(path)), (PropertyDictionary { { key, u"3"_qs } }));
    EXPECT_TRUE(writeSettingsFile(path, {}));
    EXPECT_FALSE(isBackedUp());
}

TEST_F(SettingsFile, IsBackedUpIfItsFirstElementIsNotFullyReadable)
{
    write("<array><dict><key>Tx Rate</key><string>3</string><key>More</key><array/></dict></array>");
    EXPECT_EQ(firstRecord(readSettingsFile(path)), (PropertyDictionary { { key, u"3"_qs } }));
    EXPECT_TRUE(writeSettingsFile(path, {}));
    EXPECT_TRUE(isBackedUp());
}

TEST_F(SettingsFile, IsNotBackedUpIfReadable)
{
    for (const char* const content : { "<array/>", "<array><dict/><string/></array>" }) {
        write(content);
        EXPECT_TRUE(writeSettingsFile(path, {}));
        EXPECT_FALSE(isBackedUp()) << content;
    }
}

TEST_F(SettingsFile, SurvivesARoundTrip)
{
    const PropertyArray records { { PropertyTree { { key, { u"12"_qs } } } }, { u"other"_qs }, { qint64 { 4 } } };
    EXPECT_TRUE(writeSettingsFile(path, records));
    EXPECT_TRUE(readSettingsFile(path) == records);
}

TEST_F(SettingsFile, DoesNotReplaceADirectory)
{
    ASSERT_TRUE(QDir().mkdir(path));
    EXPECT_TRUE(readSettingsFile(path).empty());
    EXPECT_FALSE(writeSettingsFile(path, {}));
    EXPECT_TRUE(QFileInfo(path).isDir());
}

TEST(FirstRecord, IsAddedToAnEmptyArray)
{
    PropertyArray records;
    setFirstRecord(records, { { key, u"1"_qs } });
    EXPECT_EQ(records.size(), 1u);
    EXPECT_EQ(firstRecord(records), (PropertyDictionary { { key, u"1"_qs } }));
}

TEST(FirstRecord, ReplacesAnExistingElement)
{
    PropertyArray records { { PropertyTree { { u"Comment"_qs, { u"mine"_qs } } } }, { u"other"_qs } };
    setFirstRecord(records, { { key, u"1"_qs } });
    EXPECT_EQ(firstRecord(records), (PropertyDictionary { { key, u"1"_qs } }));
    ASSERT_EQ(records.size(), 2u);
    EXPECT_TRUE(records.back() == PropertyValue { u"other"_qs });
}

} // namespace
