#include "platform/PropertyListFile.h"
#include "tests/platform/store/RandomTexts.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// Another implementation has to agree about every plain text: Python's plistlib writes what ours reads, and reads
// what ours writes. Of escaped texts it sees the escapes.

namespace {

QJsonArray jsonOf(const PropertyDictionary& dictionary)
{
    QJsonArray pairs;
    for (const auto& [key, text] : dictionary)
        pairs.append(QJsonArray { key, text });
    return pairs;
}

PropertyDictionary dictionaryOf(const QJsonArray& pairs)
{
    PropertyDictionary dictionary;
    for (const auto& pair : pairs)
        dictionary.set(pair.toArray().at(0).toString(), pair.toArray().at(1).toString());
    return dictionary;
}

bool exchange(const QString& direction, const QString& source, const QString& target)
{
    QProcess python;
    python.setProcessChannelMode(QProcess::ForwardedChannels);
    python.start(QStringLiteral("/usr/bin/python3"), { QStringLiteral(EXCHANGE_PROGRAM), direction, source, target });
    return python.waitForFinished() && python.exitStatus() == QProcess::NormalExit && python.exitCode() == 0;
}

class PropertyListExchange : public testing::Test {
protected:
    // Many lists in one file: a program is slow to start.
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

TEST_F(PropertyListExchange, ReadsWhatPythonWrites)
{
    const auto list = randomList(11, [](RandomTexts& texts) { return texts.plain(); });
    QJsonArray array;
    for (const PropertyDictionary& dictionary : list)
        array.append(jsonOf(dictionary));
    QFile file(json);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QJsonDocument(array).toJson());
    file.close();
    ASSERT_TRUE(exchange(QStringLiteral("to-plist"), json, plist));
    EXPECT_EQ(readDictionariesFile(plist), list);
    EXPECT_FALSE(list.empty());
}

TEST_F(PropertyListExchange, WritesWhatPythonReads)
{
    const auto list = randomList(
        12, [](RandomTexts& texts) { return texts.plain() + (texts.below(3) == 0 ? u"\r\n\r"_qs : QString()); });
    ASSERT_TRUE(writeDictionariesFile(plist, list));
    ASSERT_TRUE(exchange(QStringLiteral("to-json"), plist, json));
    QFile file(json);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    PropertyDictionaries theirs;
    for (const auto pairs : QJsonDocument::fromJson(file.readAll()).array())
        theirs.push_back(dictionaryOf(pairs.toArray()));
    EXPECT_EQ(theirs, list);
}

TEST_F(PropertyListExchange, WritesWhatPythonAcceptsWhateverTheTexts)
{
    const auto list = randomList(13, [](RandomTexts& texts) { return texts.any(); });
    ASSERT_TRUE(writeDictionariesFile(plist, list));
    EXPECT_TRUE(exchange(QStringLiteral("to-json"), plist, json));
    EXPECT_EQ(readDictionariesFile(plist), list);
}

} // namespace
