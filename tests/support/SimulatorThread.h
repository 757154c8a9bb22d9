#pragma once

#include "services/simulator/scenario/DefaultScenario.h"
#include "services/simulator/scenario/Scenario.h"
#include "services/simulator/service/SimulatorService.h"

#include <QTemporaryDir>
#include <QThread>

#include <atomic>
#include <memory>

// The simulator with its real sockets, on its own thread and with a clock that the test controls.
class SimulatorThread {
    Q_DISABLE_COPY_MOVE(SimulatorThread)

public:
    SimulatorThread()
        : m_scenario(*parseScenario(defaultScenarioText()).scenario)
    {
        m_thread.start();
        run([this] {
            m_service = std::make_unique<SimulatorService>(
                m_scenario, 1, m_root.path().toStdString(), "simulated", [this] { return m_nowMs.load(); });
            m_published = !m_service->insert();
        });
    }

    ~SimulatorThread()
    {
        run([this] { m_service.reset(); });
        m_thread.quit();
        m_thread.wait();
    }

    void passTime(std::int64_t elapsedMs) { m_nowMs += elapsedMs; }
    [[nodiscard]] bool isPublished() const { return m_published; }
    [[nodiscard]] std::string root() const { return m_root.path().toStdString(); }
    [[nodiscard]] const Scenario& scenario() const { return m_scenario; }

    // Runs the action on the simulator's thread and waits for it.
    template <typename Action> void run(Action action)
    {
        QMetaObject::invokeMethod(m_context.get(), action, Qt::BlockingQueuedConnection);
    }
    [[nodiscard]] SimulatorService& service() { return *m_service; }

private:
    QTemporaryDir m_root;
    Scenario m_scenario;
    std::atomic<std::int64_t> m_nowMs { 1000 };
    QThread m_thread;
    std::unique_ptr<QObject> m_context { movedTo(m_thread) };
    std::unique_ptr<SimulatorService> m_service;
    bool m_published { false };

    static QObject* movedTo(QThread& thread)
    {
        auto* const object = new QObject;
        object->moveToThread(&thread);
        return object;
    }
};
