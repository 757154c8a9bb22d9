#include "platform/store/PropertyDictionary.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(PropertyDictionary, KeepsOrderOfFirstAssignment)
{
    PropertyDictionary dictionary { { u"b"_qs, u"1"_qs }, { u"a"_qs, u"2"_qs } };
    dictionary.set(u"c"_qs, 3);
    dictionary.set(u"b"_qs, u"4"_qs);
    EXPECT_EQ(dictionary, (PropertyDictionary { { u"b"_qs, u"4"_qs }, { u"a"_qs, u"2"_qs }, { u"c"_qs, u"3"_qs } }));
    EXPECT_NE(dictionary, (PropertyDictionary { { u"a"_qs, u"2"_qs }, { u"b"_qs, u"4"_qs }, { u"c"_qs, u"3"_qs } }));
    EXPECT_EQ(dictionary.size(), 3u);
}

TEST(PropertyDictionary, MissingKeyIsEmptyAndZero)
{
    const PropertyDictionary dictionary;
    EXPECT_EQ(dictionary.text(u"SSID"), QString());
    EXPECT_EQ(dictionary.integer(u"SSID"), 0);
    EXPECT_FALSE(dictionary.contains(u"SSID"));
}

TEST(PropertyDictionary, DistinguishesEmptyTextFromMissingKey)
{
    const PropertyDictionary dictionary { { u"SSID"_qs, QString() } };
    EXPECT_TRUE(dictionary.contains(u"SSID"));
}

TEST(IntegerOfText, ParsesNumberAtStart)
{
    EXPECT_EQ(integerOfText(u"2347"), 2347);
    EXPECT_EQ(integerOfText(u"  7"), 7);
    EXPECT_EQ(integerOfText(u"\t-12 bytes"), -12);
    EXPECT_EQ(integerOfText(u"+3"), 3);
    EXPECT_EQ(integerOfText(u"6.9"), 6);
    EXPECT_EQ(integerOfText(u"0x10"), 0);
    EXPECT_EQ(integerOfText(u"007"), 7);
}

TEST(IntegerOfText, IsZeroWithoutNumber)
{
    for (const QStringView text : { u"", u"-", u"+", u"--1", u"+-1", u"- 1", u"abc", u"O7", u"   " })
        EXPECT_EQ(integerOfText(text), 0) << text.toUtf8().constData();
    EXPECT_EQ(integerOfText(QString(QChar(0x0663))), 0); // an Arabic digit
}

TEST(IntegerOfText, ClampsToRange)
{
    EXPECT_EQ(integerOfText(u"2147483647"), std::numeric_limits<int>::max());
    EXPECT_EQ(integerOfText(u"2147483648"), std::numeric_limits<int>::max());
    EXPECT_EQ(integerOfText(u"-2147483648"), std::numeric_limits<int>::min());
    EXPECT_EQ(integerOfText(u"-2147483649"), std::numeric_limits<int>::min());
    EXPECT_EQ(integerOfText(QString(1000, u'9')), std::numeric_limits<int>::max());
    EXPECT_EQ(integerOfText(u"-"_qs + QString(1000, u'9')), std::numeric_limits<int>::min());
}

} // namespace
