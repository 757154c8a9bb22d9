#include "services/simulator/card/Neighbourhood.h"

#include "driver/records/ChannelTable.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

// The sum of two waves with unrelated periods looks irregular and stays within the range.
constexpr double slowPeriodMs = 47'000.0;
constexpr double fastPeriodMs = 13'000.0;
constexpr double slowShare = 0.6;
constexpr double fastShare = 0.4;

std::uint64_t mixed(std::uint64_t value)
{
    value += 0x9E3779B97F4A7C15U;
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9U;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EBU;
    return value ^ (value >> 31);
}

// 0 to 2π, different for each network and seed.
double phase(const MacAddress& bssid, std::uint64_t seed)
{
    std::uint64_t hash = mixed(seed);
    for (const std::uint8_t octet : bssid)
        hash = mixed(hash ^ octet);
    return static_cast<double>(hash >> 40) / static_cast<double>(1U << 24) * 2.0 * std::numbers::pi;
}

double wave(std::int64_t nowMs, double periodMs, double phase)
{
    return std::sin(2.0 * std::numbers::pi * std::fmod(static_cast<double>(nowMs), periodMs) / periodMs + phase);
}

auto byBssid(const MacAddress& bssid)
{
    return [bssid](const ScenarioNetwork& network) { return network.bssid == bssid; };
}

} // namespace

bool isFiveGhz(const ScenarioNetwork& network)
{
    return network.channel > maxTwoGhzChannel;
}

Neighbourhood::Neighbourhood(std::vector<ScenarioNetwork> networks, std::uint64_t seed)
    : m_networks(std::move(networks))
    , m_seed(seed)
{
}

bool Neighbourhood::add(const ScenarioNetwork& network)
{
    if (std::any_of(m_networks.begin(), m_networks.end(), byBssid(network.bssid)))
        return false;
    m_networks.push_back(network);
    return true;
}

bool Neighbourhood::remove(const MacAddress& bssid)
{
    return std::erase_if(m_networks, byBssid(bssid)) != 0;
}

bool Neighbourhood::move(const MacAddress& bssid, std::int32_t signalDbm)
{
    const auto found = std::find_if(m_networks.begin(), m_networks.end(), byBssid(bssid));
    if (found == m_networks.end())
        return false;
    found->signalDbm = signalDbm;
    return true;
}

std::int32_t Neighbourhood::signalDbm(const ScenarioNetwork& network, std::int64_t nowMs) const
{
    const double start = phase(network.bssid, m_seed);
    const double offset
        = slowShare * wave(nowMs, slowPeriodMs, start) + fastShare * wave(nowMs, fastPeriodMs, 2 * start);
    return network.signalDbm + static_cast<std::int32_t>(std::lround(offset * network.driftDb));
}

std::vector<HeardNetwork> Neighbourhood::inRange(std::int64_t nowMs, bool fiveGhz) const
{
    std::vector<HeardNetwork> heard;
    for (const ScenarioNetwork& network : m_networks) {
        const std::int32_t signal = signalDbm(network, nowMs);
        if (signal >= minSignalDbm && (fiveGhz || !isFiveGhz(network)))
            heard.push_back({ network, signal });
    }
    return heard;
}
