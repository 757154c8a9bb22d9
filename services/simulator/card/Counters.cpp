#include "services/simulator/card/Counters.h"

#include "services/simulator/card/LinkModel.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double bytesPerSecondOfRateUnit = 500'000.0 / 8.0;
// Contention and acknowledgements leave about half of the link rate; most of it is download.
constexpr double receiveShare = 0.4;
constexpr double transmitShare = 0.1;
constexpr double maxReceivedBytesPerSecond = 600'000.0;
constexpr double maxTransmittedBytesPerSecond = 120'000.0;
constexpr double bytesPerFrame = 900.0;
constexpr double multicastReceivedPerSecond = 2.5;
constexpr double multicastTransmittedPerSecond = 0.2;
constexpr double withoutBufferShare = 0.0002;

// 0.1 to 1, a slow wave with a faster one on top.
double activity(std::int64_t nowMs)
{
    const double seconds = static_cast<double>(nowMs) / 1000.0;
    const double swell = std::sin(2.0 * std::numbers::pi * seconds / 71.0);
    const double ripple = std::sin(2.0 * std::numbers::pi * seconds / 9.0);
    return 0.55 + 0.3 * swell + 0.15 * ripple;
}

// The driver's 32-bit counters wrap.
std::uint32_t wrapped(double count)
{
    return static_cast<std::uint32_t>(static_cast<std::uint64_t>(count));
}

} // namespace

Counters::Counters(std::uint64_t seed)
    : m_random(seed)
{
}

double Counters::jitter()
{
    return 0.8 + 0.4 * static_cast<double>(m_random() >> 32) / static_cast<double>(1ULL << 32);
}

void Counters::advance(std::int64_t nowMs, const std::optional<LinkCondition>& link)
{
    const std::int64_t elapsedMs = m_lastMs ? std::max<std::int64_t>(0, nowMs - *m_lastMs) : 0;
    m_lastMs = nowMs;
    if (link && elapsedMs > 0)
        addTraffic(nowMs, static_cast<double>(elapsedMs) / 1000.0, *link);
}

void Counters::addTraffic(std::int64_t nowMs, double seconds, const LinkCondition& link)
{
    if (!link.hasPeers)
        return;
    const double usable = link.rate * bytesPerSecondOfRateUnit * (1.0 - retryShare(link.signalDbm)) * seconds;
    const double busy = activity(nowMs) * jitter();
    const double received = std::min(usable * receiveShare, maxReceivedBytesPerSecond * seconds) * busy;
    const double transmitted = std::min(usable * transmitShare, maxTransmittedBytesPerSecond * seconds) * busy;
    m_receivedBytes += received;
    m_transmittedBytes += transmitted;
    addFrames(transmitted / bytesPerFrame, received / bytesPerFrame, seconds, link);
}

void Counters::addFrames(double transmitted, double received, double seconds, const LinkCondition& link)
{
    const double retried = retryShare(link.signalDbm) * jitter();
    m_frames[Transmitted].add(transmitted);
    m_frames[Retries].add(transmitted * retried);
    m_frames[MultipleRetries].add(transmitted * retried * retried);
    m_frames[Failed].add(transmitted * retried * retried * retried);
    m_frames[MulticastTransmitted].add(multicastTransmittedPerSecond * seconds);
    m_frames[Received].add(received);
    m_frames[MulticastReceived].add(multicastReceivedPerSecond * seconds);
    m_frames[Duplicates].add(received * retried * 0.1);
    m_frames[ChecksumErrors].add(received * retried * 0.5);
    m_frames[WithoutBuffer].add(received * withoutBufferShare);
    if (link.rtsThresholdBytes < bytesPerFrame) {
        m_frames[RtsSuccesses].add(transmitted);
        m_frames[RtsFailures].add(transmitted * retried * 0.3);
    }
}

void Counters::reset()
{
    for (auto& counter : m_frames)
        counter.reset();
}

std::uint32_t Counters::transmittedBytes() const
{
    return wrapped(m_transmittedBytes);
}

std::uint32_t Counters::receivedBytes() const
{
    return wrapped(m_receivedBytes);
}

std::uint32_t Counters::receivedFrames() const
{
    return wrapped(m_frames[Received].value());
}

std::uint32_t Counters::framesWithoutBuffer() const
{
    return wrapped(m_frames[WithoutBuffer].value());
}

std::int64_t Counters::whole(Frames counter) const
{
    return static_cast<std::int64_t>(m_frames[counter].value());
}

NDIS_802_11_STATISTICS Counters::statistics() const
{
    NDIS_802_11_STATISTICS statistics {};
    statistics.Length = sizeof(statistics);
    statistics.TransmittedFragmentCount = whole(Transmitted);
    statistics.MulticastTransmittedFrameCount = whole(MulticastTransmitted);
    statistics.FailedCount = whole(Failed);
    statistics.RetryCount = whole(Retries);
    statistics.MultipleRetryCount = whole(MultipleRetries);
    statistics.RTSSuccessCount = whole(RtsSuccesses);
    statistics.RTSFailureCount = whole(RtsFailures);
    // Every retry and every failure started with a missing acknowledgement.
    statistics.ACKFailureCount = static_cast<std::int64_t>(m_frames[Retries].value() + m_frames[Failed].value());
    statistics.FrameDuplicateCount = whole(Duplicates);
    statistics.ReceivedFragmentCount = whole(Received);
    statistics.MulticastReceivedFrameCount = whole(MulticastReceived);
    statistics.FCSErrorCount = whole(ChecksumErrors);
    return statistics;
}
