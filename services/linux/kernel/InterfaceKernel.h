#pragma once

#include "services/linux/card/CardEffects.h"
#include "services/linux/wire/LinkMessage.h"
#include "services/linux/wire/Nl80211Values.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

// What a card needs of the kernel for its interface. Every operation returns at once; the answer comes from the event
// loop, in the order of the calls. Nothing is called back after the object's end.
class InterfaceKernel {
public:
    using Done = std::function<void(int error)>; // errno; 0 on success
    template <typename Value> using Read = std::function<void(std::optional<Value>)>; // std::nullopt on failure

    virtual ~InterfaceKernel() = default;

    virtual void readWiphy(Read<WiphyFacts> done) = 0;
    virtual void readScan(Read<std::vector<ScanEntry>> done) = 0;
    // The access point that the interface is linked to, or without an address every station. Some drivers know only the
    // first, and the second includes stations that the access point let us talk to directly.
    virtual void readStations(const std::optional<MacAddress>& accessPoint, Read<std::vector<StationInfo>> done) = 0;
    virtual void readSurvey(Read<std::vector<SurveyFacts>> done) = 0;
    virtual void readLink(Read<LinkMessage> done) = 0;
    // From the driver's own statistics; fails if it has none.
    virtual void readDuplicates(Read<std::uint64_t> done) = 0;

    virtual void startScan(const StartScan& scan, Done done) = 0;
    virtual void abortScan() = 0;
    virtual void bringUp(Done done) = 0;
    virtual void set(const SetRtsThreshold& threshold, Done done) = 0;
    virtual void set(const SetFragmentationThreshold& threshold, Done done) = 0;
    virtual void set(const SetRates& rates, Done done) = 0;
    virtual void set(const SetPowerSave& powerSave, Done done) = 0;
    virtual void set(const SetTransmitPower& power, Done done) = 0;
};
