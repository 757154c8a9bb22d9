#include "services/linux/wire/SecurityElements.h"

#include <gtest/gtest.h>

namespace {

// RSN with these suite types: version, group, one pairwise, one AKM, capabilities.
Octets rsnOf(std::uint8_t group, std::uint8_t pairwise, std::uint8_t akm, std::uint8_t capabilities = 0)
{
    return { 48, 20, 1, 0, 0x00, 0x0F, 0xAC, group, 1, 0, 0x00, 0x0F, 0xAC, pairwise, 1, 0, 0x00, 0x0F, 0xAC, akm,
        capabilities, 0 };
}

Octets wpaOf(std::uint8_t group, std::uint8_t pairwise, std::uint8_t akm)
{
    return { 221, 22, 0x00, 0x50, 0xF2, 1, 1, 0, 0x00, 0x50, 0xF2, group, 1, 0, 0x00, 0x50, 0xF2, pairwise, 1, 0, 0x00,
        0x50, 0xF2, akm };
}

Octets joined(Octets one, const Octets& other)
{
    one.insert(one.end(), other.begin(), other.end());
    return one;
}

constexpr std::uint8_t tkip = 2;
constexpr std::uint8_t ccmp = 4;
constexpr std::uint8_t gcmp256 = 9;
constexpr std::uint8_t enterprise = 1;
constexpr std::uint8_t psk = 2;
constexpr std::uint8_t fastPsk = 4;
constexpr std::uint8_t pskSha256 = 6;
constexpr std::uint8_t sae = 8;
constexpr std::uint8_t owe = 18;

const Octets ssid { 0, 2, 'h', 'i' };

} // namespace

TEST(SecurityElements, ReadRsn)
{
    const auto rsn = rsnElement(joined(ssid, rsnOf(tkip, ccmp, psk, 0x80)));
    ASSERT_TRUE(rsn);
    EXPECT_EQ(rsn->group, CipherSuite::Tkip);
    EXPECT_EQ(rsn->pairwise, (std::vector { CipherSuite::Ccmp }));
    EXPECT_EQ(rsn->keyManagement, (std::vector { KeyManagement::Psk }));
    EXPECT_TRUE(rsn->acceptsPresharedKey());
}

TEST(SecurityElements, MissingFieldsHaveTheDefaultsOfTheStandard)
{
    const auto rsn = rsnElement(Octets { 48, 2, 1, 0 });
    ASSERT_TRUE(rsn);
    EXPECT_EQ(rsn->group, CipherSuite::Ccmp);
    EXPECT_EQ(rsn->pairwise, (std::vector { CipherSuite::Ccmp }));
    EXPECT_FALSE(rsn->acceptsPresharedKey());
}

TEST(SecurityElements, MalformedOnesAreIgnored)
{
    Octets cut = rsnOf(ccmp, ccmp, psk);
    cut.resize(13); // in the middle of the pairwise suite
    cut[1] = 11;
    EXPECT_FALSE(rsnElement(cut));
    EXPECT_FALSE(rsnElement(Octets { 48, 2, 2, 0 })); // unknown version
    EXPECT_FALSE(rsnElement(Octets { 48, 0 }));
    EXPECT_FALSE(rsnElement({}));
    EXPECT_FALSE(wpaElement(Octets { 221, 3, 0x00, 0x50, 0xF2 }));
}

TEST(SecurityElements, OtherVendorElementsAreNotWpa)
{
    Octets wmm = wpaOf(tkip, tkip, psk);
    wmm[5] = 2; // the vendor's type
    EXPECT_FALSE(wpaElement(wmm));
    EXPECT_TRUE(wpaElement(joined(wmm, wpaOf(tkip, tkip, psk))));
}

TEST(ListedElements, MakeAWpaElementOfRsnWithAPresharedKey)
{
    for (const std::uint8_t akm : { psk, fastPsk, pskSha256 })
        EXPECT_EQ(listedElements(joined(ssid, rsnOf(ccmp, ccmp, akm))),
            joined(wpaOf(ccmp, ccmp, psk), joined(ssid, rsnOf(ccmp, ccmp, akm))));
}

TEST(ListedElements, KeepTheCiphersOfRsn)
{
    const Octets listed = listedElements(rsnOf(tkip, ccmp, psk));
    EXPECT_EQ(Octets(listed.begin(), listed.begin() + 24), wpaOf(tkip, ccmp, psk));
    // WPA has no name for the newer forms of AES.
    const Octets modern = listedElements(rsnOf(gcmp256, gcmp256, psk));
    EXPECT_EQ(Octets(modern.begin(), modern.begin() + 24), wpaOf(ccmp, ccmp, psk));
}

TEST(ListedElements, MarkNetworksThatAPresharedKeyDoesNotOpen)
{
    for (const std::uint8_t akm : { enterprise, sae, owe }) {
        const Octets listed = listedElements(rsnOf(ccmp, ccmp, akm));
        EXPECT_EQ(Octets(listed.begin(), listed.begin() + 24), wpaOf(ccmp, ccmp, enterprise)) << int(akm);
    }
}

TEST(ListedElements, KeepTheWpaElementOfANetworkWithBothAndPutItFirst)
{
    const Octets wpa = wpaOf(tkip, tkip, psk);
    const Octets rsn = rsnOf(tkip, ccmp, sae);
    EXPECT_EQ(listedElements(joined(joined(ssid, rsn), wpa)), joined(wpa, joined(ssid, rsn)));
}

TEST(ListedElements, DropWhatDescribesNeitherNameNorRatesNorSecurity)
{
    const Octets country { 7, 3, 'U', 'S', ' ' };
    const Octets vendor { 221, 4, 0x00, 0x50, 0xF2, 2 };
    EXPECT_EQ(listedElements(joined(joined(country, ssid), vendor)), ssid);
}

TEST(ListedElements, NeverShowAnUnreadableNetworkAsWep)
{
    const Octets locked = wpaOf(ccmp, ccmp, enterprise);
    Octets later = rsnOf(ccmp, ccmp, psk);
    later[2] = 2; // version
    const auto shownAs = [](const Octets& elements) {
        const Octets listed = listedElements(elements);
        return Octets(listed.begin(), listed.begin() + 24);
    };
    EXPECT_EQ(shownAs(later), locked);
    const Octets cutOff { 221, 5, 0x00, 0x50, 0xF2, 1, 1 };
    EXPECT_EQ(shownAs(cutOff), locked);
    // The readable one of both counts.
    EXPECT_EQ(shownAs(joined(cutOff, rsnOf(ccmp, ccmp, psk))), wpaOf(ccmp, ccmp, psk));
}
