#pragma once

#include "services/card/CardSettings.h"
#include "services/simulator/card/Neighbourhood.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What the card hears at one moment; no networks while its radio is off.
struct Air {
    bool radioOn { true };
    std::vector<HeardNetwork> networks;
};

enum class LinkState {
    Idle, // no join was requested
    Joining,
    Up,
    Waiting, // the requested network is out of range; joined once it is heard
    Refused, // the network rejects the card's settings; until the next request
};

// The card's association. A request starts a join; time passes in advance().
class Association {
public:
    static constexpr std::int64_t joinDurationMs = 700;

    // createdBssid is the address of an ad hoc network (IBSS) that the card creates itself.
    explicit Association(const MacAddress& createdBssid);

    // Requests the networks of a name. An empty name requests any network that accepts the settings and is not hidden.
    void joinSsid(const std::string& ssid, std::int64_t nowMs);
    // Requests one network. FF-FF-FF-FF-FF-FF requests the last name again.
    void joinBssid(const MacAddress& bssid, std::int64_t nowMs);
    // Drops the link and the request.
    void disassociate();

    void advance(std::int64_t nowMs, const CardSettings& settings, const Air& air);

    [[nodiscard]] LinkState state() const { return m_state; }
    // The network at the other end as heard at the last advance; std::nullopt unless the link is up.
    [[nodiscard]] const std::optional<HeardNetwork>& peer() const { return m_peer; }
    // Whether the link is an ad hoc network that the card created; it is the only station in it.
    [[nodiscard]] bool isCreatedNetwork() const { return m_peer && m_peer->network.bssid == m_createdBssid; }

private:
    void start(std::int64_t nowMs);
    void finish(const CardSettings& settings, const Air& air);
    void follow(const Air& air);
    [[nodiscard]] bool isRequested(const ScenarioNetwork& network) const;
    [[nodiscard]] bool isAnyNetworkRequested() const;
    [[nodiscard]] bool isRequestedHeard(const Air& air) const;
    [[nodiscard]] bool isWorthJoining(const CardSettings& settings, const Air& air) const;
    [[nodiscard]] std::optional<HeardNetwork> createdNetwork(const CardSettings& settings) const;
    [[nodiscard]] bool mayCreate(const CardSettings& settings) const;

    MacAddress m_createdBssid;
    LinkState m_state { LinkState::Idle };
    std::optional<std::string> m_ssid; // requested
    std::optional<MacAddress> m_bssid; // requested; takes precedence over the name
    std::int64_t m_startMs { 0 };
    // Only a request creates a network. The card waits for a joined network that disappeared.
    bool m_createWhenAbsent { false };
    std::optional<HeardNetwork> m_peer;
};
