#pragma once

#include "services/linux/kernel/InterfaceKernel.h"
#include "services/linux/service/LinuxCard.h"
#include "services/linux/supplicant/Supplicant.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

// A kernel that answers when the test lets it: answers wait in a queue.
class FakeKernel final : public InterfaceKernel {
public:
    void readWiphy(Read<WiphyFacts> done) override { later("wiphy", std::move(done), wiphy); }
    void readScan(Read<std::vector<ScanEntry>> done) override { later("scan results", std::move(done), networks); }
    void readStations(const std::optional<MacAddress>& accessPoint, Read<std::vector<StationInfo>> done) override
    {
        accessPoints.push_back(accessPoint);
        later("stations", std::move(done), stations);
    }
    void readSurvey(Read<std::vector<SurveyFacts>> done) override { later("survey", std::move(done), surveys); }
    void readLink(Read<LinkMessage> done) override { later("link", std::move(done), link); }
    void readDuplicates(Read<std::uint64_t> done) override { later("duplicates", std::move(done), duplicates); }

    void startScan(const StartScan& scan, Done done) override
    {
        scans.push_back(scan);
        answer("scan", std::move(done));
    }
    void abortScan() override { calls.emplace_back("abort"); }
    void bringUp(Done done) override { answer("up", std::move(done)); }
    void set(const SetRtsThreshold&, Done done) override { answer("rts", std::move(done)); }
    void set(const SetFragmentationThreshold&, Done done) override { answer("fragments", std::move(done)); }
    void set(const SetRates& rates, Done done) override
    {
        allRates.push_back(rates);
        answer("rates", std::move(done));
    }
    void set(const SetPowerSave&, Done done) override { answer("power save", std::move(done)); }
    void set(const SetTransmitPower&, Done done) override { answer("power", std::move(done)); }

    void answerAll()
    {
        while (!waiting.empty()) {
            const auto next = std::move(waiting.front());
            waiting.pop_front();
            next();
        }
    }
    [[nodiscard]] std::size_t count(const std::string& call) const
    {
        return static_cast<std::size_t>(std::count(calls.begin(), calls.end(), call));
    }

    std::optional<WiphyFacts> wiphy;
    std::optional<std::vector<ScanEntry>> networks { std::vector<ScanEntry> {} };
    std::optional<std::vector<StationInfo>> stations { std::vector<StationInfo> {} };
    std::optional<std::vector<SurveyFacts>> surveys { std::vector<SurveyFacts> {} };
    std::optional<std::uint64_t> duplicates { 0 };
    std::optional<LinkMessage> link { LinkMessage {} };
    bool isPrompt { false }; // answers questions at once
    std::map<std::string, int> errors; // by call; once each
    std::vector<std::string> calls;
    std::vector<StartScan> scans;
    std::vector<SetRates> allRates;
    std::vector<std::optional<MacAddress>> accessPoints; // whose station was asked for
    std::deque<std::function<void()>> waiting;

private:
    template <typename Value> void later(const char* call, Read<Value> done, const std::optional<Value>& value)
    {
        calls.emplace_back(call);
        waiting.emplace_back([done = std::move(done), &value] { done(value); });
        if (isPrompt)
            answerAll();
    }
    void answer(const char* call, Done done)
    {
        calls.emplace_back(call);
        const auto error = errors.extract(call);
        waiting.emplace_back([done = std::move(done), code = error ? error.mapped() : 0] { done(code); });
    }
};

class FakeSupplicant final : public Supplicant {
public:
    void start(SupplicantListener& one) override { listener = &one; }
    void join(const NetworkBlock& block) override { joins.push_back(block); }
    void widenSearch(const std::vector<std::uint32_t>& frequenciesMhz, bool) override
    {
        searches.push_back(frequenciesMhz);
    }
    void leave() override { ++leaves; }

    SupplicantListener* listener { nullptr };
    std::vector<NetworkBlock> joins;
    std::vector<std::vector<std::uint32_t>> searches;
    int leaves { 0 };
};

class FakeRadio final : public InterfaceRadio {
public:
    [[nodiscard]] RadioPosition position() const override { return current; }
    [[nodiscard]] bool set(bool isOn) override
    {
        wanted = isOn;
        return canSwitch;
    }

    RadioPosition current;
    std::optional<bool> wanted;
    bool canSwitch { true };
};
