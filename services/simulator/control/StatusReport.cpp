#include "services/simulator/control/StatusReport.h"

#include "services/simulator/card/LinkModel.h"
#include "services/simulator/service/OidCatalogue.h"

#include <QJsonArray>

namespace {

QString text(std::string_view view)
{
    return QString::fromUtf8(view.data(), static_cast<qsizetype>(view.size()));
}

QString addressText(const MacAddress& address)
{
    QStringList octets;
    for (const std::uint8_t octet : address)
        octets.append(QStringLiteral("%1").arg(octet, 2, 16, QLatin1Char('0')).toUpper());
    return octets.join(QLatin1Char('-'));
}

// The name as text, which loses bytes that are not UTF-8, and as hexadecimal bytes.
void addName(QJsonObject& object, const std::string& ssid)
{
    object.insert(QStringLiteral("ssid"), text(ssid));
    object.insert(QStringLiteral("ssid_hex"), text(QByteArray::fromStdString(ssid).toHex().toStdString()));
}

QLatin1String nameOfSecurity(Security security)
{
    switch (security) {
    case Security::Open:
        return QLatin1String("open");
    case Security::Wep:
        return QLatin1String("wep");
    case Security::WpaPsk:
        return QLatin1String("wpa-psk");
    case Security::WpaNone:
        return QLatin1String("wpa-none");
    case Security::WpaEnterprise:
        return QLatin1String("wpa-enterprise");
    }
    return {};
}

QLatin1String nameOfLinkState(LinkState state)
{
    switch (state) {
    case LinkState::Idle:
        return QLatin1String("idle");
    case LinkState::Joining:
        return QLatin1String("joining");
    case LinkState::Up:
        return QLatin1String("up");
    case LinkState::Waiting:
        return QLatin1String("waiting");
    case LinkState::Refused:
        return QLatin1String("refused");
    }
    return {};
}

QJsonObject associationReport(const CardState& state)
{
    QJsonObject report { { QStringLiteral("state"), nameOfLinkState(state.association.state()) } };
    const auto& peer = state.association.peer();
    if (!peer)
        return report;
    addName(report, peer->network.ssid);
    report.insert(QStringLiteral("bssid"), addressText(peer->network.bssid));
    report.insert(QStringLiteral("channel"), peer->network.channel);
    report.insert(QStringLiteral("signal_dbm"), peer->signalDbm);
    report.insert(QStringLiteral("own_network"), state.association.isCreatedNetwork());
    report.insert(QStringLiteral("rate"),
        static_cast<int>(linkRate(peer->network, state.settings.desiredRates, peer->signalDbm)));
    return report;
}

QJsonArray networkReports(const CardState& state)
{
    QJsonArray reports;
    for (const ScenarioNetwork& network : state.neighbourhood.networks()) {
        QJsonObject report;
        addName(report, network.ssid);
        const std::int32_t signal = state.neighbourhood.signalDbm(network, state.nowMs);
        report.insert(QStringLiteral("bssid"), addressText(network.bssid));
        report.insert(QStringLiteral("channel"), network.channel);
        report.insert(QStringLiteral("signal_dbm"), signal);
        report.insert(QStringLiteral("in_range"), signal >= Neighbourhood::minSignalDbm);
        report.insert(QStringLiteral("hidden"), network.hidden);
        report.insert(QStringLiteral("ad_hoc"), network.adHoc);
        report.insert(QStringLiteral("security"), nameOfSecurity(network.security));
        reports.append(report);
    }
    return reports;
}

QJsonObject settingsReport(const CardSettings& settings)
{
    QJsonArray keyLengths;
    for (const auto& key : settings.wepKeys)
        keyLengths.append(static_cast<int>(key.size()));
    return {
        { QStringLiteral("infrastructure_mode"), settings.infrastructureMode },
        { QStringLiteral("authentication_mode"), settings.authenticationMode },
        { QStringLiteral("encryption_status"), settings.encryptionStatus },
        { QStringLiteral("wep_key_bytes"), keyLengths },
        { QStringLiteral("transmit_key"),
            settings.transmitKeyIndex ? static_cast<int>(*settings.transmitKeyIndex) : -1 },
        { QStringLiteral("has_wpa_key"), settings.wpaKey.has_value() },
        { QStringLiteral("has_ad_hoc_wpa_key"), settings.adHocWpaKey.has_value() },
        { QStringLiteral("phy_mode"), static_cast<int>(settings.phyMode) },
        { QStringLiteral("transmit_power_percent"), static_cast<int>(settings.transmitPowerPercent) },
    };
}

QJsonArray faultReports(const Faults& faults)
{
    QJsonArray reports;
    for (const Fault& fault : faults.all()) {
        QJsonObject report { { QStringLiteral("kind"), text(nameOfFault(fault.kind)) } };
        if (fault.oid)
            report.insert(QStringLiteral("oid"),
                nameOfOid(*fault.oid).empty() ? QStringLiteral("0x%1").arg(*fault.oid, 8, 16, QLatin1Char('0'))
                                              : text(nameOfOid(*fault.oid)));
        if (fault.remainingTimes)
            report.insert(QStringLiteral("times"), static_cast<qint64>(*fault.remainingTimes));
        reports.append(report);
    }
    return reports;
}

} // namespace

QJsonObject statusReport(SimulatorService& service)
{
    const CardState& state = service.card().stateAt(service.nowMs());
    return {
        { QStringLiteral("inserted"), service.isInserted() },
        { QStringLiteral("socket"), text(service.socketPath()) },
        { QStringLiteral("hardware_radio"), state.hardware.hardwareRadioOn },
        { QStringLiteral("software_radio"), state.settings.radioOn },
        { QStringLiteral("event"), state.isEventRaised },
        { QStringLiteral("ready"), state.isReady() },
        { QStringLiteral("ready_held"), state.isReadyHeld },
        { QStringLiteral("scan_entries"), static_cast<int>(state.scanList.size()) },
        { QStringLiteral("recording"), text(service.recorder().path()) },
        { QStringLiteral("association"), associationReport(state) },
        { QStringLiteral("settings"), settingsReport(state.settings) },
        { QStringLiteral("networks"), networkReports(state) },
        { QStringLiteral("faults"), faultReports(service.faults()) },
    };
}
