#include "app/shared/SharedState.h"

#include "survey/connection/TaskQueue.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

template <typename Width, typename Flag> constexpr bool has = std::is_same_v<Width, std::remove_reference_t<Flag>>;

static_assert(has<std::uint8_t, decltype(__DEBUG__)>);
static_assert(has<std::uint8_t, decltype(G_bDeviceExist)>);
static_assert(has<std::uint8_t, decltype(G_bDialogRunning)>);
static_assert(has<std::uint8_t, decltype(G_bSelCard)>);
static_assert(has<std::uint8_t, decltype(G_bDeviceRemove)>);
static_assert(has<std::uint8_t, decltype(G_bRescan)>);
static_assert(has<std::uint8_t, decltype(G_bBssidListScan)>);
static_assert(has<std::uint8_t, decltype(G_bSupportAMode)>);
static_assert(has<std::uint8_t, decltype(G_bRadio)>);
static_assert(has<std::int32_t, decltype(G_bOidSetRetry)>);
static_assert(has<std::uint8_t, decltype(G_bWpaCapable)>);
static_assert(has<std::uint8_t, decltype(G_bCheckedProfileConnect)>);
static_assert(has<std::uint8_t, decltype(G_configFromProfile)>);
static_assert(has<std::int32_t, decltype(G_enumWirelessMode)>);
static_assert(has<std::int32_t, decltype(G_encryCapa)>);
static_assert(has<std::int8_t, decltype(G_bCurSelItem)>);
static_assert(sizeof(*G_pBssidList) == 65536);

TEST(SharedState, StartsWithoutACardAndWithTheRadioOn)
{
    EXPECT_EQ(__DEBUG__, 0);
    EXPECT_EQ(G_bDeviceExist, 0);
    EXPECT_EQ(G_bDialogRunning, 0);
    EXPECT_EQ(G_bSelCard, 1);
    EXPECT_EQ(G_bDeviceRemove, 1);
    EXPECT_EQ(G_bRescan, 0);
    EXPECT_EQ(G_bBssidListScan, 0);
    EXPECT_EQ(G_bSupportAMode, 0);
    EXPECT_EQ(G_bRadio, 1);
    EXPECT_EQ(G_bOidSetRetry, 3);
    EXPECT_EQ(G_bWpaCapable, 1);
    EXPECT_EQ(G_bCheckedProfileConnect, 0);
    EXPECT_EQ(G_configFromProfile, 0);
    EXPECT_EQ(G_enumWirelessMode, 0);
    EXPECT_EQ(G_encryCapa, 6);
    EXPECT_EQ(G_bCurSelItem, 0);
}

TEST(SharedState, StartsWithoutAListOrAQueue)
{
    EXPECT_EQ(G_pBssidList, nullptr);
    EXPECT_EQ(ProfileDataQueue, nullptr);
}

} // namespace
