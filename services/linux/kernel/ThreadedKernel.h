#pragma once

#include "services/linux/kernel/InterfaceKernel.h"
#include "services/linux/kernel/ThreadOwned.h"

// The kernel carries out many requests before it takes the next: bringing an interface up or reading the statistics may
// take a driver seconds. This makes them in a thread of the interface, so that neither clients nor other cards wait.
class ThreadedKernel final : public InterfaceKernel {
    Q_DISABLE_COPY_MOVE(ThreadedKernel)

public:
    // make is called in that thread.
    explicit ThreadedKernel(std::function<std::unique_ptr<InterfaceKernel>()> make)
        : m_kernel(std::move(make))
    {
    }
    ~ThreadedKernel() override = default;

    void readWiphy(Read<WiphyFacts> done) override;
    void readScan(Read<std::vector<ScanEntry>> done) override;
    void readStations(const std::optional<MacAddress>& accessPoint, Read<std::vector<StationInfo>> done) override;
    void readSurvey(Read<std::vector<SurveyFacts>> done) override;
    void readLink(Read<LinkMessage> done) override;
    void readDuplicates(Read<std::uint64_t> done) override;

    void startScan(const StartScan& scan, Done done) override;
    void abortScan() override;
    void bringUp(Done done) override;
    void set(const SetRtsThreshold& threshold, Done done) override { post(threshold, std::move(done)); }
    void set(const SetFragmentationThreshold& threshold, Done done) override { post(threshold, std::move(done)); }
    void set(const SetRates& rates, Done done) override { post(rates, std::move(done)); }
    void set(const SetPowerSave& powerSave, Done done) override { post(powerSave, std::move(done)); }
    void set(const SetTransmitPower& power, Done done) override { post(power, std::move(done)); }

private:
    template <typename Setting> void post(const Setting& setting, Done done)
    {
        m_kernel.call([setting, done = m_kernel.fromMainThread(std::move(done))](
                          InterfaceKernel& kernel) { kernel.set(setting, done); });
    }

    ThreadOwned<InterfaceKernel> m_kernel;
};
