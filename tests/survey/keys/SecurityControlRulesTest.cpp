#include "survey/keys/SecurityControlRules.h"

#include <gtest/gtest.h>

namespace {

using Items = std::vector<QString>;

TEST(AuthenticationItems, EndInWhatTheKindOfNetworkCanUse)
{
    EXPECT_EQ(*authenticationItems(0), (Items { u"Open"_qs, u"Shared"_qs, u"WPA-NONE"_qs }));
    EXPECT_EQ(*authenticationItems(1), (Items { u"Open"_qs, u"Shared"_qs, u"WPA-PSK"_qs }));
    EXPECT_FALSE(authenticationItems(2).has_value());
    EXPECT_FALSE(authenticationItems(-1).has_value());
}

TEST(EncryptionItems, FollowTheAuthentication)
{
    EXPECT_EQ(encryptionItems(0, 6), (Items { u"NONE"_qs, u"WEP"_qs }));
    EXPECT_EQ(encryptionItems(1, 6), (Items { u"NONE"_qs, u"WEP"_qs }));
    EXPECT_EQ(encryptionItems(2, 6), (Items { u"TKIP"_qs, u"AES"_qs }));
    EXPECT_EQ(encryptionItems(2, 4), (Items { u"TKIP"_qs }));
    EXPECT_TRUE(encryptionItems(2, 5).empty());
    EXPECT_TRUE(encryptionItems(2, 0).empty());
    EXPECT_TRUE(encryptionItems(-1, 6).empty());
    EXPECT_TRUE(encryptionItems(3, 6).empty());
}

TEST(KeyFieldsEnabled, FollowAuthenticationAndEncryption)
{
    EXPECT_EQ(keyFieldsEnabled(0, 0), (KeyFieldsEnabled { false, false }));
    EXPECT_EQ(keyFieldsEnabled(0, 1), (KeyFieldsEnabled { true, false }));
    EXPECT_EQ(keyFieldsEnabled(1, 0), (KeyFieldsEnabled { true, false }));
    EXPECT_EQ(keyFieldsEnabled(1, 1), (KeyFieldsEnabled { true, false }));
    for (const int encryption : { -1, 0, 1, 2 })
        EXPECT_EQ(keyFieldsEnabled(2, encryption), (KeyFieldsEnabled { false, true }));
}

TEST(KeyFieldsEnabled, StayAsTheyAreForAnythingElse)
{
    EXPECT_FALSE(keyFieldsEnabled(0, 2).has_value());
    EXPECT_FALSE(keyFieldsEnabled(0, -1).has_value());
    EXPECT_FALSE(keyFieldsEnabled(1, 3).has_value());
    EXPECT_FALSE(keyFieldsEnabled(-1, 0).has_value());
    EXPECT_FALSE(keyFieldsEnabled(3, 0).has_value());
}

} // namespace
