#include "advanced/AdvancedSettings.h"

#include "advanced/RateRules.h"
#include "app/shared/SharedState.h"
#include "platform/store/PropertyListFile.h"

namespace {

QString rateKey()
{
    return QStringLiteral("Tx Rate");
}

QString protectionKey()
{
    return QStringLiteral("BG Protection");
}

QString burstKey()
{
    return QStringLiteral("Tx Burst");
}

QString adhocOfdmKey()
{
    return QStringLiteral("Ad Hoc Use OFDM");
}

QString modeKey()
{
    return QStringLiteral("Wireless Mode");
}

} // namespace

QString advancedSettingsPath(const QString& homePath)
{
    return preferencesFile(QStringLiteral("AdvancedProfileSetting.plist"), homePath);
}

void readSettings(const PropertyDictionary& record, AdvancedSettings& settings)
{
    settings.nTxRate = record.integer(rateKey());
    settings.nBGProtection = record.integer(protectionKey());
    settings.bTXBurst = record.integer(burstKey()) != 0;
    settings.bAdhocOfdm = record.integer(adhocOfdmKey()) != 0;
    settings.nWirelessMode = record.integer(modeKey());
}

PropertyDictionary settingsRecord(const AdvancedSettings& settings)
{
    PropertyDictionary record;
    record.set(rateKey(), settings.nTxRate);
    record.set(protectionKey(), settings.nBGProtection);
    record.set(burstKey(), settings.bTXBurst ? 1 : 0);
    record.set(adhocOfdmKey(), settings.bAdhocOfdm ? 1 : 0);
    record.set(modeKey(), settings.nWirelessMode);
    return record;
}

void applySelections(std::int32_t rateIndex, std::int32_t modeIndex, AdvancedSettings& settings)
{
    settings.nTxRate = rateIndex;
    if (G_bSupportAMode == 0 && settings.nWirelessMode > cckOnlyMode)
        settings.nWirelessMode = 0;
    G_enumWirelessMode = settings.nWirelessMode;
    if (!modeHasProtection(settings.nWirelessMode))
        settings.nBGProtection = 0;
    // Only for the CCK mode; desiredRates() handles an index beyond the OFDM list.
    if (settings.nWirelessMode == cckOnlyMode)
        settings.nTxRate = transmitRateIndexFor(cckOnlyMode, settings.nTxRate);
    settings.nWirelessMode = modeIndex;
}
