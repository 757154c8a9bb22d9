#pragma once

#include "services/simulator/card/CardSettings.h"
#include "services/simulator/card/Neighbourhood.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What the card can hear at a moment; nothing while its radio is off.
struct Air {
    bool radioOn { true };
    std::vector<HeardNetwork> networks;
};

enum class LinkState {
    Idle, // no network was asked for
    Joining,
    Up,
    Waiting, // the network that was asked for cannot be heard; joined again when it can
    Refused, // it does not take the card's settings; ends when a network is asked for anew
};

// The association of the card. Asking for a network starts it; time passes in advance().
class Association {
public:
    static constexpr std::int64_t joinDurationMs = 700;

    // ownBssid is the address of an ad hoc network that the card puts up itself.
    explicit Association(const MacAddress& ownBssid);

    // Asks for the networks of a name; an empty name stands for any network that takes the settings and is not hidden.
    void joinSsid(const std::string& ssid, std::int64_t nowMs);
    // Asks for one network. FF-FF-FF-FF-FF-FF gives the choice back to the name asked for last.
    void joinBssid(const MacAddress& bssid, std::int64_t nowMs);
    // Drops the link and forgets what was asked for.
    void disassociate();

    void advance(std::int64_t nowMs, const CardSettings& settings, const Air& air);

    [[nodiscard]] LinkState state() const { return m_state; }
    // The network at the other end as heard at the last advance; nothing unless the link is up.
    [[nodiscard]] const std::optional<HeardNetwork>& peer() const { return m_peer; }
    // The card is alone in an ad hoc network of its own.
    [[nodiscard]] bool isOwnNetwork() const { return m_peer && m_peer->network.bssid == m_ownBssid; }

private:
    void start(std::int64_t nowMs);
    void finish(const CardSettings& settings, const Air& air);
    void follow(const Air& air);
    [[nodiscard]] bool isAskedFor(const ScenarioNetwork& network) const;
    [[nodiscard]] bool isAnyNetworkAskedFor() const;
    [[nodiscard]] bool isAskedForOneHeard(const Air& air) const;
    [[nodiscard]] bool isWorthJoining(const CardSettings& settings, const Air& air) const;
    [[nodiscard]] std::optional<HeardNetwork> ownNetwork(const CardSettings& settings) const;
    [[nodiscard]] bool mayCreate(const CardSettings& settings) const;

    MacAddress m_ownBssid;
    LinkState m_state { LinkState::Idle };
    std::optional<std::string> m_ssid; // asked for
    std::optional<MacAddress> m_bssid; // asked for; takes precedence over the name
    std::int64_t m_startMs { 0 };
    // Only a request puts up a network of our own. A network that was joined and then went away is waited for.
    bool m_createWhenAbsent { false };
    std::optional<HeardNetwork> m_peer;
};
