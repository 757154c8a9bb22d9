#pragma once

#include "platform/store/PropertyDictionary.h"

#include <QString>

#include <cstdint>

// The radio's options, as the page holds them between its controls, the driver and the settings file.
struct AdvancedSettings {
    std::int32_t nTxRate { 0 }; // index into the rate list of the wireless mode; 0 is automatic
    std::int32_t nWirelessMode { 0 }; // 0 to 3, as last loaded or applied
    std::int32_t nBGProtection { 0 }; // the driver's UseBGProtection
    bool bTurboRate { false }; // sent; no control sets it
    bool bTXBurst { false };
    bool bShortSlot { false }; // sent; no control sets it
    bool bAdhocOfdm { false };

    bool operator==(const AdvancedSettings&) const = default;
};

// The settings file under a home folder.
[[nodiscard]] QString advancedSettingsPath(const QString& homePath);

// Takes the five stored options; a key that is missing reads as 0. The two that are not stored stay.
void readSettings(const PropertyDictionary& record, AdvancedSettings& settings);
// The five options as decimal texts.
[[nodiscard]] PropertyDictionary settingsRecord(const AdvancedSettings& settings);

// What Apply does before it asks the driver: takes the selections of the two lists, drops what does not fit the mode
// and leaves in G_enumWirelessMode the mode that the driver is to be given. That is the mode of the last load or Apply:
// the newly selected one takes its place in the settings only behind these checks, and reaches the driver at the next
// Apply or insertion.
void takeSelections(std::int32_t rateIndex, std::int32_t modeIndex, AdvancedSettings& settings);
