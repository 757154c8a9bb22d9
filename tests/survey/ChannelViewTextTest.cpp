#include "survey/ChannelViewText.h"

#include "tests/survey/ChannelViewNetworks.h"

#include <gtest/gtest.h>

namespace {

TEST(ChannelViewDescription, NamesTheNetworksOfEachBandTheStrongestFirst)
{
    const ChannelViewModel model { { networkOn(0, u"Lab"_qs, 11, 64), networkOn(1, u"Compass"_qs, 6, 80),
                                       networkOn(2, u"Office"_qs, 44, 60) },
        1, -1 };
    EXPECT_EQ(channelViewDescription(model),
        u"2 networks on 2.4 GHz: Compass on channel 6, signal 80, connected; Lab on channel 11, signal 64. "
        u"1 network on 5 GHz: Office on channel 44, signal 60.");
}

TEST(ChannelViewDescription, BeginsWithTheSelectedNetwork)
{
    const ChannelViewModel model { { networkOn(0, u"Lab"_qs, 11, 64) }, 0, 0 };
    EXPECT_EQ(channelViewDescription(model),
        u"Selected: Lab on channel 11, signal 64, connected. 1 network on 2.4 GHz: Lab on channel 11, signal 64, "
        u"connected.");
}

TEST(ChannelViewDescription, CountsNetworksOnUnknownChannels)
{
    ChannelViewModel model { { networkOn(0, u"A"_qs, 0, 64), networkOn(1, u"B"_qs, 0, 3) }, -1, -1 };
    EXPECT_EQ(channelViewDescription(model), u"2 networks on an unknown channel.");
    model.selectedRow = 1;
    EXPECT_EQ(channelViewDescription(model),
        u"Selected: B on an unknown channel, signal 3. 2 networks on an unknown channel.");
}

TEST(ChannelViewDescription, CountsTheNetworksBeyondTheStrongest)
{
    ChannelViewModel model;
    for (int row = 0; row < 99; ++row)
        model.networks.push_back(networkOn(row, QStringLiteral("N%1").arg(row), 1, row));
    const QString text = channelViewDescription(model);
    EXPECT_TRUE(text.startsWith(u"99 networks on 2.4 GHz: N98 on channel 1, signal 98; N97 on")) << qPrintable(text);
    EXPECT_TRUE(text.endsWith(u"N89 on channel 1, signal 89; and 89 more.")) << qPrintable(text);
}

TEST(ChannelViewDescription, IsEmptyWithoutNetworks)
{
    EXPECT_EQ(channelViewDescription({}), QString());
}

TEST(ChannelNetworkText, LeavesPlaceMarkersInNamesAlone)
{
    EXPECT_EQ(channelNetworkText(networkOn(0, u"%1 %2 %3"_qs, 6, 80), false), u"%1 %2 %3 on channel 6, signal 80");
    const ChannelViewModel model { { networkOn(0, u"%2 %1"_qs, 6, 80) }, -1, 0 };
    EXPECT_EQ(channelViewDescription(model),
        u"Selected: %2 %1 on channel 6, signal 80. 1 network on 2.4 GHz: %2 %1 on channel 6, signal 80.");
}

} // namespace
