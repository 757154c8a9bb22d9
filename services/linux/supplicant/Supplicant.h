#pragma once

#include "services/linux/card/NetworkBlock.h"
#include "services/linux/wire/SupplicantText.h"

#include <cstdint>
#include <vector>

// Who is told what the supplicant does.
class SupplicantListener {
public:
    virtual ~SupplicantListener() = default;

    // It takes joins from now on. Whatever was joined before is gone.
    virtual void supplicantReady() = 0;
    virtual void supplicantLost() = 0;
    virtual void supplicantEvent(const SupplicantEvent& event) = 0;
    // The state after a connection or another channel was reported.
    virtual void supplicantStatus(const SupplicantStatus& status) = 0;
    // The state as it is from time to time. Returns whether it was news: then an event was lost.
    [[nodiscard]] virtual bool supplicantProbed(const SupplicantStatus& status) = 0;
};

// What a card needs of the supplicant. Every operation returns at once, and does nothing while it is not ready.
class Supplicant {
public:
    virtual ~Supplicant() = default;

    virtual void start(SupplicantListener& listener) = 0;
    virtual void join(const NetworkBlock& block) = 0;
    // Searches all of these frequencies and joins on no others.
    virtual void widenSearch(const std::vector<std::uint32_t>& frequenciesMhz, bool isUrgent) = 0;
    virtual void leave() = 0;
};
