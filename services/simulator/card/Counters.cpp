#include "services/simulator/card/Counters.h"

#include "services/simulator/card/LinkModel.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double bytesPerSecondOfRateUnit = 500'000.0 / 8.0;
// Contention and acknowledgements leave about half of the air's rate; most of it is download.
constexpr double receiveShare = 0.4;
constexpr double transmitShare = 0.1;
constexpr double busiestReceiveBytesPerSecond = 600'000.0;
constexpr double busiestTransmitBytesPerSecond = 120'000.0;
constexpr double bytesPerFrame = 900.0;
constexpr double multicastReceivedPerSecond = 2.5;
constexpr double multicastTransmittedPerSecond = 0.2;
constexpr double withoutBufferShare = 0.0002;

// 0.1 to 1: long swells with shorter ones on them.
double activity(std::int64_t nowMs)
{
    const double seconds = static_cast<double>(nowMs) / 1000.0;
    const double swell = std::sin(2.0 * std::numbers::pi * seconds / 71.0);
    const double ripple = std::sin(2.0 * std::numbers::pi * seconds / 9.0);
    return 0.55 + 0.3 * swell + 0.15 * ripple;
}

// A 32-bit count as the driver keeps it: it wraps.
std::uint32_t wrapped(double count)
{
    return static_cast<std::uint32_t>(static_cast<std::uint64_t>(count));
}

std::int64_t whole(double count)
{
    return static_cast<std::int64_t>(count);
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
    const double received = std::min(usable * receiveShare, busiestReceiveBytesPerSecond * seconds) * busy;
    const double transmitted = std::min(usable * transmitShare, busiestTransmitBytesPerSecond * seconds) * busy;
    m_receivedBytes += received;
    m_transmittedBytes += transmitted;
    addFrames(transmitted / bytesPerFrame, received / bytesPerFrame, seconds, link);
}

void Counters::addFrames(double transmitted, double received, double seconds, const LinkCondition& link)
{
    const double retried = retryShare(link.signalDbm) * jitter();
    m_frames.transmitted += transmitted;
    m_frames.retries += transmitted * retried;
    m_frames.multipleRetries += transmitted * retried * retried;
    m_frames.failed += transmitted * retried * retried * retried;
    m_frames.multicastTransmitted += multicastTransmittedPerSecond * seconds;
    m_frames.received += received;
    m_frames.multicastReceived += multicastReceivedPerSecond * seconds;
    m_frames.duplicates += received * retried * 0.1;
    m_frames.checksumErrors += received * retried * 0.5;
    m_frames.withoutBuffer += received * withoutBufferShare;
    if (link.rtsThresholdBytes < bytesPerFrame) {
        m_frames.rtsSuccesses += transmitted;
        m_frames.rtsFailures += transmitted * retried * 0.3;
    }
}

void Counters::reset()
{
    m_frames = {};
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
    return wrapped(m_frames.received);
}

std::uint32_t Counters::framesWithoutBuffer() const
{
    return wrapped(m_frames.withoutBuffer);
}

NDIS_802_11_STATISTICS Counters::statistics() const
{
    NDIS_802_11_STATISTICS statistics {};
    statistics.Length = sizeof(statistics);
    statistics.TransmittedFragmentCount = whole(m_frames.transmitted);
    statistics.MulticastTransmittedFrameCount = whole(m_frames.multicastTransmitted);
    statistics.FailedCount = whole(m_frames.failed);
    statistics.RetryCount = whole(m_frames.retries);
    statistics.MultipleRetryCount = whole(m_frames.multipleRetries);
    statistics.RTSSuccessCount = whole(m_frames.rtsSuccesses);
    statistics.RTSFailureCount = whole(m_frames.rtsFailures);
    // Every retry and every failure began with an acknowledgement that did not come.
    statistics.ACKFailureCount = whole(m_frames.retries + m_frames.failed);
    statistics.FrameDuplicateCount = whole(m_frames.duplicates);
    statistics.ReceivedFragmentCount = whole(m_frames.received);
    statistics.MulticastReceivedFrameCount = whole(m_frames.multicastReceived);
    statistics.FCSErrorCount = whole(m_frames.checksumErrors);
    return statistics;
}
