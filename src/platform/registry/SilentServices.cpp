#include "platform/registry/SilentServices.h"

#include "platform/registry/DriverMessages.h"
#include "platform/registry/DriverReply.h"
#include "platform/registry/RegistryDirectory.h"
#include "posix/FileDescriptor.h"

#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <utility>

#include <sys/socket.h>

namespace {

constexpr int timeoutsBeforeStrictProbe = 2;
constexpr int timeoutsBeforePause = 3;

FileDescriptor connectWithoutWaiting(const ServiceLocation& location)
{
    const RegistryDirectory directory = openRegistryDirectory(location.directory);
    if (directory.trust != DirectoryTrust::Trusted)
        return {};
    const FileDescriptor instance = openInstance(directory.descriptor.get(), location.instance.c_str());
    FileDescriptor socket = makeClientSocket();
    if (!instance || !socket || connectToInstance(socket, instance))
        return {};
    return socket;
}

} // namespace

// One connection to a silent service, and how far its questions have been answered.
class SilentServices::Probe {
public:
    enum class Outcome { Pending, Answered, TooSlow, Failed };

    // A strict probe expects fast answers and also makes the completion call.
    Probe(FileDescriptor socket, bool isStrict, TimePoint now)
        : m_socket(std::move(socket))
        , m_makesCompletionCall(isStrict)
        , m_maxTime(isStrict ? maxProbeTime : maxFirstProbeTime)
    {
        send(DriverRequestKind::Open, driverConnectionType, now);
    }

    void notify(std::function<void()> onReadable)
    {
        if (!m_socket)
            return;
        m_readable.reset(new QSocketNotifier(m_socket.get(), QSocketNotifier::Read));
        QObject::connect(m_readable.get(), &QSocketNotifier::activated, m_readable.get(), std::move(onReadable));
    }

    // Reads what has arrived by now.
    [[nodiscard]] Outcome outcome(TimePoint now)
    {
        if (!m_socket)
            return Outcome::Failed;
        std::array<std::byte, sizeof(DriverReplyHeader) + 1> packet {};
        const ssize_t length = ::recv(m_socket.get(), packet.data(), packet.size(), MSG_DONTWAIT | MSG_TRUNC);
        if (length < 0 && (errno == EAGAIN || errno == EINTR))
            return now - m_sent < maxPendingTime ? Outcome::Pending : Outcome::TooSlow;
        const auto received = std::span(packet).first(length < 0 ? 0 : std::min<std::size_t>(length, packet.size()));
        if (parseDriverReply(received, 0).status == ReplyStatus::Malformed)
            return Outcome::Failed;
        if (now - m_sent > m_maxTime)
            return Outcome::TooSlow;
        if (!std::exchange(m_makesCompletionCall, false))
            return Outcome::Answered;
        send(DriverRequestKind::ScalarCall, completionMethod, now);
        return m_socket ? Outcome::Pending : Outcome::Failed;
    }

private:
    // Deleted later: a notifier's own signal may lead to its deletion.
    struct DeleteLater {
        void operator()(QSocketNotifier* notifier) const
        {
            notifier->setEnabled(false);
            notifier->deleteLater();
        }
    };

    void send(DriverRequestKind kind, std::uint32_t selector, TimePoint now)
    {
        m_sent = now;
        const DriverRequestHeader header { kind, selector, 0, 0 };
        if (m_socket && ::send(m_socket.get(), &header, sizeof(header), MSG_NOSIGNAL | MSG_DONTWAIT) != sizeof(header))
            m_socket.reset();
    }

    FileDescriptor m_socket;
    bool m_makesCompletionCall;
    std::chrono::milliseconds m_maxTime;
    TimePoint m_sent {};
    std::unique_ptr<QSocketNotifier, DeleteLater> m_readable; // destroyed before its descriptor
};

SilentServices::SilentServices(Clock clock)
    : m_clock(std::move(clock))
{
}

SilentServices::~SilentServices() = default;

void SilentServices::requestTimedOut(const ServiceLocation& location)
{
    Entry& entry = m_entries[location];
    entry.silent = true;
    ++entry.timeouts;
    if (entry.timeouts >= timeoutsBeforePause)
        entry.pausedUntil = m_clock() + pause;
    startProbe(location, entry);
}

void SilentServices::requestAnswered(const ServiceLocation& location)
{
    m_entries.erase(location);
}

bool SilentServices::isSilent(const ServiceLocation& location)
{
    checkProbe(location);
    const auto found = m_entries.find(location);
    if (found == m_entries.end() || !found->second.silent)
        return false;
    if (!found->second.probe)
        startProbe(location, found->second);
    return true;
}

void SilentServices::startProbe(const ServiceLocation& location, Entry& entry)
{
    entry.probe.reset();
    const TimePoint now = m_clock();
    if (now < entry.pausedUntil)
        return;
    FileDescriptor socket = connectWithoutWaiting(location);
    if (!socket)
        return; // tried again with the next request
    entry.probe = std::make_unique<Probe>(std::move(socket), entry.timeouts >= timeoutsBeforeStrictProbe, now);
    entry.probe->notify([this, location] { checkProbe(location); });
}

void SilentServices::checkProbe(const ServiceLocation& location)
{
    const auto found = m_entries.find(location);
    if (found == m_entries.end() || !found->second.probe)
        return;
    Entry& entry = found->second;
    switch (entry.probe->outcome(m_clock())) {
    case Probe::Outcome::Pending:
        break;
    case Probe::Outcome::Answered:
        entry.silent = false;
        entry.probe.reset();
        break;
    case Probe::Outcome::TooSlow: // it may have recovered meanwhile: ask again at once
        startProbe(location, entry);
        break;
    case Probe::Outcome::Failed:
        entry.probe.reset(); // asked again with the next request
        break;
    }
}
