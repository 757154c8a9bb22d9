#include "tests/profiles/automatic/UtilityRun.h"

#include "driver/BssidList.h"
#include "driver/records/Oids.h"
#include "platform/store/PropertyListFile.h"
#include "platform/ui/Images.h"
#include "tests/support/NameIn.h"

#include <algorithm>

UtilityRun::UtilityRun(SimulatedMachine& machine)
    : m_machine(machine)
    , prefs(machine.home + u"/config/settings.plist"_qs)
    , registry({ machine.simulator.root() })
    , store(prefs, preferencesFile(u"Profile.plist"_qs, machine.home))
    , advanced(adapter, alerts, assertions, machine.home)
{
    clock.onDelay = [this](std::uint32_t ticks) { m_machine.simulator.passTime(ticks * 1000 / ticksPerSecond); };
    survey.setProfilePage(&profiles);
    survey.setProfileEditor(&profiles.profileEditor());
    controller.awakeFromNib();
    survey.awakeFromNib();
    profiles.awakeFromNib();
    linkStatus.awakeFromNib();
    advanced.awakeFromNib();
    for (QWidget* const page : { static_cast<QWidget*>(&survey), static_cast<QWidget*>(&profiles) }) {
        page->resize(900, 500);
        page->show();
    }
}

void UtilityRun::tick(int count)
{
    for (int done = 0; done < count; ++done) {
        m_machine.simulator.passTime(2000);
        runLoop.advance(std::chrono::seconds(2));
    }
}

void UtilityRun::addByHand(const QString& ssid, const QString& passphrase)
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
    ASSERT_TRUE(sheets.users.empty()) << "the editor did not come";
}

void UtilityRun::selectInSurvey(const std::string& ssid)
{
    const auto& networks = m_machine.simulator.scenario().networks;
    const auto network
        = std::find_if(networks.begin(), networks.end(), [&](const auto& each) { return each.ssid == ssid; });
    ASSERT_NE(network, networks.end());
    BssidListWalk walk(currentBssidList());
    for (int row = 0; const auto entry = walk.next(); ++row) {
        if (entry->fixedPart().MacAddress == network->bssid)
            survey.findChild<TableView*>(u"ApList"_qs)->selectRowNumber(row);
    }
}

void UtilityRun::doubleClickProfile(int row)
{
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&profiles));
    const QPoint middle = table->visualRect(table->model()->index(row, 1)).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, middle);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, middle);
}

QString UtilityRun::connectedTo()
{
    std::uint32_t state = NdisMediaStateDisconnected;
    NDIS_802_11_SSID ssid {};
    EXPECT_TRUE(queryRecord(adapter, OID_GEN_MEDIA_CONNECT_STATUS, state));
    if (state != NdisMediaStateConnected || !queryRecord(adapter, OID_802_11_SSID, ssid))
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
