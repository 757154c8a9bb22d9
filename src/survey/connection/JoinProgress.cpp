#include "survey/connection/JoinProgress.h"

#include "app/shared/SharedState.h"
#include "platform/NetworkName.h"

#include <QCoreApplication>

namespace {

constexpr int ticksBeforeFailure = 5;
constexpr int secondsPerTick = 2;

QString tr(const char* text)
{
    return QCoreApplication::translate("JoinProgress", text);
}

QString likelyReasons(const JoinRequirements& requirements)
{
    if (G_bRadio == 0)
        return tr("The radio of the wireless card is switched off. To switch it on, press Radio On on the Advanced "
                  "Settings page.");
    if (requirements.adHoc)
        return requirements.key ? tr("The key may be wrong, or no other station may be in range.")
                                : tr("No other station of this ad hoc network may be in range.");
    if (requirements.typedName)
        return requirements.key ? tr("The name or the key may be wrong, or the network out of range.")
                                : tr("The name may be wrong, or the network out of range.");
    return requirements.key ? tr("The key may be wrong, or the network out of range.")
                            : tr("The network may be out of range, or it refused the card.");
}

QString quoted(const QString& network)
{
    return network.isEmpty() ? tr("the network") : QChar(0x201C) + network + QChar(0x201D);
}

QString failure(const QString& quotedNetwork, const QString& reasons)
{
    return tr("No connection to %1 after %2 seconds. %3")
        .arg(quotedNetwork, QString::number(ticksBeforeFailure * secondsPerTick),
            reasons); // in one call: a name may contain "%2"
}

} // namespace

void JoinProgress::begin(const QString& network, const JoinRequirements& requirements)
{
    m_requirements = requirements;
    m_state = State::Queued;
    m_network = quoted(network);
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
        return failure(m_network, likelyReasons(m_requirements));
    }
    return {};
}

QString JoinProgress::longText()
{
    return failure(quoted(QString(NetworkName::maxLength, u'n')), likelyReasons({ .key = true, .typedName = true }));
}
