#include "posix/SecureMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <string>

namespace {

TEST(SecretArray, IsOverwrittenOnDestruction)
{
    using Key = SecretArray<std::uint8_t, 16>;
    alignas(Key) std::array<unsigned char, sizeof(Key)> storage;
    storage.fill(0x5A);
    auto* const key = new (storage.data()) Key;
    key->fill(0xC3);
    key->~Key();
    EXPECT_TRUE(std::all_of(storage.begin(), storage.end(), [](unsigned char byte) { return byte == 0; }));
}

TEST(SecretText, CopiesAndComparesItsBytes)
{
    const SecretText text = std::string("a\0b", 3);
    const SecretText copy = text;
    EXPECT_EQ(copy.size(), 3u);
    EXPECT_EQ(copy.view(), std::string_view("a\0b", 3));
    EXPECT_EQ(copy, text);
    EXPECT_FALSE(copy == SecretText("a"));
}

TEST(SecretText, IsZeroTerminated)
{
    EXPECT_STREQ(SecretText("key").c_str(), "key");
    EXPECT_STREQ(SecretText().c_str(), "");
    EXPECT_EQ(SecretText().size(), 0u);
}

} // namespace
