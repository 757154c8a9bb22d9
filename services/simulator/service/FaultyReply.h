#pragma once

#include "services/host/ServiceHost.h"
#include "services/simulator/card/SimulatedCard.h"
#include "services/simulator/service/Faults.h"

#include <cstdint>
#include <vector>

// What becomes of a card's answer under the faults that meet its request.
struct FaultyReply {
    enum class Form {
        Reply, // the answer
        Packet, // the bytes of packet, which are no proper reply
        HangUp,
        Silence,
    };

    Form form { Form::Reply };
    CardAnswer answer;
    Bytes packet;
    std::uint32_t delayMs { 0 };
};

// Whether the card gets to see the request at all.
[[nodiscard]] bool reachesCard(const std::vector<Fault>& faults);

[[nodiscard]] FaultyReply faultyReply(
    const ServiceRequest& request, CardAnswer answer, const std::vector<Fault>& faults);
