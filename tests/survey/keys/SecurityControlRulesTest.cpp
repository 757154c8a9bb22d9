#include "survey/keys/SecurityControlRules.h"

#include <gtest/gtest.h>

namespace {

using Items = std::vector<QString>;

TEST(AuthenticationItems, EndInWpaNoneOrWpaPsk)
{
    EXPECT_EQ(*authenticationItems(0), (Items { u"Open"_qs, u"Shared"_qs, u"WPA-NONE"_qs }));
    EXPECT_EQ(*authenticationItems(1), (Items { u"Open"_qs, u"Shared"_qs, u"WPA-PSK"_qs }));
    EXPECT_FALSE(authenticationItems(2).has_value());
    EXPECT_FALSE(authenticationItems(-1).has_value());
}

TEST(EncryptionList, StartsWithTheItemsOfTheAuthenticationAndNoSelection)
{
    const auto items = [](int authenTypeIndex, int capability) {
        return encryptionListAfter({}, authenTypeIndex, 0, capability).items;
    };
    EXPECT_EQ(encryptionListAfter({}, 0, 0, 6), (EncryptionList { { u"NONE"_qs, u"WEP"_qs }, -1, 0 }));
    EXPECT_EQ(items(1, 6), (Items { u"NONE"_qs, u"WEP"_qs }));
    EXPECT_EQ(items(2, 6), (Items { u"TKIP"_qs, u"AES"_qs }));
    EXPECT_EQ(items(2, 4), (Items { u"TKIP"_qs }));
    EXPECT_TRUE(items(2, 5).empty());
    EXPECT_TRUE(items(2, 0).empty());
    EXPECT_TRUE(items(-1, 6).empty());
    EXPECT_TRUE(items(3, 6).empty());
}

TEST(EncryptionList, InsertsItemsAgainAndKeepsTheSelectedIndexBetweenOpenAndShared)
{
    const auto open = encryptionListAfter({ { u"NONE"_qs, u"WEP"_qs }, 1, 0 }, 0, 0, 6);
    EXPECT_EQ(open, (EncryptionList { { u"NONE"_qs, u"WEP"_qs, u"NONE"_qs, u"WEP"_qs }, 1, 0 }));
    const auto shared = encryptionListAfter(open, 1, 0, 6);
    EXPECT_EQ(shared.items.size(), 6u);
    EXPECT_EQ(shared.selectedIndex, 1);
}

TEST(EncryptionList, IsEmptiedBetweenWepAndWpa)
{
    const EncryptionList twice { { u"NONE"_qs, u"WEP"_qs, u"NONE"_qs, u"WEP"_qs }, 1, 0 };
    const auto wpa = encryptionListAfter(twice, 2, 1, 6);
    EXPECT_EQ(wpa, (EncryptionList { { u"TKIP"_qs, u"AES"_qs }, 0, 1 }));
    EXPECT_EQ(encryptionListAfter(twice, 2, 1, 4), (EncryptionList { { u"TKIP"_qs }, 0, 1 }));
    EXPECT_EQ(encryptionListAfter(twice, 2, 1, 5), (EncryptionList { {}, -1, 1 }));
    EXPECT_EQ(encryptionListAfter({ wpa.items, 1, 1 }, 1, 0, 6), (EncryptionList { { u"NONE"_qs, u"WEP"_qs }, 0, 0 }));
}

TEST(EncryptionList, InsertsItemsAgainWithWpa)
{
    const auto again = encryptionListAfter({ { u"TKIP"_qs, u"AES"_qs }, 1, 1 }, 2, 1, 6);
    EXPECT_EQ(again, (EncryptionList { { u"TKIP"_qs, u"AES"_qs, u"TKIP"_qs, u"AES"_qs }, 1, 1 }));
}

TEST(EncryptionList, DoesNotChangeWithoutAnAuthentication)
{
    for (const int none : { -1, 3 })
        for (const int selFlag : { 0, 1 }) {
            const EncryptionList before { { u"TKIP"_qs }, 0, selFlag };
            EXPECT_EQ(encryptionListAfter(before, none, selFlag, 6), before);
        }
}

TEST(KeyFieldsEnabled, DependOnAuthenticationAndEncryption)
{
    EXPECT_EQ(keyFieldsEnabled(0, 0), (KeyFieldsEnabled { false, false }));
    EXPECT_EQ(keyFieldsEnabled(0, 1), (KeyFieldsEnabled { true, false }));
    EXPECT_EQ(keyFieldsEnabled(1, 0), (KeyFieldsEnabled { true, false }));
    EXPECT_EQ(keyFieldsEnabled(1, 1), (KeyFieldsEnabled { true, false }));
    for (const int encryption : { -1, 0, 1, 2 })
        EXPECT_EQ(keyFieldsEnabled(2, encryption), (KeyFieldsEnabled { false, true }));
}

TEST(KeyFieldsEnabled, DoNotChangeForAnyOtherSelection)
{
    EXPECT_FALSE(keyFieldsEnabled(0, 2).has_value());
    EXPECT_FALSE(keyFieldsEnabled(0, -1).has_value());
    EXPECT_FALSE(keyFieldsEnabled(1, 3).has_value());
    EXPECT_FALSE(keyFieldsEnabled(-1, 0).has_value());
    EXPECT_FALSE(keyFieldsEnabled(3, 0).has_value());
}

} // namespace
