#include "services/simulator/control/ControlCommands.h"

#include "tests/services/simulator/card/CardUnderTest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

Scenario scenario()
{
    Scenario result;
    result.networks = { openNetwork("cafe", 1), openNetwork("twin", 2), openNetwork("twin", 3) };
    return result;
}

class ControlCommandsTest : public testing::Test {
protected:
    [[nodiscard]] QJsonObject answerTo(const QByteArray& line)
    {
        return QJsonDocument::fromJson(answerControlLine(service, line)).object();
    }

    // The words are separated by single spaces.
    [[nodiscard]] QJsonObject answer(const QString& words)
    {
        return answerTo(QJsonDocument(QJsonArray::fromStringList(words.split(QLatin1Char(' ')))).toJson());
    }

    // "done", "refused", "misused"
    [[nodiscard]] std::string result(const char* words)
    {
        const QJsonObject object = answer(QString::fromUtf8(words));
        if (object.value(QStringLiteral("ok")).toBool())
            return "done";
        EXPECT_FALSE(object.value(QStringLiteral("error")).toString().isEmpty());
        return object.value(QStringLiteral("usage")).toBool() ? "misused" : "refused";
    }

    [[nodiscard]] bool isDone(const char* words) { return result(words) == "done"; }

    [[nodiscard]] std::string errorOf(const char* words)
    {
        return answer(QString::fromUtf8(words)).value(QStringLiteral("error")).toString().toStdString();
    }

    [[nodiscard]] QJsonObject status()
    {
        return answer(QStringLiteral("status")).value(QStringLiteral("status")).toObject();
    }

    [[nodiscard]] bool statusFlag(const char* name) { return status().value(QLatin1String(name)).toBool(); }
    [[nodiscard]] const std::vector<ScenarioNetwork>& networks()
    {
        return service.card().stateAt(nowMs).neighbourhood.networks();
    }

    QTemporaryDir folder;
    std::int64_t nowMs { 0 };
    SimulatorService service { scenario(), 1, folder.path().toStdString(), "simulated", [this] { return nowMs; } };
};

} // namespace

TEST_F(ControlCommandsTest, InsertsAndEjects)
{
    EXPECT_FALSE(statusFlag("inserted"));
    EXPECT_TRUE(isDone("insert"));
    EXPECT_TRUE(isDone("insert"));
    EXPECT_TRUE(statusFlag("inserted"));
    EXPECT_TRUE(isDone("drop"));
    EXPECT_TRUE(isDone("eject"));
    EXPECT_TRUE(isDone("eject"));
    EXPECT_FALSE(statusFlag("inserted"));
}

TEST_F(ControlCommandsTest, InsertingResetsTheSettings)
{
    EXPECT_TRUE(isDone("insert"));
    (void)service.card().answer(OID_802_11_AUTHENTICATION_MODE | oidSetFlag, bytesOf(std::int32_t { 4 }), 0, nowMs);
    EXPECT_TRUE(isDone("eject"));
    EXPECT_TRUE(isDone("insert"));
    EXPECT_EQ(service.card().stateAt(nowMs).settings.authenticationMode, 0);
}

TEST_F(ControlCommandsTest, SwitchesTheHardwareRadio)
{
    EXPECT_TRUE(isDone("hw-radio off"));
    EXPECT_FALSE(statusFlag("hardware_radio"));
    EXPECT_TRUE(isDone("hw-radio on"));
    EXPECT_TRUE(statusFlag("hardware_radio"));
    EXPECT_EQ(result("hw-radio dim"), "refused");
    EXPECT_EQ(result("hw-radio"), "misused");
}

TEST_F(ControlCommandsTest, RaisesEventsAndHoldsReady)
{
    EXPECT_TRUE(isDone("event raise"));
    EXPECT_TRUE(statusFlag("event"));
    EXPECT_EQ(result("event lower"), "misused");
    EXPECT_TRUE(isDone("ready hold"));
    EXPECT_FALSE(statusFlag("ready"));
    EXPECT_TRUE(statusFlag("ready_held"));
    EXPECT_TRUE(isDone("ready release"));
    EXPECT_TRUE(statusFlag("ready"));
    EXPECT_EQ(result("ready"), "misused");
    EXPECT_EQ(result("ready steady"), "refused");
    EXPECT_TRUE(isDone("reset"));
    EXPECT_FALSE(statusFlag("ready"));
    nowMs += SimulatedCard::resetDurationMs;
    EXPECT_TRUE(statusFlag("ready"));
}

TEST_F(ControlCommandsTest, MovesAndRemovesNetworksByNameOrBssid)
{
    EXPECT_TRUE(isDone("move cafe -88"));
    EXPECT_EQ(networks()[0].signalDbm, -88);
    EXPECT_TRUE(isDone("move 00:11:22:33:44:03 0"));
    EXPECT_EQ(networks()[2].signalDbm, 0);
    EXPECT_TRUE(isDone("move 00-11-22-33-44-02 -120"));
    EXPECT_EQ(networks()[1].signalDbm, -120);
    EXPECT_EQ(errorOf("move twin -40"), "several networks are named \"twin\"; give the BSSID");
    EXPECT_EQ(errorOf("move none -40"), "there is no network \"none\"");
    for (const char* words : { "move cafe 1", "move cafe -121", "remove-network none" })
        EXPECT_EQ(result(words), "refused") << words;
    for (const char* words : { "move cafe", "move cafe loud", "move cafe -60.5", "move cafe -60 1" })
        EXPECT_EQ(result(words), "misused") << words;
    EXPECT_TRUE(isDone("remove-network 00-11-22-33-44-01"));
    EXPECT_EQ(result("remove-network cafe"), "refused");
    EXPECT_EQ(networks().size(), 2U);
}

TEST_F(ControlCommandsTest, AddsANetworkOnce)
{
    const QString words = QStringLiteral("add-network --toml=ssid='new'\nbssid='0A-00-00-00-00-01'");
    EXPECT_TRUE(answer(words).value(QStringLiteral("ok")).toBool());
    EXPECT_EQ(networks().back().ssid, "new");
    EXPECT_FALSE(answer(words).value(QStringLiteral("ok")).toBool());
    EXPECT_EQ(networks().size(), 4U);
}

TEST_F(ControlCommandsTest, RejectsAnInvalidNetwork)
{
    EXPECT_EQ(result("add-network --toml ssid="), "refused");
    EXPECT_EQ(errorOf("add-network --toml ssid=").rfind("1:", 0), 0U); // line and column
    EXPECT_EQ(result("add-network"), "misused");
    EXPECT_EQ(result("add-network file --toml x"), "misused");
    EXPECT_EQ(networks().size(), 3U);
}

TEST_F(ControlCommandsTest, AddsAndClearsFaults)
{
    EXPECT_TRUE(isDone("fault fail --oid OID_802_11_SSID --on set --times=2"));
    EXPECT_TRUE(isDone("fault delay --oid any --ms 100"));
    EXPECT_TRUE(isDone("fault list-endless"));
    const std::vector<Fault>& faults = service.faults().all();
    ASSERT_EQ(faults.size(), 3U);
    EXPECT_EQ(faults[0].kind, FaultKind::Fail);
    EXPECT_EQ(faults[0].oid, OID_802_11_SSID);
    EXPECT_EQ(faults[0].direction, FaultDirection::Set);
    EXPECT_EQ(faults[0].remainingTimes, 2U);
    EXPECT_EQ(faults[1].argument, 100U);
    EXPECT_FALSE(faults[1].oid);
    EXPECT_EQ(status().value(QStringLiteral("faults")).toArray().size(), 3);
    EXPECT_TRUE(isDone("clear-faults"));
    EXPECT_TRUE(service.faults().all().empty());
}

TEST_F(ControlCommandsTest, RejectsInvalidFaults)
{
    for (const char* words : { "fault explode", "fault fail --oid OID_NONE", "fault delay", "fault delay --ms -1",
             "fault delay --ms 600001", "fault cut", "fault cut --bytes 65536", "fault fail --times 0",
             "fault fail --times 4294967296", "fault fail --on monday", "fault refuse --oid OID_802_11_SSID",
             "fault list-endless --oid OID_802_11_SSID" })
        EXPECT_EQ(result(words), "refused") << words;
    for (const char* words : { "fault", "fault fail fail", "fault fail --times many", "fault fail --unknown 1",
             "fault fail --oid", "fault fail --times 1 --times 2", "status --oid 1" })
        EXPECT_EQ(result(words), "misused") << words;
    EXPECT_TRUE(service.faults().all().empty());
}

TEST_F(ControlCommandsTest, StartsAndStopsRecording)
{
    const QString path = folder.filePath(QStringLiteral("r.jsonl"));
    EXPECT_TRUE(isDone(("record on " + path.toStdString()).c_str()));
    EXPECT_EQ(status().value(QStringLiteral("recording")).toString(), path);
    EXPECT_TRUE(isDone("record off"));
    EXPECT_EQ(status().value(QStringLiteral("recording")).toString(), QString());
    for (const char* words : { "record on", "record off file", "record" })
        EXPECT_EQ(result(words), "misused") << words;
    EXPECT_EQ(result("record pause"), "refused");
    EXPECT_EQ(errorOf("record on /no/such/folder/r"), "/no/such/folder/r: No such file or directory");
}

TEST_F(ControlCommandsTest, StatusReportsTheLinkButNoKeys)
{
    (void)service.card().answer(OID_802_11_ADD_KEY | oidSetFlag, keyRecord(keyIndexTransmit | 1, "SeCrE"), 0, nowMs);
    (void)service.card().answer(OID_802_11_SSID | oidSetFlag, bytesOf(ssidRecord("cafe")), 0, nowMs);
    nowMs += 1000;
    const QByteArray line = answerControlLine(service, R"(["status"])");
    EXPECT_FALSE(line.contains('\n'));
    EXPECT_FALSE(line.contains("SeCrE"));
    const QJsonObject association = status().value(QStringLiteral("association")).toObject();
    EXPECT_EQ(association.value(QStringLiteral("state")).toString(), QStringLiteral("up"));
    EXPECT_EQ(association.value(QStringLiteral("ssid_hex")).toString(), QStringLiteral("63616665"));
    EXPECT_EQ(association.value(QStringLiteral("bssid")).toString(), QStringLiteral("00-11-22-33-44-01"));
    const QJsonObject settings = status().value(QStringLiteral("settings")).toObject();
    EXPECT_EQ(settings.value(QStringLiteral("transmit_key")).toInt(), 1);
    EXPECT_EQ(settings.value(QStringLiteral("wep_key_bytes")).toArray().at(1).toInt(), 5);
}

TEST_F(ControlCommandsTest, RejectsLinesThatAreNotACommand)
{
    EXPECT_EQ(result("dance"), "misused");
    EXPECT_EQ(errorOf("dance"), "\"dance\" is not a command");
    EXPECT_EQ(result("eject now"), "misused");
    for (const char* line : { "[]", "{}", "rubbish", "", R"(["move","cafe",-40])", R"({"command":"eject"})" })
        EXPECT_TRUE(answerTo(line).value(QStringLiteral("usage")).toBool()) << line;
}
