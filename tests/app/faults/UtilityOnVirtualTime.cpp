#include "tests/app/faults/UtilityOnVirtualTime.h"

#include "about/BundleInformation.h"
#include "app/shared/SharedState.h"
#include "driver/BssidList.h"
#include "platform/ui/TableView.h"
#include "services/simulator/scenario/DefaultScenario.h"

#include <QCheckBox>
#include <QLabel>
#include <QTabWidget>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

constexpr std::uint64_t cardSeed = 1;

// The default networks with constant signals, so that what is shown does not depend on the time.
Scenario steadyScenario(UtilityOnVirtualTime::Networks networks)
{
    static const std::set<std::string> few { "Harbour Cafe", "Pearl Diver", "Threes", "Raft" };
    Scenario scenario = *parseScenario(defaultScenarioText()).scenario;
    for (ScenarioNetwork& network : scenario.networks)
        network.driftDb = 0;
    if (networks == UtilityOnVirtualTime::Networks::Few)
        std::erase_if(scenario.networks, [](const auto& network) { return !few.contains(network.ssid); });
    return scenario;
}

// The About page sends its requests only if the utility is installed.
QString installedUnder(const QString& root)
{
    for (const QString& path : { utilityInformationPath(root), driverInformationPath(root) }) {
        QFile file(path);
        if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly))
            return {};
        file.write("<plist version=\"1.0\"><dict><key>CFBundleShortVersionString</key>"
                   "<string>1.0</string></dict></plist>");
    }
    return root;
}

QString keyOf(const ScenarioNetwork& network)
{
    if (!network.presharedKey)
        return QString::fromStdString(network.passphrase);
    const auto& key = *network.presharedKey;
    return QString::fromLatin1(QByteArray(reinterpret_cast<const char*>(key.data()), std::ssize(key)).toHex());
}

const QStringList& figuresOverTime()
{
    static const QStringList names { u"ThroughputTx"_qs, u"ThroughputRx"_qs, u"LinkQuality"_qs, u"SignalStrength"_qs,
        u"FTS"_qs, u"FTSWR"_qs, u"FTSAR"_qs, u"FFTRAAA"_qs, u"RFSRC"_qs, u"RFFTRC"_qs, u"FRS"_qs, u"FRWCE"_qs,
        u"FDDTO"_qs, u"DFR"_qs };
    return names;
}

QStringList rowsOf(const TableView& table)
{
    QStringList rows;
    for (int row = 0; row < table.numberOfRows(); ++row) {
        QString texts;
        for (int column = 0; column < table.model()->columnCount(); ++column)
            texts += table.model()->index(row, column).data().toString() + u'|';
        rows.append(texts);
    }
    rows.sort(); // a network that returns is appended to the list
    return rows;
}

QString settingsText(const CardState& state)
{
    const CardSettings& settings = state.settings;
    QString text = u"card: mode %1, authentication %2, encryption %3, preamble %4, rts %5, fragmentation %6"_qs
                       .arg(settings.infrastructureMode)
                       .arg(settings.authenticationMode)
                       .arg(settings.encryptionStatus)
                       .arg(settings.preamble)
                       .arg(settings.rtsThresholdBytes)
                       .arg(settings.fragmentationThresholdBytes);
    text += u", power %1 %2, phy %3, burst %4, radio %5"_qs.arg(settings.transmitPowerPercent)
                .arg(settings.powerMode)
                .arg(settings.phyMode)
                .arg(settings.stationConfig.EnableTxBurst)
                .arg(settings.radioOn);
    const auto& peer = state.association.peer();
    return text + u", peer "_qs + (peer ? QString::fromStdString(peer->network.ssid) : QString());
}

} // namespace

// Settings are synced to the disk with every tick that initialises a card. In memory this takes no time.
QString UtilityOnVirtualTime::temporaryTemplate()
{
    const QString inMemory = u"/dev/shm"_qs;
    return (QFileInfo(inMemory).isWritable() ? inMemory : QDir::tempPath()) + u"/utility-XXXXXX"_qs;
}

UtilityOnVirtualTime::UtilityOnVirtualTime(Networks networks)
    : scenario(steadyScenario(networks))
    , card(scenario, cardSeed)
    , application({ registry, clock, runLoop, alerts, sheets, assertions, userDefaults, m_settings, m_home.path(),
          installedUnder(m_home.path()) })
{
}

void UtilityOnVirtualTime::tick(int count)
{
    for (int done = 0; done < count; ++done) {
        time.nowMs += 2000;
        runLoop.advance(std::chrono::seconds(2));
    }
}

const ScenarioNetwork& UtilityOnVirtualTime::network(const std::string& ssid) const
{
    return *std::find_if(scenario.networks.begin(), scenario.networks.end(),
        [&ssid](const ScenarioNetwork& each) { return each.ssid == ssid; });
}

void UtilityOnVirtualTime::connectTo(const std::string& ssid)
{
    const ScenarioNetwork& wanted = network(ssid);
    if (wanted.security == Security::Wep) {
        sheets.users.emplace_back([&wanted](QDialog& sheet) {
            choose(sheet, u"WEPKey1Combo"_qs, 1);
            type(*sheet.findChild<QLineEdit*>(u"WEPKey1Text"_qs), QString::fromStdString(wanted.wepKeys.front()));
            pressOk(sheet);
        });
    } else if (wanted.security != Security::Open) {
        sheets.users.emplace_back([&wanted](QDialog& sheet) {
            typePresharedKey(sheet, keyOf(wanted));
            pressOk(sheet);
        });
    }
    BssidListWalk walk(currentBssidList());
    for (int row = 0; const auto entry = walk.next(); ++row) {
        if (entry->fixedPart().MacAddress == wanted.bssid)
            control<TableView>("ApList").selectRowNumber(row);
    }
    press(survey, u"Connect"_qs);
    EXPECT_TRUE(sheets.users.empty()) << "an expected sheet did not open";
    sheets.users.clear();
}

void UtilityOnVirtualTime::addProfile(const std::string& ssid)
{
    const ScenarioNetwork& wanted = network(ssid);
    sheets.users.emplace_back([&wanted](QDialog& editor) {
        typeSsid(editor, QString::fromStdString(wanted.ssid));
        choose(editor, u"AuthenType"_qs, 2);
        typePresharedKey(editor, keyOf(wanted));
        pressOk(editor);
    });
    press(profiles, u"Add"_qs);
    EXPECT_TRUE(sheets.users.empty()) << "the editor did not open";
}

void UtilityOnVirtualTime::activateFirstProfile()
{
    control<TableView>("profileList").selectRowNumber(0);
    press(profiles, u"Activate"_qs);
}

void UtilityOnVirtualTime::ensureLinkTo(const std::string& ssid)
{
    const auto& peer = cardState().association.peer();
    if (peer && peer->network.ssid == ssid)
        return;
    connectTo(ssid);
    tick(3);
}

QString UtilityOnVirtualTime::text(const char* label) const
{
    return control<QLabel>(label).text();
}

QStringList UtilityOnVirtualTime::snapshot()
{
    QStringList lines { settingsText(cardState()) };
    const QStringList left = figuresOverTime();
    const auto labels = application.window().findChildren<QLabel*>();
    for (const QLabel* const label : labels) {
        if (!label->objectName().isEmpty() && !left.contains(label->objectName()))
            lines.append(label->objectName() + u": "_qs + label->text());
    }
    const auto buttons = application.window().findChildren<QAbstractButton*>();
    for (const QAbstractButton* const button : buttons) {
        lines.append(u"%1: %2%3%4"_qs.arg(button->objectName(), button->text(),
            button->isEnabled() ? QString() : u", disabled"_qs, button->isChecked() ? u", checked"_qs : QString()));
    }
    const auto lists = application.window().findChildren<QComboBox*>();
    for (const QComboBox* const list : lists)
        lines.append(list->objectName() + u": "_qs + list->currentText());
    lines += rowsOf(control<TableView>("ApList"));
    lines.append(control<TableView>("ApList").emptyText());
    lines += rowsOf(control<TableView>("profileList"));
    lines.append(
        u"flags: exists %1, radio %2, profile %3 %4, dialog %5, 5 GHz %6, waiting tasks %7"_qs.arg(G_bDeviceExist)
            .arg(G_bRadio)
            .arg(G_configFromProfile)
            .arg(G_bCheckedProfileConnect)
            .arg(G_bDialogRunning)
            .arg(G_bSupportAMode)
            .arg(ProfileDataQueue->size()));
    lines.sort(); // the order of the children depends on the pages that were in front
    return lines;
}

QStringList UtilityOnVirtualTime::smoothedFigures() const
{
    return { text("LinkQuality"), text("SignalStrength") };
}
