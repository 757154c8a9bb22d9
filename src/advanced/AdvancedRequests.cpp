#include "advanced/AdvancedRequests.h"

#include "advanced/RateRules.h"
#include "app/shared/SharedState.h"
#include "app/shared/Trace.h"
#include "driver/VX7100Access.h"
#include "driver/records/Oids.h"
#include "driver/records/VxRecords.h"

#include <array>
#include <cstdint>
#include <cstring>

void sendWirelessMode(VX7100Access& adapter, const AdvancedSettings& settings)
{
    std::int32_t enumWirelessMode = 0;
    (void)queryRecord(adapter, VX_OID_802_11_PHY_MODE, enumWirelessMode);
    traceAlways("#### AdvancePageController - OnApply -  nWirelessMode = %d, enumWirelessMode = %d,  "
                "G_enumWirelessMode = %d ####\n",
        settings.nWirelessMode, enumWirelessMode, G_enumWirelessMode);
    if (enumWirelessMode == G_enumWirelessMode)
        return;
    traceAlways("#### 111111111 ####\n");
    (void)setRecord(adapter, VX_OID_802_11_PHY_MODE | oidSetFlag, G_enumWirelessMode);
}

std::optional<bool> sendStationConfiguration(VX7100Access& adapter, const AdvancedSettings& settings)
{
    VX_802_11_STA_CONFIG configuration {};
    const bool answered = queryRecord(adapter, VX_OID_802_11_STA_CONFIG, configuration);
    const VX_802_11_STA_CONFIG before = configuration;
    configuration.EnableTxBurst = settings.bTXBurst ? 1 : 0;
    configuration.EnableTurboRate = settings.bTurboRate ? 1 : 0;
    configuration.UseBGProtection = static_cast<std::uint32_t>(settings.nBGProtection);
    configuration.UseShortSlotTime = settings.bShortSlot ? 1 : 0;
    configuration.UseOfdmRatesIn11gAdhoc = settings.bAdhocOfdm ? 1 : 0;
    if (std::memcmp(&configuration, &before, sizeof(configuration)) != 0) {
        traceAlways("#### 222222222222 ####\n");
        (void)setRecord(adapter, VX_OID_802_11_STA_CONFIG | oidSetFlag, configuration);
        traceAlways("#### 222222-22222 ####\n");
    }
    return answered ? std::optional(before.HwRadioStatus != 0) : std::nullopt;
}

bool sendDesiredRates(VX7100Access& adapter, const AdvancedSettings& settings, AssertionHandler& assertions)
{
    const auto rates = desiredRates(settings.nWirelessMode, settings.nTxRate, assertions);
    if (!rates)
        return false;
    (void)setRecord(adapter, OID_802_11_DESIRED_RATES, *rates);
    return true;
}

void sendRadio(VX7100Access& adapter)
{
    const std::array<std::uint8_t, 4> request { G_bRadio };
    (void)setRecord(adapter, VX_OID_802_11_RADIO | oidSetFlag, request);
}
