#pragma once

#include <QString>

#include <cstdint>
#include <span>
#include <vector>

class AccessPoint;

struct ChannelViewNetwork {
    int row { -1 }; // in the list of networks
    QString name; // display text
    std::uint32_t frequencyKhz { 0 }; // 0 where the channel is unknown
    int channel { 0 }; // 0 where it is unknown
    int signal { 0 }; // quality, 0 to 100
};

// What the channel view shows. A network on an unknown channel has no place on the axis and is not drawn.
struct ChannelViewModel {
    std::vector<ChannelViewNetwork> networks;
    int joinedRow { -1 }; // -1: none
    int selectedRow { -1 }; // -1: none

    [[nodiscard]] const ChannelViewNetwork* networkOfRow(int row) const; // nullptr: no such row
};

// The networks of the list's rows, in their order.
[[nodiscard]] std::vector<ChannelViewNetwork> channelViewNetworks(std::span<const AccessPoint> rows);

// Whether the view has a place on its axis for this network.
[[nodiscard]] bool isDrawn(const ChannelViewNetwork& network);

// Orders by decreasing signal, then rising frequency and row.
[[nodiscard]] bool isStronger(const ChannelViewNetwork& one, const ChannelViewNetwork& other);

enum class ChannelStep { First, Last, LowerFrequency, HigherFrequency, Stronger, Weaker };

// The row to select after a step from the selected one, among the networks that are drawn; -1 if none is drawn.
// Networks on one frequency follow each other by decreasing signal. Steps stop at both ends. If no drawn network is
// selected, a step along the axis starts at its end, and a step by signal at the strongest network.
[[nodiscard]] int rowAfterStep(const ChannelViewModel& model, ChannelStep step);
