#pragma once

#include "services/card/RequestRecorder.h"
#include "services/host/ServiceHost.h"
#include "services/simulator/card/SimulatedCard.h"
#include "services/simulator/service/Faults.h"

#include <QObject>

#include <cstdint>
#include <functional>
#include <string>

// A simulated card in its slot: publishes it as a driver service of the class "Pellvane", lets faults and the recorder
// see every request, and hands the rest to the card. Needs the Qt event loop.
class SimulatorService {
public:
    using Clock = std::function<std::int64_t()>; // milliseconds, never backwards

    SimulatorService(const Scenario& scenario, std::uint64_t seed, std::string root, std::string instance, Clock clock);

    // Publishes the service, with the card as it is when it gets power; nothing happens to a card that is in its slot
    // already. False, with errno set, when the service cannot be published.
    [[nodiscard]] bool insert();
    // Withdraws the service and ends every connection.
    void eject();
    [[nodiscard]] bool isInserted() const { return m_host.isPublished(); }
    void dropConnections() { m_host.dropConnections(); }

    [[nodiscard]] SimulatedCard& card() { return m_card; }
    [[nodiscard]] Faults& faults() { return m_faults; }
    [[nodiscard]] RequestRecorder& recorder() { return m_recorder; }
    [[nodiscard]] std::int64_t nowMs() const { return m_clock(); }
    [[nodiscard]] std::string socketPath() const;

    static const std::string className;

private:
    void serve(const ServiceRequest& request, ServiceReply reply);

    std::string m_root;
    std::string m_instance;
    Clock m_clock;
    SimulatedCard m_card;
    Faults m_faults;
    RequestRecorder m_recorder;
    ServiceHost m_host;
    QObject m_delays; // its end takes back the replies that are still due
};
