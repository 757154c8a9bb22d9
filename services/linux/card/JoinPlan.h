#pragma once

#include "services/linux/card/CardState.h"
#include "services/linux/card/NetworkBlock.h"

#include <optional>

// The network block for a request, from the settings and from what the list knows of the network. std::nullopt if the
// settings do not allow any join: an authentication that the interface cannot do (802.1X, WPA-None), a missing key, or
// an ad hoc network without a name.
[[nodiscard]] std::optional<NetworkBlock> planJoin(const CardState& state, const JoinRequest& request);
