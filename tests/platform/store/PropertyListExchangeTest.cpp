#include "platform/store/PropertyListFile.h"
#include "tests/platform/store/RandomTexts.h"
#include "tests/support/PythonExchange.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

// Interoperability with an independent implementation, Python's plistlib, in both directions. It does not decode our
// escapes.

namespace {

class PropertyListExchange : public testing::Test {
protected:
    // Many lists in one file, because starting Python is slow.
    PropertyDictionaries randomList(unsigned seed, const std::function<QString(RandomTexts&)>& text)
    {
        RandomTexts texts(seed);
        PropertyDictionaries list;
        for (int i = 0; i < 300; ++i)
            for (const PropertyDictionary& dictionary : texts.dictionaries([&] { return text(texts); }))
                list.push_back(dictionary);
        return list;
    }

    QTemporaryDir folder;
    QString plist { folder.filePath(QStringLiteral("list.plist")) };
    QString json { folder.filePath(QStringLiteral("list.json")) };
};

TEST_F(PropertyListExchange, ReadsFilesWrittenByPython)
{
    const auto list = randomList(11, [](RandomTexts& texts) { return texts.plain(); });
    ASSERT_TRUE(writeJson(json, jsonOf(list)));
    ASSERT_TRUE(exchange(QStringLiteral("to-plist"), json, plist));
    EXPECT_EQ(readDictionariesFile(plist), list);
    EXPECT_FALSE(list.empty());
}

TEST_F(PropertyListExchange, PythonReadsItsFiles)
{
    const auto list = randomList(
        12, [](RandomTexts& texts) { return texts.plain() + (texts.below(3) == 0 ? u"\r\n\r"_qs : QString()); });
    ASSERT_TRUE(writeDictionariesFile(plist, list));
    ASSERT_TRUE(exchange(QStringLiteral("to-json"), plist, json));
    EXPECT_EQ(dictionariesOfJson(readJson(json)), list);
}

TEST_F(PropertyListExchange, PythonAcceptsFilesWithAnyText)
{
    const auto list = randomList(13, [](RandomTexts& texts) { return texts.any(); });
    ASSERT_TRUE(writeDictionariesFile(plist, list));
    EXPECT_TRUE(exchange(QStringLiteral("to-json"), plist, json));
    EXPECT_EQ(readDictionariesFile(plist), list);
}

} // namespace
