#pragma once

#include "services/host/ServiceHost.h"
#include "services/simulator/card/SimulatedCard.h"
#include "services/simulator/service/Faults.h"
#include "services/simulator/service/RequestRecorder.h"

#include <QObject>

#include <cstdint>
#include <functional>
#include <string>
#include <system_error>

// Publishes a simulated card as a service of the adapter's driver. Records requests, applies faults, and passes the
// requests on to the card. Needs the Qt event loop.
class SimulatorService {
    Q_DISABLE_COPY_MOVE(SimulatorService)

public:
    using Clock = std::function<std::int64_t()>; // milliseconds, monotonic

    SimulatorService(const Scenario& scenario, std::uint64_t seed, std::string root, std::string instance, Clock clock);
    ~SimulatorService() = default;

    // Powers up the card and publishes the service; no-op if the card is inserted.
    [[nodiscard]] std::error_code insert();
    // Withdraws the service and closes every connection.
    void eject();
    [[nodiscard]] bool isInserted() const { return m_host.isPublished(); }
    void dropConnections() { m_host.dropConnections(); }

    [[nodiscard]] SimulatedCard& card() { return m_card; }
    [[nodiscard]] Faults& faults() { return m_faults; }
    [[nodiscard]] RequestRecorder& recorder() { return m_recorder; }
    [[nodiscard]] std::int64_t nowMs() const { return m_clock(); }
    [[nodiscard]] std::string socketPath() const;

private:
    void serve(const ServiceRequest& request, ServiceReply reply);

    std::string m_root;
    std::string m_instance;
    Clock m_clock;
    SimulatedCard m_card;
    Faults m_faults;
    RequestRecorder m_recorder;
    ServiceHost m_host;
    QObject m_delays; // context of the delayed replies: destroying it cancels them
};
