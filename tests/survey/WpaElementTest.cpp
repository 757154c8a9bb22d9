#include "survey/WpaElement.h"

#include "tests/support/BssidListBuilder.h"

#include <gtest/gtest.h>

namespace {

constexpr int preSharedKey = 2;

struct FoundElement {
    Bytes buffer;
    std::optional<WpaElement> element;

    explicit FoundElement(const EntryBuilder& entry)
        : buffer(inBuffer(bssidList({ entry })))
        , element(findWpaElement(firstEntry()))
    {
    }

    [[nodiscard]] BssidEntry firstEntry() { return *BssidListWalk(buffer).next(); }
};

EntryBuilder entryWith(std::initializer_list<Bytes> elements)
{
    EntryBuilder entry;
    for (const Bytes& element : elements)
        append(entry.elements, element);
    return entry;
}

TEST(FindWpaElement, FindsAnElementThatComesFirst)
{
    const FoundElement found(entryWith({ wpaElement(tkip, preSharedKey) }));
    ASSERT_TRUE(found.element.has_value());
    EXPECT_EQ(found.element->offset, 128u);
    EXPECT_STREQ(cipherText(*found.element), "TKIP");
}

TEST(FindWpaElement, ReturnsTheCipherOfTheGroupSuite)
{
    EXPECT_STREQ(cipherText({ 0, 2 }), "TKIP");
    EXPECT_STREQ(cipherText({ 0, 3 }), "AES-WRAP");
    EXPECT_STREQ(cipherText({ 0, 4 }), "AES-CCMP");
    EXPECT_EQ(cipherText({ 0, 0 }), nullptr);
    EXPECT_EQ(cipherText({ 0, 5 }), nullptr);
}

TEST(FindWpaElement, AdvancesByTheLengthByteOnly)
{
    // The walk lands two bytes early, on the last two bytes of the two-byte SSID element, and takes them for a header.
    // Their length byte leads to the WPA element.
    const FoundElement found(entryWith({ bytesOf({ 0, 2, 9, 2 }), wpaElement(tkip, preSharedKey) }));
    ASSERT_TRUE(found.element.has_value());
    EXPECT_EQ(found.element->offset, 128u + 4);
}

TEST(FindWpaElement, MissesAnElementThatAProperWalkWouldFind)
{
    // An element of three bytes, then the WPA element. The walk lands on the last two bytes of the first element,
    // takes them for a header of length 0, and stops.
    const FoundElement found(entryWith({ bytesOf({ 1, 3, 7, 7, 0 }), wpaElement(tkip, preSharedKey) }));
    EXPECT_FALSE(found.element.has_value());
}

TEST(FindWpaElement, StopsAtAZeroLengthElement)
{
    const FoundElement found(entryWith({ bytesOf({ 0, 2, 1, 0 }), wpaElement(tkip, preSharedKey) }));
    EXPECT_FALSE(found.element.has_value());
}

TEST(FindWpaElement, StopsAtAnEmptyFirstElement)
{
    const FoundElement found(entryWith({ bytesOf({ 0, 0 }), wpaElement(tkip, preSharedKey) }));
    EXPECT_FALSE(found.element.has_value());
}

TEST(FindWpaElement, RequiresALengthByteAbove15)
{
    Bytes element = wpaElement(tkip, preSharedKey);
    element[1] = std::byte { 15 };
    EXPECT_FALSE(FoundElement(entryWith({ element })).element.has_value());
    element[1] = std::byte { 16 };
    EXPECT_TRUE(FoundElement(entryWith({ element })).element.has_value());
}

TEST(FindWpaElement, RequiresTheOuiAndType)
{
    Bytes element = wpaElement(tkip, preSharedKey);
    element[5] = std::byte { 2 };
    EXPECT_FALSE(FoundElement(entryWith({ element })).element.has_value());
}

TEST(FindWpaElement, StopsAtAnotherVendorsElementEvenBeforeAWpaElement)
{
    Bytes vendor = bytesOf({ 221, 16, 0x00, 0x10, 0x18, 0x02 });
    vendor.resize(18);
    EXPECT_FALSE(FoundElement(entryWith({ vendor, wpaElement(tkip, preSharedKey) })).element.has_value());
}

TEST(FindWpaElement, RequiresAGroupSuiteWithTheSameOui)
{
    Bytes element = wpaElement(tkip, preSharedKey);
    element[8] = std::byte { 1 };
    EXPECT_FALSE(FoundElement(entryWith({ element })).element.has_value());
}

TEST(FindWpaElement, IgnoresEntriesThatAreTooShort)
{
    EntryBuilder entry = entryWith({ wpaElement(tkip, preSharedKey) });
    entry.keepLengths = true;
    entry.fixedPart.IELength = 100;
    entry.fixedPart.Length = 104;
    EXPECT_FALSE(FoundElement(entry).element.has_value());
    entry.fixedPart.Length = 105;
    EXPECT_TRUE(FoundElement(entry).element.has_value());
    entry.fixedPart.IELength = 12;
    EXPECT_FALSE(FoundElement(entry).element.has_value());
    entry.fixedPart.IELength = 15; // position 12 and three more: no header fits
    EXPECT_FALSE(FoundElement(entry).element.has_value());
    entry.fixedPart.IELength = 16;
    EXPECT_TRUE(FoundElement(entry).element.has_value());
}

TEST(FindWpaElement, StaysInTheBufferIfTheElementsLengthIsTooLarge)
{
    EntryBuilder entry = entryWith({ bytesOf({ 1, 1, 1, 1, 1, 1, 1, 1 }) });
    entry.keepLengths = true;
    entry.fixedPart.Length = 128 + 8;
    entry.fixedPart.IELength = 0xFFFFFFFF;
    EXPECT_FALSE(FoundElement(entry).element.has_value());
}

TEST(FirstAkmSuite, FollowsTheGivenNumberOfPairwiseSuites)
{
    FoundElement found(entryWith({ wpaElement(tkip, preSharedKey, 3) }));
    ASSERT_TRUE(found.element.has_value());
    EXPECT_EQ(pairwiseSuiteCount(found.firstEntry(), *found.element), 3);
    EXPECT_EQ(firstAkmSuite(found.firstEntry(), *found.element, 3), 2);
    // After only one suite, the first two bytes of the second suite are read as the AKM suite count,
    // and the suite after them has another OUI.
    EXPECT_EQ(firstAkmSuite(found.firstEntry(), *found.element, 1), std::nullopt);
}

TEST(FirstAkmSuite, IsMissingIfTheCountIsZero)
{
    Bytes element = wpaElement(tkip, preSharedKey);
    element[18] = std::byte { 0 };
    FoundElement found(entryWith({ element }));
    EXPECT_EQ(firstAkmSuite(found.firstEntry(), *found.element, 1), std::nullopt);
}

TEST(FirstAkmSuite, StaysInTheBufferForAnyCount)
{
    FoundElement found(entryWith({ wpaElement(tkip, preSharedKey) }));
    EXPECT_EQ(firstAkmSuite(found.firstEntry(), *found.element, 65535), std::nullopt);
}

TEST(SetPairwiseSuiteCount, ModifiesTheList)
{
    FoundElement found(entryWith({ wpaElement(tkip, preSharedKey, 2) }));
    auto entry = found.firstEntry();
    setPairwiseSuiteCount(entry, *found.element, 1);
    EXPECT_EQ(pairwiseSuiteCount(found.firstEntry(), *found.element), 1);
    EXPECT_EQ(found.buffer[4 + 128 + 12], std::byte { 1 });
    EXPECT_EQ(found.buffer[4 + 128 + 13], std::byte { 0 });
}

} // namespace
