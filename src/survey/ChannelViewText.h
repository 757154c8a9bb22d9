#pragma once

#include "survey/ChannelBands.h"
#include "survey/ChannelViewModel.h"

#include <QString>

// "2.4 GHz" or "5 GHz".
[[nodiscard]] QString bandName(ChannelBand band);

// One network in words: "Compass on channel 6, signal 80, connected".
[[nodiscard]] QString channelNetworkText(const ChannelViewNetwork& network, bool isJoined);

// The whole view in words: the selected network first, then the strongest networks of each band and the number of the
// others, and how many networks have no place on the axis.
[[nodiscard]] QString channelViewDescription(const ChannelViewModel& model);

// How many networks of a band the description names.
inline constexpr std::size_t maxDescribedNetworks = 10;
