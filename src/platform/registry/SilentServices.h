#pragma once

#include <QtGlobal>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>

// Where a service is published: the socket DIRECTORY/INSTANCE.
struct ServiceLocation {
    std::string directory; // ROOT/CLASS
    std::string instance;
    auto operator<=>(const ServiceLocation&) const = default; // NOLINT(modernize-use-nullptr): a false positive
};

// Remembers services that let a request time out, so that the next request does not wait for them again. A silent
// service is probed without waiting: an open request is sent on a separate connection, and the event loop delivers the
// reply. The service is silent until a probe is answered in time.
//
// If a service answers the probe but not the request that follows, later probes expect a faster answer and also make the
// completion call that ends every request. If it answers that as well, and still no request, it is left alone for a
// while before each further probe.
class SilentServices {
    Q_DISABLE_COPY_MOVE(SilentServices)

public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Clock = std::function<TimePoint()>;

    static constexpr std::chrono::milliseconds maxFirstProbeTime { 2000 }; // as a request
    // A request exchanges three packets within 2 s. A service that takes longer than this for one of them would make
    // the next request time out too.
    static constexpr std::chrono::milliseconds maxProbeTime { 500 };
    // A request that runs out of time blocks for 2 s; with this pause the caller is free for more than 80 % of the time.
    static constexpr std::chrono::seconds pause { 10 };
    // A service that recovers without answering what it was asked meanwhile is asked again on a new connection.
    static constexpr std::chrono::seconds maxPendingTime { 10 };

    explicit SilentServices(Clock clock = std::chrono::steady_clock::now);
    ~SilentServices();

    // A request to the service ran out of time. Starts a probe.
    void requestTimedOut(const ServiceLocation& location);
    // The service replied to a request in time.
    void requestAnswered(const ServiceLocation& location);
    // Whether requests to the service must be refused. Never waits. Also reads a reply that the event loop has not
    // delivered yet, so a caller that polls without returning to the event loop notices the recovery.
    [[nodiscard]] bool isSilent(const ServiceLocation& location);

private:
    class Probe;
    struct Entry {
        int timeouts { 0 }; // in a row, with no answered request in between
        bool silent { false };
        TimePoint pausedUntil {}; // no probe before
        std::unique_ptr<Probe> probe;
    };

    void startProbe(const ServiceLocation& location, Entry& entry);
    void checkProbe(const ServiceLocation& location);

    Clock m_clock;
    std::map<ServiceLocation, Entry> m_entries;
};
