#include "services/card/CardSettings.h"

#include "tests/services/card/RequestRecords.h"

#include <gtest/gtest.h>

namespace {

const std::string pmk(32, '\x5A');

std::string text(const WepKeyBytes& bytes)
{
    return { bytes.begin(), bytes.end() };
}

} // namespace

TEST(CardSettings, StoresWepKeysByIndex)
{
    CardSettings settings;
    EXPECT_TRUE(addKey(settings, keyRecord(0, "abcde")));
    EXPECT_FALSE(settings.transmitKeyIndex);
    EXPECT_TRUE(addKey(settings, keyRecord(keyIndexTransmit | 3, "0123456789abc")));
    EXPECT_EQ(settings.transmitKeyIndex, 3U);
    EXPECT_EQ(text(settings.wepKeys[0]), "abcde");
    EXPECT_EQ(text(settings.wepKeys[3]), "0123456789abc");
}

TEST(CardSettings, RemovingTheTransmitKeyClearsTheTransmitIndex)
{
    CardSettings settings;
    EXPECT_TRUE(addKey(settings, keyRecord(keyIndexTransmit | 1, "abcde")));
    EXPECT_TRUE(addKey(settings, keyRecord(2, "fghij")));
    EXPECT_TRUE(removeKey(settings, bytesOf(removeKeyRecord(2))));
    EXPECT_EQ(settings.transmitKeyIndex, 1U);
    EXPECT_TRUE(removeKey(settings, bytesOf(removeKeyRecord(1))));
    EXPECT_FALSE(settings.transmitKeyIndex);
    EXPECT_TRUE(settings.wepKeys[1].empty());
    EXPECT_FALSE(removeKey(settings, bytesOf(removeKeyRecord(4))));
}

TEST(CardSettings, StoresWpaPskAndWpaNoneKeysSeparately)
{
    CardSettings settings;
    EXPECT_TRUE(addWpaKey(settings, keyRecord(keyIndexTransmit, pmk, false)));
    EXPECT_TRUE(settings.wpaKey);
    EXPECT_FALSE(settings.adHocWpaKey);
    EXPECT_TRUE(addKey(settings, keyRecord(keyIndexTransmit, pmk, false)));
    EXPECT_EQ(settings.adHocWpaKey, settings.wpaKey);
    EXPECT_EQ(settings.wpaKey->front(), 0x5A);
}

TEST(CardSettings, RejectsInvalidKeyLengthsAndIndices)
{
    CardSettings settings;
    for (const std::size_t length : { 0U, 1U, 4U, 6U, 10U, 12U, 14U, 16U, 31U, 33U })
        EXPECT_FALSE(addKey(settings, keyRecord(0, std::string(length, 'k')))) << length;
    EXPECT_FALSE(addKey(settings, keyRecord(4, "abcde")));
    EXPECT_FALSE(addKey(settings, keyRecord(0x40000000, "abcde")));
    EXPECT_FALSE(addKey(settings, keyRecord(0, "abcde", false))); // WEP keys need the broadcast address
    EXPECT_FALSE(addKey(settings, keyRecord(1, pmk, false)));
    EXPECT_FALSE(addWpaKey(settings, keyRecord(keyIndexTransmit, "abcde")));
    EXPECT_FALSE(addWpaKey(settings, keyRecord(0, pmk, false)));
    EXPECT_FALSE(settings.wpaKey);
    EXPECT_FALSE(settings.adHocWpaKey);
    for (const auto& key : settings.wepKeys)
        EXPECT_TRUE(key.empty());
}

TEST(CardSettings, RejectsRecordsWithWrongLengths)
{
    CardSettings settings;
    Bytes record = keyRecord(0, "abcde");
    record.pop_back();
    EXPECT_FALSE(addKey(settings, record));
    record = keyRecord(0, "abcde");
    record.push_back({});
    EXPECT_FALSE(addKey(settings, record));
    EXPECT_FALSE(addKey(settings, {}));
    EXPECT_FALSE(addKey(settings, Bytes(27)));

    record = keyRecord(0, "abcde");
    record[8] = std::byte { 0xFF }; // KeyLength
    record[9] = record[10] = record[11] = std::byte { 0xFF };
    EXPECT_FALSE(addKey(settings, record));
    record[0] = std::byte { 0x26 }; // Length = KeyLength + 39 after the overflow
    record[1] = record[2] = record[3] = std::byte { 0 };
    record.resize(0x26);
    EXPECT_FALSE(addKey(settings, record));

    NDIS_802_11_REMOVE_KEY remove = removeKeyRecord(0);
    remove.Length = 15;
    EXPECT_FALSE(removeKey(settings, bytesOf(remove)));
    EXPECT_FALSE(removeKey(settings, Bytes(15)));
}
