#include "tests/support/application/UtilityRun.h"

#include "driver/BssidList.h"
#include "driver/records/Oids.h"
#include "platform/store/PropertyListFile.h"
#include "platform/ui/Images.h"
#include "tests/support/NameIn.h"

#include <algorithm>

UtilityRun::UtilityRun(SimulatedMachine& machine, std::chrono::milliseconds requestTimeout)
    : m_machine(machine)
    , m_settings(machine.home + u"/config/window.plist"_qs)
    , prefs(machine.home + u"/config/settings.plist"_qs)
    , registry({ machine.simulator.root() }, requestTimeout)
    , store(prefs, preferencesFile(u"Profile.plist"_qs, machine.home))
    , application({ registry, clock, runLoop, alerts, sheets, assertions, prefs, m_settings, machine.home,
          machine.folder.filePath(u"no-bundles"_qs) })
{
    clock.onDelay = [this](std::uint32_t ticks) { m_machine.simulator.passTime(ticks * 1000 / ticksPerSecond); };
    application.awakeFromNib();
}

void UtilityRun::tick(int count)
{
    for (int done = 0; done < count; ++done) {
        m_machine.simulator.passTime(2000);
        runLoop.advance(std::chrono::seconds(2));
    }
}

void UtilityRun::addManually(const QString& ssid, const QString& passphrase)
{
    sheets.users.emplace_back([=](QDialog& editor) {
        typeSsid(editor, ssid);
        if (!passphrase.isEmpty()) {
            choose(editor, u"AuthenType"_qs, 2);
            typePresharedKey(editor, passphrase);
        }
        pressOk(editor);
    });
    press(profiles, u"Add"_qs);
    ASSERT_TRUE(sheets.users.empty()) << "the editor did not open";
}

void UtilityRun::doubleClickProfile(int row)
{
    bringToFront(profiles);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&application.window()));
    const QPoint middle = table->visualRect(table->model()->index(row, 1)).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, middle);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, middle);
}

void UtilityRun::deleteProfile(int row)
{
    table->selectRowNumber(row);
    press(profiles, u"Delete"_qs);
}

const ScenarioNetwork& UtilityRun::network(const std::string& ssid) const
{
    const auto& networks = m_machine.simulator.scenario().networks;
    return *std::find_if(networks.begin(), networks.end(), [&](const auto& each) { return each.ssid == ssid; });
}

void UtilityRun::select(const ScenarioNetwork& network)
{
    BssidListWalk walk(currentBssidList());
    for (int row = 0; const auto entry = walk.next(); ++row) {
        if (entry->fixedPart().MacAddress == network.bssid) {
            survey.findChild<TableView*>(u"ApList"_qs)->selectRowNumber(row);
            return;
        }
    }
    FAIL() << network.ssid << " is not in the list";
}

void UtilityRun::connectTo(const ScenarioNetwork& network)
{
    select(network);
    press(survey, u"Connect"_qs);
    EXPECT_TRUE(sheets.users.empty()) << "an expected sheet did not open";
}

bool UtilityRun::linkIsUp()
{
    std::uint32_t state = NdisMediaStateDisconnected;
    EXPECT_TRUE(queryRecord(application.adapter(), OID_GEN_MEDIA_CONNECT_STATUS, state));
    return state == NdisMediaStateConnected;
}

QString UtilityRun::connectedTo()
{
    NDIS_802_11_SSID ssid {};
    if (!linkIsUp() || !queryRecord(application.adapter(), OID_802_11_SSID, ssid))
        return {};
    return QString::fromUtf8(nameIn(ssid));
}

QString UtilityRun::mark() const
{
    QString marks;
    for (int row = 0; row < table->numberOfRows(); ++row) {
        const QVariant shown = table->model()->index(row, 0).data(Qt::DecorationRole);
        if (shown.isNull())
            continue;
        const qint64 image = shown.value<QIcon>().cacheKey();
        for (const QString& name : { u"CHECKMRK"_qs, u"UNCHECKMRK"_qs }) {
            if (image == imageNamed(name).cacheKey())
                marks += u"%1 %2"_qs.arg(row).arg(name);
        }
    }
    return marks;
}
