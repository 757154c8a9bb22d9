#include "services/simulator/service/SimulatorService.h"

#include "services/simulator/service/FaultyReply.h"

#include <QTimer>

namespace {

void deliver(ServiceReply reply, const FaultyReply& faulty)
{
    switch (faulty.form) {
    case FaultyReply::Form::Reply:
        reply.send(faulty.answer.accepted ? ServiceReply::success : ServiceReply::refused, faulty.answer.output);
        break;
    case FaultyReply::Form::Packet:
        reply.sendPacket(faulty.packet);
        break;
    case FaultyReply::Form::HangUp:
        reply.hangUp();
        break;
    case FaultyReply::Form::Silence:
        break;
    }
}

} // namespace

SimulatorService::SimulatorService(
    const Scenario& scenario, std::uint64_t seed, std::string root, std::string instance, Clock clock)
    : m_root(std::move(root))
    , m_instance(std::move(instance))
    , m_clock(std::move(clock))
    , m_card(scenario, seed)
    , m_host([this](const ServiceRequest& request, ServiceReply reply) { serve(request, std::move(reply)); })
{
}

std::error_code SimulatorService::insert()
{
    if (isInserted())
        return {};
    m_card.powerUp(nowMs());
    return m_host.publish(m_root, ServiceHost::adapterClass, m_instance);
}

void SimulatorService::eject()
{
    m_host.withdraw();
}

std::string SimulatorService::socketPath() const
{
    return m_root + '/' + ServiceHost::adapterClass + '/' + m_instance;
}

void SimulatorService::serve(const ServiceRequest& request, ServiceReply reply)
{
    m_recorder.record(request, nowMs());
    const std::vector<Fault> faults = m_faults.take(request);
    CardAnswer answer;
    if (request.kind == RequestKind::Open)
        answer.accepted = true;
    else if (request.kind == RequestKind::ScalarCall)
        answer.accepted = request.selector == ServiceRequest::completionMethod;
    else if (reachesCard(faults))
        answer = m_card.answer(request.selector, request.input, request.replyCapacity, nowMs());

    const FaultyReply faulty = faultyReply(request, std::move(answer), faults);
    if (faulty.delayMs == 0) {
        deliver(std::move(reply), faulty);
        return;
    }
    QTimer::singleShot(static_cast<int>(faulty.delayMs), &m_delays, [reply, faulty] { deliver(reply, faulty); });
}
