#pragma once

#include "services/host/ServiceHost.h"
#include "services/simulator/card/SimulatedCard.h"
#include "services/simulator/service/Faults.h"

#include <cstdint>
#include <vector>

// A card's answer after the faults that apply to its request.
struct FaultyReply {
    enum class Form {
        Reply, // answer, as a well-formed reply
        Packet, // packet, which is malformed
        HangUp,
        Silence,
    };

    Form form { Form::Reply };
    CardAnswer answer;
    Bytes packet;
    std::uint32_t delayMs { 0 };
};

// Whether the request reaches the card.
[[nodiscard]] bool reachesCard(const std::vector<Fault>& faults);

[[nodiscard]] FaultyReply faultyReply(
    const ServiceRequest& request, CardAnswer answer, const std::vector<Fault>& faults);
