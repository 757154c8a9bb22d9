#include "app/shared/SharedState.h"
#include "driver/BssidList.h"
#include "driver/VX7100Access.h"
#include "driver/records/Oids.h"
#include "platform/registry/SocketIORegistry.h"
#include "platform/ui/ComboBox.h"
#include "platform/ui/TableView.h"
#include "survey/ui/SiteSurveyPageController.h"
#include "tests/support/ManualRunLoop.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/RecordingTickClock.h"
#include "tests/support/ScriptedModalSheets.h"
#include "tests/support/SimulatorThread.h"
#include "tests/survey/InitialSurveyState.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>

// Every kind of network of the default scenario, joined through the real sheets and sockets as a person would who
// knows the key, and as one who does not.

namespace {

using namespace std::chrono_literals;

enum class Knowledge { RightKey, WrongKey };
enum class KeyFormat { Hexadecimal = 0, Ascii = 1 };

QString asTyped(const std::string& key, KeyFormat format)
{
    const QByteArray bytes = QByteArray::fromStdString(key);
    return QString::fromLatin1(format == KeyFormat::Ascii ? bytes : bytes.toHex());
}

bool isPrintable(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), [](char character) { return character > ' ' && character < 0x7F; });
}

std::string madeWrong(std::string key)
{
    key.front() = key.front() == 'x' ? 'y' : 'x';
    return key;
}

void pressOk(QDialog& sheet)
{
    QTest::mouseClick(sheet.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
}

void choose(QDialog& sheet, const QString& name, int index)
{
    auto* const combo = sheet.findChild<ComboBox*>(name);
    combo->setFocus();
    while (combo->indexOfSelectedItem() < index)
        QTest::keyClick(combo, Qt::Key_Down);
    while (combo->indexOfSelectedItem() > index)
        QTest::keyClick(combo, Qt::Key_Up);
}

class JoinMatrix : public testing::Test {
protected:
    JoinMatrix()
    {
        G_bDeviceExist = 1;
        clock.onDelay = [this](std::uint32_t ticks) { simulator.passTime(ticks * 1000 / ticksPerSecond); };
        page.awakeFromNib();
        page.resize(900, 500);
        page.show();
        page.StartSiteSurveyTimer();
        (void)adapter.InitCard();
        page.RefreshAPList();
    }

    [[nodiscard]] const ScenarioNetwork& network(const std::string& ssid) const
    {
        const auto& networks = simulator.scenario().networks;
        return *std::find_if(networks.begin(), networks.end(), [&](const auto& each) { return each.ssid == ssid; });
    }

    void select(const ScenarioNetwork& network)
    {
        BssidListWalk walk(currentBssidList());
        for (int row = 0; const auto entry = walk.next(); ++row) {
            if (entry->fixedPart().MacAddress == network.bssid) {
                table->selectRowNumber(row);
                return;
            }
        }
        FAIL() << network.ssid << " is not in the list";
    }

    void typeName(const std::string& name)
    {
        sheets.users.emplace_back([name](QDialog& sheet) {
            sheet.findChild<QLineEdit*>(u"HiddenSSIDText"_qs)->setText(QString::fromStdString(name));
            pressOk(sheet);
        });
    }

    void typeWepKeys(const std::array<std::string, 4>& keys, int transmitKey, bool shared, KeyFormat format)
    {
        sheets.users.emplace_back([=](QDialog& sheet) {
            if (shared)
                choose(sheet, u"AuthenType"_qs, 1);
            for (int number = 1; number <= 4; ++number) {
                choose(sheet, u"WEPKey%1Combo"_qs.arg(number), static_cast<int>(format));
                QTest::keyClicks(sheet.findChild<QLineEdit*>(u"WEPKey%1Text"_qs.arg(number)),
                    asTyped(keys[static_cast<std::size_t>(number - 1)], format));
            }
            auto* const radio = sheet.findChild<QRadioButton*>(u"WEPKey%1Radio"_qs.arg(transmitKey + 1));
            QTest::mouseClick(radio, Qt::LeftButton, {}, QPoint(5, radio->height() / 2));
            pressOk(sheet);
        });
    }

    void typePresharedKey(const std::string& text)
    {
        sheets.users.emplace_back([text](QDialog& sheet) {
            QTest::keyClicks(sheet.findChild<QLineEdit*>(u"WPAPreSharedKey"_qs), QString::fromStdString(text));
            pressOk(sheet);
        });
    }

    void typeEverything(const ScenarioNetwork& network, Knowledge knowledge, KeyFormat format)
    {
        const bool wrong = knowledge == Knowledge::WrongKey;
        if (network.hidden)
            typeName(network.ssid);
        if (network.security == Security::Wep) {
            std::array<std::string, 4> keys = network.wepKeys;
            for (std::string& key : keys)
                key = wrong && !key.empty() ? madeWrong(key) : key;
            typeWepKeys(keys, network.transmitKeyIndex, network.sharedKeyAuthentication, format);
        } else if (network.security == Security::WpaPsk || network.security == Security::WpaNone) {
            const std::string digits = network.presharedKey
                ? asTyped({ network.presharedKey->begin(), network.presharedKey->end() }, KeyFormat::Hexadecimal)
                      .toStdString()
                : network.passphrase;
            typePresharedKey(wrong ? madeWrong(network.presharedKey ? "a passphrase" : digits) : digits);
        }
    }

    // Presses Connect and lets five ticks pass.
    void connectTo(const ScenarioNetwork& network)
    {
        select(network);
        QTest::mouseClick(page.findChild<QPushButton*>(u"Connect"_qs), Qt::LeftButton);
        EXPECT_TRUE(sheets.users.empty()) << "a sheet that was expected did not come";
        for (int tick = 0; tick < 6; ++tick) {
            simulator.passTime(2000);
            runLoop.advance(2s);
        }
    }

    [[nodiscard]] bool isUp()
    {
        std::uint32_t state = NdisMediaStateDisconnected;
        EXPECT_TRUE(queryRecord(adapter, OID_GEN_MEDIA_CONNECT_STATUS, state));
        return state == NdisMediaStateConnected;
    }

    [[nodiscard]] MacAddress peer()
    {
        MacAddress bssid {};
        (void)queryRecord(adapter, OID_802_11_BSSID, bssid);
        return bssid;
    }

    [[nodiscard]] QString joinStatus() const
    {
        const auto* const label = page.findChild<QLabel*>(u"JoinStatus"_qs);
        return label->isVisible() ? label->text() : QString();
    }

    void expectJoined(const ScenarioNetwork& network)
    {
        EXPECT_TRUE(isUp()) << network.ssid;
        EXPECT_EQ(peer(), network.bssid) << network.ssid;
        EXPECT_EQ(joinStatus(), QString()) << network.ssid;
        const auto marked = bssidEntryAt(currentBssidList(), static_cast<std::uint32_t>(G_bCurSelItem));
        ASSERT_TRUE(marked.has_value()) << network.ssid;
        EXPECT_EQ(marked->fixedPart().MacAddress, network.bssid) << network.ssid;
    }

    void expectLeftDown(const ScenarioNetwork& network)
    {
        EXPECT_FALSE(isUp()) << network.ssid;
        EXPECT_TRUE(joinStatus().startsWith(u"No connection to"_qs)) << network.ssid;
        EXPECT_EQ(G_bCurSelItem, -1) << network.ssid;
    }

    InitialSurveyState initialState;
    SimulatorThread simulator;
    RecordingTickClock clock;
    RecordingAlertPanels alerts;
    RecordingAssertionHandler assertions;
    ManualRunLoop runLoop;
    ScriptedModalSheets sheets;
    SocketIORegistry registry { { simulator.root() } };
    VX7100Access adapter { registry, clock, alerts };
    SiteSurveyPageController page { adapter, runLoop, assertions, alerts, sheets };
    TableView* table { page.findChild<TableView*>(u"ApList"_qs) };
};

// A key of 64 digits typed in the sheet ends as its first 32 characters: it opens a network whose key these are.
bool opensFromTheSurvey(const ScenarioNetwork& network)
{
    if (network.security == Security::WpaEnterprise || network.signalDbm < -95)
        return false;
    return !network.presharedKey
        || asTyped({ network.presharedKey->begin(), network.presharedKey->end() }, KeyFormat::Hexadecimal)
               .toStdString()
               .substr(0, 32)
        == std::string(network.presharedKey->begin(), network.presharedKey->end());
}

TEST_F(JoinMatrix, EveryNetworkIsJoinedWithItsKey)
{
    ASSERT_TRUE(simulator.isPublished());
    int joined = 0;
    for (const ScenarioNetwork& each : simulator.scenario().networks) {
        if (each.security == Security::WpaEnterprise)
            continue;
        typeEverything(each, Knowledge::RightKey, KeyFormat::Hexadecimal);
        connectTo(each);
        if (opensFromTheSurvey(each)) {
            expectJoined(each);
            ++joined;
        } else {
            expectLeftDown(each);
        }
    }
    EXPECT_TRUE(alerts.alerts.empty());
    EXPECT_GE(joined, 20);
}

TEST_F(JoinMatrix, WrongKeyLeavesTheLinkDownEachTime)
{
    int tried = 0;
    for (const ScenarioNetwork& each : simulator.scenario().networks) {
        if (each.security == Security::Open || each.security == Security::WpaEnterprise)
            continue;
        typeEverything(each, Knowledge::WrongKey, KeyFormat::Hexadecimal);
        connectTo(each);
        expectLeftDown(each);
        ++tried;
    }
    EXPECT_GE(tried, 14);
}

TEST_F(JoinMatrix, WepKeysCanBeTypedAsCharactersToo)
{
    int joined = 0;
    for (const ScenarioNetwork& each : simulator.scenario().networks) {
        const bool printable = std::all_of(each.wepKeys.begin(), each.wepKeys.end(), isPrintable);
        if (each.security != Security::Wep || !printable)
            continue;
        typeEverything(each, Knowledge::RightKey, KeyFormat::Ascii);
        connectTo(each);
        expectJoined(each);
        ++joined;
    }
    EXPECT_GE(joined, 3);
}

TEST_F(JoinMatrix, AnyOfTheFourKeysCanBeTheTransmitKey)
{
    const ScenarioNetwork& fourKeys = network("Four Keys");
    for (int index = 0; index < 4; ++index) {
        typeWepKeys(fourKeys.wepKeys, index, fourKeys.sharedKeyAuthentication, KeyFormat::Hexadecimal);
        connectTo(fourKeys);
        expectJoined(fourKeys);
    }
}

TEST_F(JoinMatrix, KeyInTheWrongPlaceDoesNotOpen)
{
    const ScenarioNetwork& pearl = network("Pearl Diver");
    std::array<std::string, 4> keys;
    keys[1] = pearl.wepKeys[0];
    typeWepKeys(keys, 1, false, KeyFormat::Hexadecimal);
    connectTo(pearl);
    expectLeftDown(pearl);
}

TEST_F(JoinMatrix, EnterpriseNetworkIsRefusedWithAnAlert)
{
    select(network("Port Authority"));
    QTest::mouseClick(page.findChild<QPushButton*>(u"Connect"_qs), Qt::LeftButton);
    ASSERT_EQ(alerts.alerts.size(), 1u);
    EXPECT_FALSE(isUp());
}

TEST_F(JoinMatrix, KeyOfTheOtherLengthIsAskedForAndDoesNotOpen)
{
    const ScenarioNetwork& pearl = network("Pearl Diver");
    typeWepKeys({ "thirteenbytes", "", "", "" }, 0, false, KeyFormat::Hexadecimal);
    connectTo(pearl);
    expectLeftDown(pearl);
    typeEverything(pearl, Knowledge::RightKey, KeyFormat::Hexadecimal);
    connectTo(pearl);
    expectJoined(pearl);
}

TEST_F(JoinMatrix, AdHocNetworkAskedForAsInfrastructureStaysDown)
{
    const ScenarioNetwork& raft = network("Raft");
    select(raft);
    // The list lies about the mode by the time the row is used.
    const std::int32_t mode = Ndis802_11Infrastructure;
    BssidListWalk walk(currentBssidList());
    std::size_t offset = sizeof(NDIS_802_11_BSSID_LIST);
    for (auto entry = walk.next(); entry && entry->fixedPart().MacAddress != raft.bssid; entry = walk.next())
        offset += entry->fixedPart().Length;
    std::memcpy(G_pBssidList->data() + offset + offsetof(WLAN_BSSID_EX, InfrastructureMode), &mode, sizeof(mode));
    QTest::mouseClick(page.findChild<QPushButton*>(u"Connect"_qs), Qt::LeftButton);
    for (int tick = 0; tick < 6; ++tick) {
        simulator.passTime(2000);
        runLoop.advance(2s);
    }
    expectLeftDown(raft);
    adapter.QueryBssidList();
    page.RefreshAPList();
    connectTo(raft);
    expectJoined(raft);
}

TEST_F(JoinMatrix, CardPulledWhileJoiningIsNoHarm)
{
    const ScenarioNetwork& cafe = network("Harbour Cafe");
    select(cafe);
    QTest::mouseClick(page.findChild<QPushButton*>(u"Connect"_qs), Qt::LeftButton);
    simulator.run([this] { simulator.service().eject(); });
    runLoop.advance(2s);
    simulator.run([this] { EXPECT_TRUE(simulator.service().insert()); });
    (void)adapter.InitCard();
    page.RefreshAPList();
    connectTo(cafe);
    expectJoined(cafe);
}

} // namespace
