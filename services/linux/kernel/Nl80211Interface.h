#pragma once

#include "services/linux/kernel/DriverInfo.h"
#include "services/linux/kernel/InterfaceKernel.h"
#include "services/linux/kernel/NetlinkRequests.h"

#include <string>

// One interface through nl80211, route netlink and the driver's statistics. Blocks while the driver is busy.
class Nl80211Interface final : public InterfaceKernel {
    Q_DISABLE_COPY_MOVE(Nl80211Interface)

public:
    // family: the number of nl80211.
    Nl80211Interface(int family, std::uint32_t index, std::uint32_t wiphy, const std::string& name);
    ~Nl80211Interface() override = default;

    void readWiphy(Read<WiphyFacts> done) override;
    void readScan(Read<std::vector<ScanEntry>> done) override;
    void readStations(const std::optional<MacAddress>& accessPoint, Read<std::vector<StationInfo>> done) override;
    void readSurvey(Read<std::vector<SurveyFacts>> done) override;
    void readLink(Read<LinkMessage> done) override;
    // Answers at once.
    void readDuplicates(Read<std::uint64_t> done) override { done(m_driver.statistic("rx_duplicates")); }

    void startScan(const StartScan& scan, Done done) override;
    void abortScan() override;
    void bringUp(Done done) override;
    void set(const SetRtsThreshold& threshold, Done done) override;
    void set(const SetFragmentationThreshold& threshold, Done done) override;
    void set(const SetRates& rates, Done done) override;
    void set(const SetPowerSave& powerSave, Done done) override;
    void set(const SetTransmitPower& power, Done done) override;

private:
    [[nodiscard]] NetlinkMessage request(std::uint8_t command, int flags = 0) const;
    void sendSet(NetlinkMessage message, Done done);
    template <typename Value>
    void read(NetlinkMessage message, std::optional<Value> (*parse)(Attributes), Read<std::vector<Value>> done);

    int m_family;
    std::uint32_t m_index;
    std::uint32_t m_wiphy;
    DriverInfo m_driver;
    NetlinkRequests m_requests;
    NetlinkRequests m_routes;
};
