#include "services/linux/service/LinuxCard.h"

#include "driver/records/Oids.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace {

constexpr const char* joinComplaint = "the network does not accept the join: ";

const char* nameOf(const SetRtsThreshold&)
{
    return "the RTS threshold";
}

const char* nameOf(const SetFragmentationThreshold&)
{
    return "the fragmentation threshold";
}

const char* nameOf(const SetPowerSave&)
{
    return "power saving";
}

const char* nameOf(const SetTransmitPower&)
{
    return "the transmit power";
}

// The lowest of the network's basic rates, at one of which a linked interface must be able to send.
std::optional<std::uint8_t> lowestBasicRate(const CardState& state)
{
    constexpr std::uint8_t basicBit = 0x80;
    const ScanEntry* const entry = state.link ? state.networks.find(state.link->bssid) : nullptr;
    std::optional<std::uint8_t> lowest;
    for (const std::uint8_t rate : entry != nullptr ? announcedRates(entry->elements) : Octets {}) {
        const auto value = static_cast<std::uint8_t>(rate & ~basicBit);
        if ((rate & basicBit) != 0 && (!lowest || value < *lowest))
            lowest = value;
    }
    return lowest;
}

// A network that is not known usually has the lowest rate of its band as a basic rate.
SetRates withBasicRates(SetRates rates, const CardState& state)
{
    const auto known = lowestBasicRate(state);
    const std::uint8_t basicTwoGhz = known.value_or(2); // 1 Mbit/s
    const std::uint8_t basicFiveGhz = known && *known >= 12 ? *known : 12; // 6 Mbit/s
    const auto add = [](std::optional<std::vector<std::uint8_t>>& list, std::uint8_t rate) {
        if (list && !list->empty() && std::find(list->begin(), list->end(), rate) == list->end())
            list->push_back(rate);
    };
    add(rates.twoGhz, basicTwoGhz);
    add(rates.fiveGhz, basicFiveGhz);
    return rates;
}

} // namespace

LinuxCard::LinuxCard(const CardHardware& hardware, bool isReturning, Parts parts)
    : m_parts(std::move(parts))
    , m_card(hardware, isReturning, m_parts.clock())
{
    m_due.setSingleShot(true);
    QObject::connect(&m_due, &QTimer::timeout, &m_due, [this] { apply(m_card.timePassed(nowMs())); });
    m_wiphyRetry.setSingleShot(true);
    m_wiphyRetry.setInterval(wiphyRetryMs);
    QObject::connect(&m_wiphyRetry, &QTimer::timeout, &m_wiphyRetry, [this] { readWiphy(); });
    m_preparation.setSingleShot(true);
    m_preparation.setInterval(maxPreparationMs);
    QObject::connect(&m_preparation, &QTimer::timeout, &m_preparation, [this] { wiphyKnown(); });
}

void LinuxCard::prepare(std::function<void()> prepared)
{
    m_prepared = std::move(prepared);
    m_preparation.start();
    radioChanged();
    readWiphy();
}

void LinuxCard::wiphyKnown()
{
    m_preparation.stop();
    if (const auto prepared = std::exchange(m_prepared, nullptr))
        prepared();
}

void LinuxCard::start()
{
    m_isStarted = true;
    radioChanged();
    if (m_card.state().isRadioOn())
        apply(BringUp {});
    m_parts.supplicant->start(*this);
    if (m_card.state().wiphy.channels.empty())
        readWiphy();
    apply(std::exchange(m_effectsAtStart, {}));
    readScan({});
}

ServiceHost::Handler LinuxCard::handler()
{
    return [this](const ServiceRequest& request, ServiceReply reply) { serve(request, std::move(reply)); };
}

void LinuxCard::serve(const ServiceRequest& request, ServiceReply reply)
{
    switch (request.kind) {
    case RequestKind::Open:
        reply.send(ServiceReply::success);
        return;
    case RequestKind::ScalarCall:
        reply.send(
            request.selector == ServiceRequest::completionMethod ? ServiceReply::success : ServiceReply::refused);
        return;
    case RequestKind::StructureCall:
        break;
    }
    const CardReply answer = m_card.answer(request.selector, request.input, request.replyCapacity, nowMs());
    reply.send(answer.accepted ? ServiceReply::success : ServiceReply::refused, answer.output);
    apply(answer.effects);
    if (request.selector == (VX_OID_802_11_RESET_COUNTERS | oidSetFlag))
        m_factsMs = nowMs() - factsAgeMs; // they count from the readings of now
    refreshFacts();
}

void LinuxCard::apply(const Effects& effects)
{
    for (const Effect& effect : effects)
        std::visit([this](const auto& one) { apply(one); }, effect);
    armTimer();
}

template <typename Setting> void LinuxCard::apply(const Setting& setting)
{
    m_parts.kernel->set(setting, complain(nameOf(setting)));
}

void LinuxCard::apply(const StartScan& scan)
{
    m_parts.kernel->startScan(scan, [this](int error) {
        if (error == 0)
            return;
        // Down: the radio was switched on a moment ago, or the interface is about to be brought up again. The others: the
        // kernel has been busy for long.
        const bool isPassing = error == EBUSY || error == ENETDOWN || error == EAGAIN || error == ETIMEDOUT;
        if (!isPassing)
            complain("to scan")(error);
        apply(m_card.scanFailed(isPassing, nowMs()));
    });
}

// What is wrong with one network is said again for the next.
void LinuxCard::apply(const JoinNetwork& join)
{
    std::erase_if(m_complaints, [](const std::string& said) { return said.starts_with(joinComplaint); });
    m_parts.supplicant->join(join.block);
}

void LinuxCard::apply(const SetRates& rates)
{
    m_parts.kernel->set(rates, [this, rates](int error) {
        if (error == EINVAL)
            m_parts.kernel->set(withBasicRates(rates, m_card.state()), complain("the transmit rates"));
        else
            complain("the transmit rates")(error);
    });
}

// Complains once about the same thing. What a driver does not support at all is not worth a line.
InterfaceKernel::Done LinuxCard::complain(const char* what)
{
    return [this, what](int error) {
        if (error == 0 || error == EOPNOTSUPP)
            return;
        sayOnce(std::string("the kernel refuses ") + what + ": " + std::strerror(error));
    };
}

void LinuxCard::sayOnce(const std::string& complaint)
{
    constexpr std::size_t maxComplaints = 100;
    if (m_complaints.size() < maxComplaints && m_complaints.insert(complaint).second)
        m_parts.log(complaint);
}

void LinuxCard::armTimer()
{
    if (const auto due = m_card.nextDueMs())
        m_due.start(static_cast<int>(std::max<std::int64_t>(0, *due - nowMs())));
    else
        m_due.stop();
}

void LinuxCard::readWiphy()
{
    m_parts.kernel->readWiphy([this](const std::optional<WiphyFacts>& facts) {
        if (!facts) {
            if (m_card.state().wiphy.channels.empty())
                m_wiphyRetry.start();
            return;
        }
        Effects effects = m_card.wiphyRead(*facts, nowMs());
        if (m_isStarted)
            apply(effects);
        else
            m_effectsAtStart = std::move(effects);
        wiphyKnown();
    });
}

void LinuxCard::readScan(const std::vector<std::uint32_t>& scannedMhz)
{
    m_parts.kernel->readScan([this, scannedMhz](std::optional<std::vector<ScanEntry>> entries) {
        // Without the entries the scan would age networks that it has seen.
        if (entries)
            apply(m_card.scanRead(std::move(*entries), scannedMhz, nowMs()));
        else if (!scannedMhz.empty())
            apply(m_card.scanFailed(true, nowMs()));
    });
}

void LinuxCard::refreshFacts()
{
    if (nowMs() - m_factsMs < factsAgeMs)
        return;
    m_factsMs = nowMs();
    m_parts.kernel->readLink([this](const std::optional<LinkMessage>& link) {
        if (link && link->counters)
            m_card.interfaceCountersRead(*link->counters);
        if (link)
            interfaceChanged(link->isUp);
    });
    if (!m_card.state().link)
        return;
    const LinkFacts& link = *m_card.state().link;
    const auto accessPoint = link.isAdHoc ? std::nullopt : std::optional(link.bssid);
    m_parts.kernel->readStations(accessPoint, [this](const std::optional<std::vector<StationInfo>>& stations) {
        if (stations)
            m_card.stationsRead(*stations);
    });
    m_parts.kernel->readSurvey([this](const std::optional<std::vector<SurveyFacts>>& surveys) {
        std::optional<std::int32_t> noise;
        for (const SurveyFacts& survey : surveys.value_or(std::vector<SurveyFacts> {})) {
            if (survey.isInUse)
                noise = survey.noiseDbm;
        }
        m_card.noiseRead(noise);
    });
    m_parts.kernel->readDuplicates([this](std::optional<std::uint64_t> duplicates) {
        if (duplicates)
            m_card.duplicatesRead(*duplicates);
    });
}

// The client reads back how the switch really stands.
void LinuxCard::apply(const SetRadio& radio)
{
    if (!m_parts.radio->set(radio.isOn))
        radioChanged();
}

void LinuxCard::scanEnded(const std::vector<std::uint32_t>& frequenciesMhz)
{
    readScan(frequenciesMhz);
}

void LinuxCard::scanAborted()
{
    apply(m_card.scanFailed(true, nowMs()));
}

void LinuxCard::radioChanged()
{
    const auto position = m_parts.radio->position();
    apply(m_card.radioSwitched(position.isSoftBlocked, position.isHardBlocked, nowMs()));
}

void LinuxCard::interfaceChanged(bool isUp)
{
    m_card.interfaceRead(isUp, nowMs());
    armTimer();
}

void LinuxCard::regulatoryDomainChanged()
{
    readWiphy();
}

void LinuxCard::eventsMissed()
{
    readWiphy();
    readScan({});
}

void LinuxCard::supplicantReady()
{
    apply(m_card.supplicantReady(nowMs()));
}

void LinuxCard::supplicantLost()
{
    m_card.supplicantLost(nowMs());
}

void LinuxCard::supplicantEvent(const SupplicantEvent& event)
{
    switch (event.kind) {
    case SupplicantEventKind::Disconnected:
        m_card.linkDown();
        break;
    case SupplicantEventKind::NetworkNotFound:
        apply(m_card.networkNotFound(nowMs()));
        break;
    case SupplicantEventKind::WrongKey:
    case SupplicantEventKind::AuthenticationRejected:
    case SupplicantEventKind::AssociationRejected:
        sayOnce(joinComplaint + event.text);
        break;
    case SupplicantEventKind::Connected: // its status follows
    case SupplicantEventKind::ChannelSwitched:
    case SupplicantEventKind::Terminating: // its end follows
    case SupplicantEventKind::Other:
        break;
    }
}

void LinuxCard::supplicantStatus(const SupplicantStatus& status)
{
    apply(m_card.linkUp(status, nowMs()));
    m_factsMs = nowMs() - factsAgeMs;
    refreshFacts();
    readScan({});
}

bool LinuxCard::supplicantProbed(const SupplicantStatus& status)
{
    if (!m_card.isNews(status))
        return false;
    if (status.isCompleted)
        supplicantStatus(status);
    else
        m_card.linkDown();
    return true;
}
