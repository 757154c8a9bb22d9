#pragma once

#include <cstdint>
#include <optional>

// What the device watch knows about the card, for texts only: requests depend on G_bDeviceExist.
enum class CardPresence : std::uint8_t {
    Unknown, // not searched for yet
    Absent,
    Silent, // there is a service for it, but it cannot be opened or does not answer
    Answering,
};

// Set by the device watch. Main thread only.
inline CardPresence cardPresence { CardPresence::Unknown };

// Whether the radio was switched on or off in this window. Main thread only.
inline bool radioSwitched { false };

// Whether the card's own radio switch is on, as a page last read it; std::nullopt until a card has reported it. Main
// thread only.
inline std::optional<bool> cardSwitchOn;
