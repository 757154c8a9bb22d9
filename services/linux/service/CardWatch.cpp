#include "services/linux/service/CardWatch.h"

#include <algorithm>
#include <utility>

#include <linux/nl80211.h>

namespace {

// A clock that has jumped by less was only read at another moment.
constexpr std::int64_t minSuspendMs = 1000;

bool isStation(const InterfaceFacts& interface)
{
    return interface.type == NL80211_IFTYPE_STATION || interface.type == NL80211_IFTYPE_ADHOC;
}

} // namespace

CardWatch::CardWatch(
    WatchOptions options, WirelessSystem& system, OtherManagers& managers, LinuxCard::Clock clock, Log log)
    : m_options(std::move(options))
    , m_system(system)
    , m_managers(managers)
    , m_clock(std::move(clock))
    , m_log(std::move(log))
{
    m_poll.setInterval(pollIntervalMs);
    m_settling.setInterval(static_cast<int>(settlingMs));
    m_settling.setSingleShot(true);
    QObject::connect(&m_settling, &QTimer::timeout, &m_settling, [this] { readInterfaces(); });
    QObject::connect(&m_poll, &QTimer::timeout, &m_poll, [this] { poll(); });
}

void CardWatch::start()
{
    m_lastSuspendedMs = m_system.suspendedMs();
    m_poll.start();
    m_system.start(*this);
}

void CardWatch::readInterfaces()
{
    m_system.readInterfaces([this](const std::optional<std::vector<InterfaceFacts>>& present) {
        if (present) // otherwise the next poll tries again
            compare(*present);
    });
}

void CardWatch::compare(const std::vector<InterfaceFacts>& present)
{
    std::vector<std::uint32_t> gone;
    for (const auto& entry : m_published) {
        const bool isThere = std::any_of(present.begin(), present.end(), [&entry](const InterfaceFacts& interface) {
            return interface.index == entry.first && interface.name == entry.second.name && isStation(interface);
        });
        if (!isThere)
            gone.push_back(entry.first);
    }
    for (const std::uint32_t index : gone)
        withdraw(index);
    if (!m_presentAtStart) {
        m_presentAtStart.emplace();
        for (const InterfaceFacts& interface : present)
            m_presentAtStart->insert(interface.index);
    }
    for (const InterfaceFacts& interface : present)
        consider(interface);
}

void CardWatch::consider(const InterfaceFacts& interface)
{
    const bool isWanted = m_options.interfaceName.empty() || interface.name == m_options.interfaceName;
    if (isWanted && isStation(interface) && !m_published.contains(interface.index))
        askManagers(interface);
}

void CardWatch::askManagers(const InterfaceFacts& interface)
{
    m_managers.find(interface.name, [this, interface](const ManagerFinding& finding) {
        const bool isPublished = m_published.contains(interface.index);
        if (finding.kind == ManagerFinding::Kind::Held) {
            withdraw(interface.index); // the manager was started later than we were
            leaveAlone(interface, finding.text);
            return;
        }
        // It may have gone while its managers were asked.
        if (!isPublished && isFree(interface, finding) && m_system.exists(interface))
            publish(interface);
    });
}

bool CardWatch::isFree(const InterfaceFacts& interface, const ManagerFinding& finding)
{
    if (finding.kind == ManagerFinding::Kind::Unclear)
        leaveAlone(interface, finding.text);
    if (finding.kind != ManagerFinding::Kind::NotKnown) {
        m_unknownSinceMs.erase(interface.index);
        return finding.kind == ManagerFinding::Kind::Free;
    }
    const auto [since, isNew] = m_unknownSinceMs.try_emplace(interface.index, m_clock());
    if (m_clock() - since->second >= settlingMs)
        return true;
    m_settling.start();
    return false;
}

// Says so once for each reason, although the question is asked again and again.
void CardWatch::leaveAlone(const InterfaceFacts& interface, const std::string& why)
{
    m_unknownSinceMs.erase(interface.index);
    if (std::exchange(m_holders[interface.name], why) != why)
        log(interface.name, "left alone: " + why);
}

// First the card: a client must not find one that does not know its channels yet.
void CardWatch::publish(const InterfaceFacts& interface)
{
    const std::string& name = interface.name;
    const auto logIt = [this, name](const std::string& text) { log(name, text); };
    LinuxCard::Parts parts = m_system.partsFor(interface, logIt);
    parts.clock = m_clock;
    parts.log = logIt;
    auto card = std::make_unique<LinuxCard>(m_system.hardwareOf(interface), isReturning(interface), std::move(parts));
    LinuxCard& prepared = *card;
    m_published.emplace(interface.index, Published { name, std::move(card), nullptr });
    prepared.prepare([this, index = interface.index] { openService(index); });
}

void CardWatch::openService(std::uint32_t index)
{
    Published& published = m_published.at(index);
    const std::string& name = published.name;
    published.host = std::make_unique<ServiceHost>(
        [this, serve = published.card->handler()](const ServiceRequest& request, ServiceReply reply) {
            noticeResume(); // before the client asks for the event
            serve(request, std::move(reply));
        });
    if (const auto error = published.host->publish(m_options.root, ServiceHost::adapterClass, name, m_options.access)) {
        if (std::exchange(m_holders[name], error.message()) != error.message())
            log(name, "cannot be published in " + m_options.root + ": " + error.message());
        published.host.reset();
        // Deleted later: it is on the call stack.
        QTimer::singleShot(0, &m_poll, [this, index] { m_published.erase(index); });
        return;
    }
    m_holders.erase(name);
    m_presentAtStart->erase(index);
    log(name, "published");
    published.card->start();
}

void CardWatch::withdraw(std::uint32_t index)
{
    m_unknownSinceMs.erase(index);
    auto found = m_published.extract(index);
    if (!found)
        return;
    if (!std::exchange(found.mapped().host, nullptr))
        return;
    m_withdrawnMs[found.mapped().name] = m_clock();
    m_withdrawnIndexMs[index] = m_clock();
    log(found.mapped().name, "withdrawn");
}

// A client that was connected to an earlier service, or to this card under its old name, has lost what it had set. An
// interface that was there when the service started may be such a one.
bool CardWatch::isReturning(const InterfaceFacts& interface)
{
    const auto isRecent = [this](const auto& times, const auto& key) {
        const auto found = times.find(key);
        return found != times.end() && m_clock() - found->second < returnMs;
    };
    return m_presentAtStart->contains(interface.index) || isRecent(m_withdrawnMs, interface.name)
        || isRecent(m_withdrawnIndexMs, interface.index);
}

LinuxCard* CardWatch::cardOf(std::uint32_t index)
{
    const auto found = m_published.find(index);
    return found == m_published.end() ? nullptr : found->second.card.get();
}

// The kernel also reports every change of the carrier.
void CardWatch::linkChanged(const LinkMessage& link)
{
    const auto found = m_published.find(link.index);
    if (found == m_published.end() || found->second.name != link.name)
        readInterfaces();
    else
        found->second.card->interfaceChanged(link.isUp);
}

void CardWatch::scanEnded(std::uint32_t index, const std::vector<std::uint32_t>& frequenciesMhz)
{
    if (LinuxCard* const card = cardOf(index))
        card->scanEnded(frequenciesMhz);
}

void CardWatch::scanAborted(std::uint32_t index)
{
    if (LinuxCard* const card = cardOf(index))
        card->scanAborted();
}

void CardWatch::radiosChanged()
{
    for (const auto& [index, published] : m_published)
        published.card->radioChanged();
}

void CardWatch::regulatoryDomainChanged()
{
    for (const auto& [index, published] : m_published)
        published.card->regulatoryDomainChanged();
}

void CardWatch::eventsMissed()
{
    readInterfaces();
    for (const auto& [index, published] : m_published)
        published.card->eventsMissed();
}

// What no event tells: an interface that was released by its manager or taken by another, a resumed machine.
void CardWatch::poll()
{
    m_system.repair();
    if (!m_presentAtStart) // there was no wireless device
        m_presentAtStart.emplace();
    if (m_published.empty() || m_options.interfaceName.empty())
        readInterfaces();
    std::vector<InterfaceFacts> published;
    for (const auto& [index, entry] : m_published)
        published.push_back({ index, 0, NL80211_IFTYPE_STATION, entry.name });
    for (const InterfaceFacts& interface : published)
        askManagers(interface);
    noticeResume();
}

void CardWatch::noticeResume()
{
    const std::int64_t suspended = m_system.suspendedMs();
    if (suspended - std::exchange(m_lastSuspendedMs, suspended) < minSuspendMs)
        return;
    m_log("the machine was suspended");
    for (const auto& [index, published] : m_published)
        published.card->resumed();
}

void CardWatch::log(const std::string& interfaceName, const std::string& text) const
{
    m_log(interfaceName + ": " + text);
}
