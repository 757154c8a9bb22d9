#include "survey/keys/KeyHints.h"

#include <gtest/gtest.h>

namespace {

std::string hexadecimalHint(const std::string& text)
{
    return wepKeyHint({ 0, text, true }, true).toStdString();
}
std::string asciiHint(const std::string& text)
{
    return wepKeyHint({ 1, text, true }, true).toStdString();
}
std::string wpaHint(const std::string& text)
{
    return presharedKeyHint(text, KeyUse::Profile).toStdString();
}

TEST(WepKeyHint, StatesTheLengthsOfAnEmptySelectedKey)
{
    EXPECT_EQ(hexadecimalHint(""), "10 or 26 hexadecimal digits");
    EXPECT_EQ(asciiHint(""), "5 or 13 characters");
}

TEST(WepKeyHint, IsEmptyForAnEmptyKeyThatIsNotSelected)
{
    EXPECT_EQ(wepKeyHint({ 0, "", false }, false), QString());
    EXPECT_EQ(wepKeyHint({ 0, "1", false }, false), QStringLiteral("1 of 10 hexadecimal digits"));
}

TEST(WepKeyHint, IsEmptyWithoutAFormat)
{
    EXPECT_EQ(wepKeyHint({ -1, "1234", true }, true), QString());
}

TEST(WepKeyHint, CountsTowardsTheNextKeyLength)
{
    EXPECT_EQ(hexadecimalHint("123456789"), "9 of 10 hexadecimal digits");
    EXPECT_EQ(hexadecimalHint("1234567890"), "10 of 26 hexadecimal digits, complete as a 40-bit key");
    EXPECT_EQ(hexadecimalHint("12345678901"), "11 of 26 hexadecimal digits");
    EXPECT_EQ(hexadecimalHint(std::string(26, 'a')), "26 hexadecimal digits, a 104-bit key");
    EXPECT_EQ(asciiHint("1234"), "4 of 5 characters");
    EXPECT_EQ(asciiHint("12345"), "5 of 13 characters, complete as a 40-bit key");
    EXPECT_EQ(asciiHint("123456"), "6 of 13 characters");
    EXPECT_EQ(asciiHint("1234567890123"), "13 characters, a 104-bit key");
}

TEST(WepKeyHint, CountsExcessCharacters)
{
    EXPECT_EQ(hexadecimalHint(std::string(27, 'a')), "1 hexadecimal digit too many");
    EXPECT_EQ(hexadecimalHint(std::string(30, 'a')), "4 hexadecimal digits too many");
    EXPECT_EQ(asciiHint(std::string(14, 'a')), "1 character too many");
}

TEST(WepKeyHint, CountsInvalidHexadecimalDigits)
{
    EXPECT_EQ(hexadecimalHint("12g"), "3 of 10 hexadecimal digits; one is not a digit");
    EXPECT_EQ(
        hexadecimalHint("zzzzzzzzzz"), "10 of 26 hexadecimal digits, complete as a 40-bit key; 10 are not digits");
    EXPECT_EQ(asciiHint("zzz"), "3 of 5 characters");
}

TEST(PresharedKeyHint, StatesTheLengthsOfAnEmptyKey)
{
    EXPECT_EQ(wpaHint(""), "8 to 63 characters, or 64 hexadecimal digits");
}

TEST(PresharedKeyHint, CountsTheCharactersOfAPassphrase)
{
    EXPECT_EQ(wpaHint("a"), "1 of at least 8 characters");
    EXPECT_EQ(wpaHint("1234567"), "7 of at least 8 characters");
    EXPECT_EQ(wpaHint("12345678"), "8 characters, a passphrase");
    EXPECT_EQ(wpaHint(std::string(63, 'x')), "63 characters, a passphrase");
}

TEST(PresharedKeyHint, ReportsCharactersThatAPassphraseCannotContain)
{
    constexpr const char* hint = "Only unaccented letters, digits, blanks and ASCII signs can be used";
    EXPECT_EQ(wpaHint("caf\xC3\xA9"), hint);
    EXPECT_EQ(wpaHint("pass\tword"), hint);
}

TEST(PresharedKeyHint, TreatsSixtyFourCharactersAsDigits)
{
    EXPECT_EQ(wpaHint(std::string(64, 'a')), "64 hexadecimal digits");
    EXPECT_EQ(wpaHint(std::string(63, 'a') + "x"), "64 hexadecimal digits; one is not a digit");
}

TEST(PresharedKeyHint, ReportsATextThatIsTooLong)
{
    EXPECT_EQ(wpaHint(std::string(65, 'a')), "65 characters, at most 63 or 64 hexadecimal digits");
}

TEST(PresharedKeyHint, SendsAKeyOf64DigitsToAProfile)
{
    const auto hint = [](std::string_view text) { return presharedKeyHint(text, KeyUse::Connection).toStdString(); };
    EXPECT_EQ(hint(""), "8 to 63 characters");
    EXPECT_EQ(hint("password"), "8 characters, a passphrase");
    EXPECT_EQ(hint(std::string(64, 'a')), "A key of 64 digits needs a profile: use Add Profile");
    EXPECT_EQ(hint(std::string(65, 'a')), "65 characters, at most 63");
}

} // namespace
