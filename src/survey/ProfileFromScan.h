#pragma once

#include "driver/BssidList.h"
#include "survey/connection/ProfileProposal.h"

#include <optional>

class AssertionHandler;

// The profile to propose for a scanned network. A frequency outside ChannelFreqTable is a failed assertion. If its
// handler lets the program continue, the channel of the table's first row is used; otherwise there is no proposal.
// A WPA network with 802.1X is proposed like one without WPA: a profile cannot store 802.1X, but the user may still
// want the rest.
[[nodiscard]] std::optional<ProfileProposal> profileProposal(const BssidEntry& entry, AssertionHandler& assertions);
