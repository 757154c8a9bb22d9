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
    [[nodiscard]] QJsonObject answer(const char* line)
    {
        return QJsonDocument::fromJson(answerControlLine(service, line)).object();
    }

    [[nodiscard]] bool isDone(const char* line) { return answer(line).value(QStringLiteral("ok")).toBool(); }

    [[nodiscard]] std::string errorOf(const char* line)
    {
        const QJsonObject object = answer(line);
        EXPECT_FALSE(object.value(QStringLiteral("ok")).toBool());
        return object.value(QStringLiteral("error")).toString().toStdString();
    }

    [[nodiscard]] QJsonObject status()
    {
        return answer(R"({"command":"status"})").value(QStringLiteral("status")).toObject();
    }

    [[nodiscard]] bool statusFlag(const char* name) { return status().value(QLatin1String(name)).toBool(); }

    QTemporaryDir folder;
    std::int64_t nowMs { 0 };
    SimulatorService service { scenario(), 1, folder.path().toStdString(), "simulated", [this] { return nowMs; } };
};

} // namespace

TEST_F(ControlCommandsTest, InsertsAndEjects)
{
    EXPECT_FALSE(statusFlag("inserted"));
    EXPECT_TRUE(isDone(R"({"command":"insert"})"));
    EXPECT_TRUE(isDone(R"({"command":"insert"})"));
    EXPECT_TRUE(statusFlag("inserted"));
    EXPECT_TRUE(isDone(R"({"command":"drop"})"));
    EXPECT_TRUE(isDone(R"({"command":"eject"})"));
    EXPECT_TRUE(isDone(R"({"command":"eject"})"));
    EXPECT_FALSE(statusFlag("inserted"));
}

TEST_F(ControlCommandsTest, AnInsertedCardHasLostItsSettings)
{
    EXPECT_TRUE(isDone(R"({"command":"insert"})"));
    (void)service.card().answer(OID_802_11_AUTHENTICATION_MODE | oidSetFlag, bytesOf(std::int32_t { 4 }), 0, nowMs);
    EXPECT_TRUE(isDone(R"({"command":"eject"})"));
    EXPECT_TRUE(isDone(R"({"command":"insert"})"));
    EXPECT_EQ(service.card().stateAt(nowMs).settings.authenticationMode, 0);
}

TEST_F(ControlCommandsTest, MovesTheRadioSwitch)
{
    EXPECT_TRUE(isDone(R"({"command":"hw-radio","state":"off"})"));
    EXPECT_FALSE(statusFlag("hardware_radio"));
    EXPECT_TRUE(isDone(R"({"command":"hw-radio","state":"on"})"));
    EXPECT_TRUE(statusFlag("hardware_radio"));
    EXPECT_EQ(errorOf(R"({"command":"hw-radio","state":"dim"})"), "\"state\" must be \"on\" or \"off\"");
}

TEST_F(ControlCommandsTest, RaisesEventsAndHoldsReady)
{
    EXPECT_TRUE(isDone(R"({"command":"event"})"));
    EXPECT_TRUE(statusFlag("event"));
    EXPECT_TRUE(isDone(R"({"command":"ready","action":"hold"})"));
    EXPECT_FALSE(statusFlag("ready"));
    EXPECT_TRUE(statusFlag("ready_held"));
    EXPECT_TRUE(isDone(R"({"command":"ready","action":"release"})"));
    EXPECT_TRUE(statusFlag("ready"));
    EXPECT_NE(errorOf(R"({"command":"ready"})"), "");
    EXPECT_TRUE(isDone(R"({"command":"reset"})"));
    EXPECT_FALSE(statusFlag("ready"));
    nowMs += SimulatedCard::resetDurationMs;
    EXPECT_TRUE(statusFlag("ready"));
}

TEST_F(ControlCommandsTest, MovesAndRemovesANetworkByNameOrAddress)
{
    const auto signalOf
        = [this](std::size_t index) { return service.card().stateAt(nowMs).neighbourhood.networks()[index].signalDbm; };
    EXPECT_TRUE(isDone(R"({"command":"move","network":"cafe","signal_dbm":-88})"));
    EXPECT_EQ(signalOf(0), -88);
    EXPECT_TRUE(isDone(R"({"command":"move","network":"00:11:22:33:44:03","signal_dbm":-40})"));
    EXPECT_EQ(signalOf(2), -40);
    EXPECT_EQ(errorOf(R"({"command":"move","network":"twin","signal_dbm":-40})"),
        "several networks are named \"twin\"; give the BSSID");
    EXPECT_EQ(errorOf(R"({"command":"move","network":"none","signal_dbm":-40})"), "there is no network \"none\"");
    for (const char* line : { R"({"command":"move","network":"cafe","signal_dbm":1})",
             R"({"command":"move","network":"cafe","signal_dbm":-121})",
             R"({"command":"move","network":"cafe","signal_dbm":-60.5})", R"({"command":"move","network":"cafe"})" })
        EXPECT_NE(errorOf(line), "") << line;
    EXPECT_TRUE(isDone(R"({"command":"remove-network","network":"00-11-22-33-44-01"})"));
    EXPECT_NE(errorOf(R"({"command":"remove-network","network":"cafe"})"), "");
    EXPECT_EQ(status().value(QStringLiteral("networks")).toArray().size(), 2);
}

TEST_F(ControlCommandsTest, SaysWhatIsWrongWithANewNetwork)
{
    EXPECT_NE(errorOf(R"({"command":"add-network","toml":"ssid = "})"), "");
    EXPECT_NE(errorOf(R"({"command":"add-network"})"), "");
    EXPECT_EQ(status().value(QStringLiteral("networks")).toArray().size(), 3);
}

TEST_F(ControlCommandsTest, AddsAndClearsFaults)
{
    EXPECT_TRUE(isDone(R"({"command":"fault","kind":"fail","oid":"OID_802_11_SSID","on":"set","times":2})"));
    EXPECT_TRUE(isDone(R"({"command":"fault","kind":"delay","oid":"any","ms":100})"));
    EXPECT_TRUE(isDone(R"({"command":"fault","kind":"list-endless"})"));
    ASSERT_EQ(service.faults().all().size(), 3U);
    const Fault& fault = service.faults().all()[0];
    EXPECT_EQ(fault.kind, FaultKind::Fail);
    EXPECT_EQ(fault.oid, OID_802_11_SSID);
    EXPECT_EQ(fault.direction, FaultDirection::Set);
    EXPECT_EQ(fault.remainingTimes, 2U);
    EXPECT_EQ(service.faults().all()[1].argument, 100U);
    EXPECT_FALSE(service.faults().all()[1].oid);
    EXPECT_EQ(status().value(QStringLiteral("faults")).toArray().size(), 3);
    EXPECT_TRUE(isDone(R"({"command":"clear-faults"})"));
    EXPECT_TRUE(service.faults().all().empty());
}

TEST_F(ControlCommandsTest, RefusesFaultsThatMakeNoSense)
{
    for (const char* line : { R"({"command":"fault","kind":"explode"})", R"({"command":"fault"})",
             R"({"command":"fault","kind":"fail","oid":"OID_NONE"})", R"({"command":"fault","kind":"delay"})",
             R"({"command":"fault","kind":"delay","ms":-1})", R"({"command":"fault","kind":"delay","ms":600001})",
             R"({"command":"fault","kind":"cut"})", R"({"command":"fault","kind":"fail","times":0})",
             R"({"command":"fault","kind":"fail","on":"monday"})",
             R"({"command":"fault","kind":"refuse","oid":"OID_802_11_SSID"})",
             R"({"command":"fault","kind":"list-endless","oid":"OID_802_11_SSID"})" })
        EXPECT_NE(errorOf(line), "") << line;
    EXPECT_TRUE(service.faults().all().empty());
}

TEST_F(ControlCommandsTest, RecordsWhereItIsTold)
{
    const QString path = folder.filePath(QStringLiteral("r.jsonl"));
    const QByteArray line
        = QByteArrayLiteral(R"({"command":"record","state":"on","file":")") + path.toUtf8() + QByteArrayLiteral("\"}");
    EXPECT_TRUE(isDone(line.constData()));
    EXPECT_EQ(status().value(QStringLiteral("recording")).toString(), path);
    EXPECT_TRUE(isDone(R"({"command":"record","state":"off"})"));
    EXPECT_EQ(status().value(QStringLiteral("recording")).toString(), QString());
    EXPECT_NE(errorOf(R"({"command":"record","state":"on"})"), "");
    EXPECT_NE(errorOf(R"({"command":"record","state":"on","file":"/no/such/folder/r"})"), "");
}

TEST_F(ControlCommandsTest, TheStatusTellsOfTheLinkAndOfNoKey)
{
    (void)service.card().answer(OID_802_11_ADD_KEY | oidSetFlag, keyRecord(keyIndexTransmit | 1, "SeCrE"), 0, nowMs);
    (void)service.card().answer(OID_802_11_SSID | oidSetFlag, bytesOf(ssidRecord("cafe")), 0, nowMs);
    nowMs += 1000;
    const QByteArray line = answerControlLine(service, R"({"command":"status"})");
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

TEST_F(ControlCommandsTest, RefusesWhatIsNoCommand)
{
    EXPECT_EQ(errorOf(R"({"command":"dance"})"), "\"dance\" is no command");
    EXPECT_EQ(errorOf("[]"), "the line is no JSON object");
    EXPECT_EQ(errorOf("rubbish"), "the line is no JSON object");
    EXPECT_EQ(errorOf(""), "the line is no JSON object");
}
