#include "services/simulator/control/SimctlRequest.h"

#include "services/simulator/service/Faults.h"

#include <QJsonDocument>
#include <QTemporaryFile>
#include <gtest/gtest.h>

namespace {

std::string json(const QString& words)
{
    QString error;
    const auto request = readSimctlArguments(words.split(QLatin1Char(' ')), error);
    return request ? QJsonDocument(request->command).toJson(QJsonDocument::Compact).toStdString()
                   : "error: " + error.toStdString();
}

} // namespace

TEST(SimctlRequest, TurnsWordsIntoCommands)
{
    EXPECT_EQ(json(QStringLiteral("eject")), R"({"command":"eject"})");
    EXPECT_EQ(json(QStringLiteral("hw-radio off")), R"({"command":"hw-radio","state":"off"})");
    EXPECT_EQ(json(QStringLiteral("event raise")), R"({"command":"event"})");
    EXPECT_EQ(json(QStringLiteral("ready hold")), R"({"action":"hold","command":"ready"})");
    EXPECT_EQ(json(QStringLiteral("remove-network cafe")), R"({"command":"remove-network","network":"cafe"})");
    EXPECT_EQ(json(QStringLiteral("move 00-11-22-33-44-55 -90")),
        R"({"command":"move","network":"00-11-22-33-44-55","signal_dbm":-90})");
    EXPECT_EQ(json(QStringLiteral("record off")), R"({"command":"record","state":"off"})");
    EXPECT_EQ(
        json(QStringLiteral("record on /tmp/r.jsonl")), R"({"command":"record","file":"/tmp/r.jsonl","state":"on"})");
    EXPECT_EQ(json(QStringLiteral("add-network --toml x=1")), R"({"command":"add-network","toml":"x=1"})");
}

TEST(SimctlRequest, CarriesTheOptionsOfAFault)
{
    EXPECT_EQ(json(QStringLiteral("fault fail --oid OID_802_11_SSID --on set --times 3")),
        R"({"command":"fault","kind":"fail","oid":"OID_802_11_SSID","on":"set","times":3})");
    EXPECT_EQ(json(QStringLiteral("fault delay --ms=1500")), R"({"command":"fault","kind":"delay","ms":1500})");
    EXPECT_EQ(json(QStringLiteral("fault cut --bytes 0")), R"({"bytes":0,"command":"fault","kind":"cut"})");
}

TEST(SimctlRequest, ReadsANetworkFromItsFile)
{
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write("ssid = \"new\"\n");
    file.flush();
    EXPECT_EQ(json(QStringLiteral("add-network ") + file.fileName()),
        R"({"command":"add-network","toml":"ssid = \"new\"\n"})");
    EXPECT_EQ(json(QStringLiteral("add-network /no/such/file")).rfind("error: /no/such/file", 0), 0U);
}

TEST(SimctlRequest, SaysWhatIsWrongWithTheRest)
{
    for (const char* words : { "dance", "eject now", "hw-radio", "move cafe", "move cafe loud", "event lower",
             "record on", "record off file", "fault", "fault fail --times many", "fault --unknown 1", "status --oid",
             "add-network", "add-network file --toml x" })
        EXPECT_EQ(json(QString::fromLatin1(words)).rfind("error: ", 0), 0U) << words;
}

TEST(SimctlRequest, KnowsWhereTheSimulatorIs)
{
    QString error;
    const auto byDefault = readSimctlArguments({ QStringLiteral("status") }, error);
    EXPECT_EQ(byDefault->instance, QStringLiteral("simulated"));
    EXPECT_TRUE(byDefault->controlPath.isEmpty());
    const auto named = readSimctlArguments({ QStringLiteral("--instance=two"), QStringLiteral("--control"),
                                               QStringLiteral("/c"), QStringLiteral("status") },
        error);
    EXPECT_EQ(named->instance, QStringLiteral("two"));
    EXPECT_EQ(named->controlPath, QStringLiteral("/c"));
}

TEST(SimctlRequest, TheHelpNamesEveryFault)
{
    for (const std::string_view name : faultNames())
        EXPECT_NE(simctlHelp().toStdString().find(name), std::string::npos) << name;
}
