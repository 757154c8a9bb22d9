#pragma once

#include "app/shared/Pages.h"
#include "app/shared/SharedState.h"
#include "driver/VX7100Access.h"
#include "platform/AlertPanels.h"
#include "platform/AssertionHandler.h"
#include "platform/IORegistry.h"
#include "platform/RunLoop.h"
#include "platform/TickClock.h"

#include <QStringList>

#include <algorithm>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

// A card whose answers a test sets OID by OID, and which notes each request and its length.
class ScriptedCard final : public IORegistry {
public:
    struct Request {
        std::uint32_t oid;
        std::size_t length;
        bool operator==(const Request&) const = default;
    };

    std::vector<Request> requests;
    bool isPresent { true };
    std::set<std::uint32_t> failingOids;

    template <typename Record> void answer(std::uint32_t oid, const Record& record)
    {
        auto& bytes = m_answers[oid];
        bytes.resize(sizeof(Record));
        std::memcpy(bytes.data(), &record, sizeof(Record));
    }

    [[nodiscard]] std::vector<std::uint32_t> takeOids()
    {
        std::vector<std::uint32_t> oids;
        for (const Request& request : std::exchange(requests, {}))
            oids.push_back(request.oid);
        return oids;
    }

    kern_return_t IOMasterPort(mach_port_t& masterPort) override
    {
        masterPort = 1;
        return KERN_SUCCESS;
    }
    CFDictionaryRef IOServiceMatching(std::string_view) override { return 2; }
    kern_return_t IOServiceGetMatchingServices(mach_port_t, CFDictionaryRef, io_object_t& iterator) override
    {
        iterator = 3;
        m_iterated = false;
        return KERN_SUCCESS;
    }
    io_object_t IOIteratorNext(io_object_t) override { return isPresent && !std::exchange(m_iterated, true) ? 4 : 0; }
    void IOObjectRelease(io_object_t) override { }
    void CFRelease(CFDictionaryRef) override { }
    void mach_port_deallocate(mach_port_t) override { }
    kern_return_t IOServiceOpen(io_object_t, std::uint32_t, io_connect_t& connection) override
    {
        connection = 5;
        return KERN_SUCCESS;
    }
    void IOServiceClose(io_connect_t) override { }
    kern_return_t IOConnectMethodStructureIStructureO(io_connect_t, std::uint32_t index,
        std::span<const std::byte> input, std::uint32_t& outputSize, std::span<std::byte> output) override
    {
        requests.push_back({ index, input.size() });
        if (failingOids.contains(index)) {
            outputSize = 0;
            return KERN_FAILURE;
        }
        const auto& bytes = m_answers[index];
        const auto count = std::min({ bytes.size(), output.size(), std::size_t { outputSize } });
        std::copy_n(bytes.begin(), count, output.begin());
        outputSize = static_cast<std::uint32_t>(count);
        return KERN_SUCCESS;
    }
    kern_return_t IOConnectMethodScalarIScalarO(io_connect_t, std::uint32_t) override { return KERN_SUCCESS; }

private:
    std::map<std::uint32_t, std::vector<std::byte>> m_answers;
    bool m_iterated { false };
};

class NoClock final : public TickClock {
public:
    void Delay(std::uint32_t) override { }
};

class NoAlerts final : public AlertPanels {
public:
    void NSRunAlertPanel(const QString&, const QString&, const QString&) override { }
};

// One timer, fired by the test.
class OneTimerRunLoop final : public RunLoop {
public:
    std::vector<std::chrono::milliseconds> intervals;
    std::function<void()> fire;

    std::unique_ptr<Timer> scheduleRepeatingTimer(
        std::chrono::milliseconds interval, std::function<void()> call) override
    {
        intervals.push_back(interval);
        fire = std::move(call);
        return std::make_unique<NoTimer>();
    }

private:
    class NoTimer final : public Timer {
    public:
        void invalidate() override { }
    };
};

class NotingAssertions final : public AssertionHandler {
public:
    struct Failure {
        std::string file;
        int line;
        std::string description;
        bool operator==(const Failure&) const = default;
    };
    std::vector<Failure> failures;
    bool goesOn { false };

    bool handleFailureInMethod(
        const char*, const char*, const char* file, int lineNumber, const char* description) override
    {
        failures.push_back({ file, lineNumber, description });
        return goesOn;
    }
};

class NotingSiteSurveyPage final : public SiteSurveyPage {
public:
    QStringList texts;

    void ClearAPList() override { }
    void RefreshAPList() override { }
    void StartSiteSurveyTimer() override { }
    void StopSiteSurveyTimer() override { }
    void UpdateConnectStatus(const QString& text) override { texts << text; }
};

// The shared flags as they are when a card is in use, and as they were when the test ends.
struct CardInUse {
    CardInUse()
    {
        G_bDeviceExist = 1;
        G_bRadio = 1;
        G_configFromProfile = 0;
        G_bCheckedProfileConnect = 0;
    }
    ~CardInUse()
    {
        G_bDeviceExist = 0;
        G_bRadio = 1;
        G_configFromProfile = 0;
        G_bCheckedProfileConnect = 0;
    }
    CardInUse(const CardInUse&) = delete;
    CardInUse& operator=(const CardInUse&) = delete;
};
