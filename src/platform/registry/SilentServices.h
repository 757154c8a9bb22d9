#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>

// Where a service is published: the socket FOLDER/INSTANCE, with ROOT/CLASS as the folder.
struct ServiceLocation {
    std::string folder;
    std::string instance;
    auto operator<=>(const ServiceLocation&) const = default;
};

// Remembers the services that let a request run into its time limit, so that nobody waits for them again. A silent
// service is probed without waiting: an open request goes out on a connection of its own, and the event loop delivers
// the reply. The service counts as silent until a probe is answered in time.
//
// A service that falls silent again right after an answered probe can open but not call: from then on a probe also
// makes the completion call that ends every request. One that answers even that, and still not a request, is left
// alone for longer and longer.
class SilentServices {
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Clock = std::function<TimePoint()>;

    // Three packets have to fit into the 2 s of a request: a service that needs longer than this for one of them would
    // only make the next request time out.
    static constexpr std::chrono::milliseconds maxProbeTime { 500 };
    static constexpr std::chrono::seconds firstPause { 10 };
    static constexpr std::chrono::seconds maxPause { 60 };

    explicit SilentServices(Clock clock = std::chrono::steady_clock::now);
    ~SilentServices();

    // A request to the service ran out of time. Starts a probe.
    void requestTimedOut(const ServiceLocation& location);
    // The service replied to a request in time.
    void requestAnswered(const ServiceLocation& location);
    // Whether requests to the service are to be refused. Never waits; also takes up a reply that the event loop has not
    // delivered yet, so a caller that polls without returning to the event loop sees the service recover.
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
    void takeUpProbe(const ServiceLocation& location);

    Clock m_clock;
    std::map<ServiceLocation, Entry> m_entries;
};
