#include "services/simulator/control/SimctlRequest.h"

#include "services/simulator/control/ControlPath.h"

#include <QDir>
#include <QTemporaryFile>
#include <gtest/gtest.h>

namespace {

std::optional<SimctlRequest> request(const QString& words, QString& error)
{
    return readSimctlArguments(words.split(QLatin1Char(' ')), error);
}

std::string words(const QString& arguments)
{
    QString error;
    const auto made = request(arguments, error);
    return made ? made->words.join(QLatin1Char('|')).toStdString() : "error: " + error.toStdString();
}

std::string controlPath(const QString& arguments)
{
    QString error;
    const auto made = request(arguments, error);
    return made ? made->controlPath.toStdString() : "error: " + error.toStdString();
}

} // namespace

TEST(SimctlRequest, PassesWordsOnUninterpreted)
{
    EXPECT_EQ(words(QStringLiteral("move 00-11-22-33-44-55 -90")), "move|00-11-22-33-44-55|-90");
    EXPECT_EQ(words(QStringLiteral("fault fail --oid=0x1 --times 3")), "fault|fail|--oid=0x1|--times|3");
    EXPECT_EQ(words(QStringLiteral("dance --wildly")), "dance|--wildly");
    EXPECT_EQ(words(QStringLiteral("add-network --toml x=1")), "add-network|--toml|x=1");
    EXPECT_EQ(words(QStringLiteral("add-network")), "add-network");
    EXPECT_EQ(words(QStringLiteral("record off")), "record|off");
}

TEST(SimctlRequest, ReplacesANetworkFileByItsContents)
{
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write("ssid = \"new\"\n");
    file.flush();
    EXPECT_EQ(words(QStringLiteral("add-network ") + file.fileName()), "add-network|--toml=ssid = \"new\"\n");
    EXPECT_EQ(words(QStringLiteral("add-network /no/such/file")).rfind("error: /no/such/file", 0), 0U);
}

TEST(SimctlRequest, MakesTheRecordingFileAbsolute)
{
    EXPECT_EQ(words(QStringLiteral("record on r.jsonl")),
        "record|on|" + QDir::current().absoluteFilePath(QStringLiteral("r.jsonl")).toStdString());
    EXPECT_EQ(words(QStringLiteral("record on /tmp/r.jsonl")), "record|on|/tmp/r.jsonl");
}

TEST(SimctlRequest, FindsTheControlSocket)
{
    EXPECT_EQ(controlPath(QStringLiteral("status")), defaultControlPath(QStringLiteral("simulated")).toStdString());
    EXPECT_EQ(
        controlPath(QStringLiteral("--instance=two status")), defaultControlPath(QStringLiteral("two")).toStdString());
    EXPECT_EQ(controlPath(QStringLiteral("--instance two status --control /c")), "/c");
    EXPECT_EQ(words(QStringLiteral("--instance two status --control /c")), "status");
}

TEST(SimctlRequest, RejectsMissingCommandsAndValues)
{
    EXPECT_EQ(words(QStringLiteral("--instance two")).rfind("error: ", 0), 0U);
    EXPECT_EQ(words(QStringLiteral("status --control")).rfind("error: ", 0), 0U);
}
