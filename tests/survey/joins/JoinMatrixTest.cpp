#include "driver/BssidList.h"
#include "driver/records/Oids.h"
#include "tests/support/application/UtilityRunFixture.h"

#include <QLabel>
#include <QRadioButton>

#include <algorithm>

// Every kind of network of the default scenario, joined through the real sheets and sockets with the right key and with
// a wrong one.

namespace {

enum class Knowledge { RightKey, WrongKey };
enum class KeyFormat { Hexadecimal = 0, Ascii = 1 };

QString typedAs(const std::string& key, KeyFormat format)
{
    const QByteArray bytes = QByteArray::fromStdString(key);
    return QString::fromLatin1(format == KeyFormat::Ascii ? bytes : bytes.toHex());
}

bool isPrintable(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), [](char character) { return character > ' ' && character < 0x7F; });
}

std::string wrongKey(std::string key)
{
    key.front() = key.front() == 'x' ? 'y' : 'x';
    return key;
}

class JoinMatrix : public UtilityRunFixture {
protected:
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
                    typedAs(keys[static_cast<std::size_t>(number - 1)], format));
            }
            auto* const radio = sheet.findChild<QRadioButton*>(u"WEPKey%1Radio"_qs.arg(transmitKey + 1));
            QTest::mouseClick(radio, Qt::LeftButton, {}, QPoint(5, radio->height() / 2));
            pressOk(sheet);
        });
    }

    void typePresharedKey(const std::string& text)
    {
        sheets.users.emplace_back([text](QDialog& sheet) {
            ::typePresharedKey(sheet, QString::fromStdString(text));
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
                key = wrong && !key.empty() ? wrongKey(key) : key;
            typeWepKeys(keys, network.transmitKeyIndex, network.sharedKeyAuthentication, format);
        } else if (network.security == Security::WpaPsk || network.security == Security::WpaNone) {
            const std::string digits = network.presharedKey
                ? typedAs({ network.presharedKey->begin(), network.presharedKey->end() }, KeyFormat::Hexadecimal)
                      .toStdString()
                : network.passphrase;
            typePresharedKey(wrong ? wrongKey(network.presharedKey ? "a passphrase" : digits) : digits);
        }
    }

    void join(const ScenarioNetwork& network)
    {
        connectTo(network);
        tick(ticksToSettle);
    }

    [[nodiscard]] MacAddress peer()
    {
        MacAddress bssid {};
        (void)queryRecord(application.adapter(), OID_802_11_BSSID, bssid);
        return bssid;
    }

    [[nodiscard]] QString joinStatus() const
    {
        const auto* const label = survey.findChild<QLabel*>(u"JoinStatus"_qs);
        return label->isVisible() ? label->text() : QString();
    }

    void expectJoined(const ScenarioNetwork& network)
    {
        EXPECT_TRUE(linkIsUp()) << network.ssid;
        EXPECT_EQ(peer(), network.bssid) << network.ssid;
        EXPECT_EQ(joinStatus(), QString()) << network.ssid;
        const auto marked = bssidEntryAt(currentBssidList(), static_cast<std::uint32_t>(G_bCurSelItem));
        ASSERT_TRUE(marked.has_value()) << network.ssid;
        EXPECT_EQ(marked->fixedPart().MacAddress, network.bssid) << network.ssid;
    }

    void expectLeftDown(const ScenarioNetwork& network)
    {
        EXPECT_FALSE(linkIsUp()) << network.ssid;
        EXPECT_TRUE(joinStatus().startsWith(u"No connection to"_qs)) << network.ssid;
        EXPECT_EQ(G_bCurSelItem, -1) << network.ssid;
    }
};

// The sheet keeps the first 32 characters of a key of 64 digits, so it only joins a network with exactly that key.
bool canBeJoinedFromTheSurvey(const ScenarioNetwork& network)
{
    if (network.security == Security::WpaEnterprise || network.signalDbm < -95)
        return false;
    return !network.presharedKey
        || typedAs({ network.presharedKey->begin(), network.presharedKey->end() }, KeyFormat::Hexadecimal)
               .toStdString()
               .substr(0, 32)
        == std::string(network.presharedKey->begin(), network.presharedKey->end());
}

TEST_F(JoinMatrix, JoinsEveryNetworkWithItsKey)
{
    ASSERT_TRUE(simulator.isPublished());
    int joined = 0;
    for (const ScenarioNetwork& each : simulator.scenario().networks) {
        if (each.security == Security::WpaEnterprise)
            continue;
        typeEverything(each, Knowledge::RightKey, KeyFormat::Hexadecimal);
        join(each);
        if (canBeJoinedFromTheSurvey(each)) {
            expectJoined(each);
            ++joined;
        } else {
            expectLeftDown(each);
        }
    }
    EXPECT_TRUE(alerts.alerts.empty());
    EXPECT_GE(joined, 20);
}

TEST_F(JoinMatrix, WrongKeyLeavesTheLinkDown)
{
    int tried = 0;
    for (const ScenarioNetwork& each : simulator.scenario().networks) {
        if (each.security == Security::Open || each.security == Security::WpaEnterprise)
            continue;
        typeEverything(each, Knowledge::WrongKey, KeyFormat::Hexadecimal);
        join(each);
        expectLeftDown(each);
        ++tried;
    }
    EXPECT_GE(tried, 14);
}

TEST_F(JoinMatrix, WepKeysCanBeTypedAsAscii)
{
    int joined = 0;
    for (const ScenarioNetwork& each : simulator.scenario().networks) {
        const bool printable = std::all_of(each.wepKeys.begin(), each.wepKeys.end(), isPrintable);
        if (each.security != Security::Wep || !printable)
            continue;
        typeEverything(each, Knowledge::RightKey, KeyFormat::Ascii);
        join(each);
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
        join(fourKeys);
        expectJoined(fourKeys);
    }
}

TEST_F(JoinMatrix, KeyWithTheWrongIndexDoesNotJoin)
{
    const ScenarioNetwork& pearl = network("Pearl Diver");
    std::array<std::string, 4> keys;
    keys[1] = pearl.wepKeys[0];
    typeWepKeys(keys, 1, false, KeyFormat::Hexadecimal);
    join(pearl);
    expectLeftDown(pearl);
}

TEST_F(JoinMatrix, EnterpriseNetworkShowsAnAlert)
{
    connectTo("Port Authority");
    ASSERT_EQ(alerts.alerts.size(), 1u);
    EXPECT_FALSE(linkIsUp());
}

TEST_F(JoinMatrix, KeyOfTheOtherLengthDoesNotJoin)
{
    const ScenarioNetwork& pearl = network("Pearl Diver");
    typeWepKeys({ "thirteenbytes", "", "", "" }, 0, false, KeyFormat::Hexadecimal);
    join(pearl);
    expectLeftDown(pearl);
    typeEverything(pearl, Knowledge::RightKey, KeyFormat::Hexadecimal);
    join(pearl);
    expectJoined(pearl);
}

TEST_F(JoinMatrix, AdHocNetworkStaysDownWhenJoinedAsInfrastructure)
{
    const ScenarioNetwork& raft = network("Raft");
    // Changes the mode in the scan list.
    const std::int32_t mode = Ndis802_11Infrastructure;
    BssidListWalk walk(currentBssidList());
    std::size_t offset = sizeof(NDIS_802_11_BSSID_LIST);
    for (auto entry = walk.next(); entry && entry->fixedPart().MacAddress != raft.bssid; entry = walk.next())
        offset += entry->fixedPart().Length;
    std::memcpy(G_pBssidList->data() + offset + offsetof(WLAN_BSSID_EX, InfrastructureMode), &mode, sizeof(mode));
    join(raft);
    expectLeftDown(raft);
    application.adapter().QueryBssidList();
    survey.RefreshAPList();
    join(raft);
    expectJoined(raft);
}

TEST_F(JoinMatrix, CardRemovedWhileJoiningCanJoinAfterReinsertion)
{
    const ScenarioNetwork& cafe = network("Harbour Cafe");
    connectTo(cafe);
    eject();
    survey.OnTimer(); // sends the connection before the device watch notices
    tick();
    EXPECT_EQ(G_bDeviceExist, 0);
    insert();
    tick();
    join(cafe);
    expectJoined(cafe);
}

} // namespace
