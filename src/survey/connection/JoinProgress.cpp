#include "survey/connection/JoinProgress.h"

#include <QCoreApplication>

namespace {

constexpr int ticksBeforeFailure = 5;
constexpr int secondsPerTick = 2;

QString tr(const char* text)
{
    return QCoreApplication::translate("JoinProgress", text);
}

} // namespace

void JoinProgress::begin(const QString& network)
{
    m_state = State::Queued;
    m_network = network.isEmpty() ? tr("the network") : QChar(0x201C) + network + QChar(0x201D);
    m_ticksWaited = 0;
}

void JoinProgress::tick(bool linkUp, bool stillQueued)
{
    switch (m_state) {
    case State::Idle:
        break;
    case State::Queued:
        if (!stillQueued)
            m_state = State::Waiting;
        break;
    case State::Waiting:
        if (linkUp)
            m_state = State::Idle;
        else if (++m_ticksWaited == ticksBeforeFailure)
            m_state = State::Failed;
        break;
    case State::Failed:
        if (linkUp)
            m_state = State::Idle;
        break;
    }
}

void JoinProgress::reset()
{
    m_state = State::Idle;
}

QString JoinProgress::text() const
{
    switch (m_state) {
    case State::Idle:
        return {};
    case State::Queued:
    case State::Waiting:
        return tr("Connecting to %1…").arg(m_network);
    case State::Failed:
        return tr("No connection to %1 after %2 seconds. The key may be wrong, or the network out of range.")
            .arg(m_network,
                QString::number(ticksBeforeFailure * secondsPerTick)); // in one call: a name may contain "%2"
    }
    return {};
}
