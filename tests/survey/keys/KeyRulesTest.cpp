#include "survey/keys/KeyRules.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

constexpr int openIndex = 0;
constexpr int sharedIndex = 1;
constexpr int wpaIndex = 2;
constexpr int noneIndex = 0;
constexpr int wepIndex = 1;
constexpr int hexadecimalIndex = 0;
constexpr int asciiIndex = 1;
constexpr int noFormatIndex = -1;

const char* const hexadecimalMessages[] = {
    "Invalid WEP key 1 length. WEP should be 10 or 26 hexadecimal digits.",
    "Invalid WEP key 2 length. WEP should be 10 or 26 hexadecimal digits.",
    "Invalid WEP key 3 length. WEP should be 10 or 26 hexadecimal digits.",
    "Invalid WEP key 4 length. WEP should be 10 or 26 hexadecimal digits.",
};
const char* const asciiMessages[] = {
    "Invalid WEP key 1 length. WEP should be 5 or 13 ASCII characters.",
    "Invalid WEP key 2 length. WEP should be 5 or 13 ASCII characters.",
    "Invalid WEP key 3 length. WEP should be 5 or 13 ASCII characters.",
    "Invalid WEP key 4 length. WEP should be 5 or 13 ASCII characters.",
};
constexpr const char* tooShort = "Invalid WPA Pre-Shared key. WPA-PSK used field should use more 8 characters.";
constexpr const char* notHexadecimal
    = "Invalid WPA Pre-Shared key. WPA-PSK used field should use more 64 hexadecimal digital.";

constexpr const char* accepted = "accepted";

// The refusal's text, or "accepted".
std::string verdict(const KeyControls& controls)
{
    return keyRefusal(controls).value_or(QLatin1String(accepted)).toStdString();
}

KeyControls wepControls(int selected)
{
    KeyControls controls;
    controls.encryTypeIndex = wepIndex;
    controls.wepKeys[static_cast<std::size_t>(selected)].radioOn = true;
    return controls;
}

std::string presharedKeyVerdict(const std::string& text)
{
    KeyControls controls;
    controls.authenTypeIndex = wpaIndex;
    controls.WPAPSK = text;
    return verdict(controls);
}

TEST(KeyRules, ConvertATypedTextToBytes)
{
    EXPECT_EQ(keyBytesOf(QString()), "");
    EXPECT_EQ(keyBytesOf(u"caf\u00E9"_qs), "caf\xC3\xA9");
    EXPECT_EQ(keyBytesOf(u"caf\uEFE9"_qs), "caf\xE9");
}

TEST(KeyRules, ConvertEachRow)
{
    const auto keys
        = wepKeyControlsOf(std::array<WepKeyRow, 4> { WepKeyRow { asciiIndex, u"abcde"_qs, false }, WepKeyRow {},
            WepKeyRow { noFormatIndex, u"\uEFFFz"_qs, true }, WepKeyRow { hexadecimalIndex, u"01"_qs, true } });
    EXPECT_EQ(keys[0].formatIndex, asciiIndex);
    EXPECT_EQ(keys[0].text, "abcde");
    EXPECT_FALSE(keys[0].radioOn);
    EXPECT_EQ(keys[1].text, "");
    EXPECT_EQ(keys[2].formatIndex, noFormatIndex);
    EXPECT_EQ(keys[2].text, "\xFFz");
    EXPECT_TRUE(keys[2].radioOn);
    EXPECT_EQ(keys[3].formatIndex, hexadecimalIndex);
    EXPECT_EQ(keys[3].text, "01");
    EXPECT_EQ(selectedKeyIndex(keys), 2);
}

TEST(KeyRules, DoNotCheckKeysWithoutEncryption)
{
    KeyControls controls;
    for (WepKeyControls& key : controls.wepKeys)
        key.text = "abc";
    EXPECT_EQ(verdict(controls), accepted);
    controls.encryTypeIndex = -1;
    EXPECT_EQ(verdict(controls), accepted);
}

TEST(KeyRules, CheckKeysForSharedAuthenticationEvenWithoutEncryption)
{
    KeyControls controls;
    controls.authenTypeIndex = sharedIndex;
    controls.encryTypeIndex = noneIndex;
    EXPECT_EQ(verdict(controls), hexadecimalMessages[0]);
}

TEST(KeyRules, CheckKeysForWepWithoutASelectedAuthentication)
{
    KeyControls controls;
    controls.authenTypeIndex = -1;
    controls.encryTypeIndex = wepIndex;
    EXPECT_EQ(verdict(controls), hexadecimalMessages[0]);
}

TEST(KeyRules, AcceptASelectedKeyAmongEmptyOnes)
{
    KeyControls controls = wepControls(1);
    controls.wepKeys[1].text = "0123456789";
    EXPECT_EQ(verdict(controls), accepted);
}

TEST(KeyRules, RefuseAnEmptySelectedKeyOfEitherFormat)
{
    for (int selected = 0; selected < 4; ++selected) {
        KeyControls controls = wepControls(selected);
        EXPECT_EQ(verdict(controls), hexadecimalMessages[selected]);
        controls.wepKeys[static_cast<std::size_t>(selected)].formatIndex = asciiIndex;
        EXPECT_EQ(verdict(controls), asciiMessages[selected]);
    }
}

TEST(KeyRules, AcceptOnlyTheTwoLengthsOfEachFormat)
{
    for (std::size_t length = 1; length < 40; ++length) {
        KeyControls controls = wepControls(0);
        controls.wepKeys[0].text = std::string(length, 'a');
        EXPECT_EQ(verdict(controls), length == 10 || length == 26 ? accepted : hexadecimalMessages[0]) << length;
        controls.wepKeys[0].formatIndex = asciiIndex;
        EXPECT_EQ(verdict(controls), length == 5 || length == 13 ? accepted : asciiMessages[0]) << length;
    }
}

TEST(KeyRules, RefuseAnInvalidKeyThatIsNotSelected)
{
    KeyControls controls = wepControls(0);
    controls.authenTypeIndex = sharedIndex;
    controls.wepKeys[0] = { asciiIndex, "hello", true };
    controls.wepKeys[2] = { hexadecimalIndex, "12345", false };
    EXPECT_EQ(verdict(controls), hexadecimalMessages[2]);
    controls.wepKeys[3] = { asciiIndex, "1234", false };
    EXPECT_EQ(verdict(controls), hexadecimalMessages[2]);
    controls.wepKeys[2].text = {};
    EXPECT_EQ(verdict(controls), asciiMessages[3]);
}

TEST(KeyRules, ReportTheSelectedKeyBeforeAnEarlierInvalidOne)
{
    KeyControls controls = wepControls(3);
    controls.wepKeys[0].text = "123";
    EXPECT_EQ(verdict(controls), hexadecimalMessages[3]);
    controls.wepKeys[3].text = "0123456789";
    EXPECT_EQ(verdict(controls), hexadecimalMessages[0]);
}

TEST(KeyRules, CheckOnlyTheLengthOfHexadecimalKeys)
{
    KeyControls controls = wepControls(0);
    controls.wepKeys[0].text = "zzzzzzzzzz";
    EXPECT_EQ(verdict(controls), accepted);
}

TEST(KeyRules, DoNotCheckAKeyWithoutAFormat)
{
    KeyControls controls = wepControls(0);
    controls.wepKeys[0].formatIndex = noFormatIndex;
    EXPECT_EQ(verdict(controls), accepted);
    controls.wepKeys[0].text = "123";
    EXPECT_EQ(verdict(controls), accepted);
}

TEST(KeyRules, CountTheBytesBeforeAZeroByte)
{
    KeyControls controls = wepControls(0);
    controls.wepKeys[0].text = std::string("0123456789\0more", 15);
    EXPECT_EQ(verdict(controls), accepted);
}

TEST(KeyRules, SelectTheFirstRadioThatIsOnOrElseTheFirstKey)
{
    std::array<WepKeyControls, 4> keys;
    EXPECT_EQ(selectedKeyIndex(keys), 0);
    keys[3].radioOn = true;
    EXPECT_EQ(selectedKeyIndex(keys), 3);
    keys[1].radioOn = true;
    EXPECT_EQ(selectedKeyIndex(keys), 1);
    keys[0].radioOn = true;
    EXPECT_EQ(selectedKeyIndex(keys), 0);
}

TEST(KeyRules, RefuseAPresharedKeyOfFewerThan8Characters)
{
    EXPECT_EQ(presharedKeyVerdict(""), tooShort);
    EXPECT_EQ(presharedKeyVerdict("1234567"), tooShort);
    EXPECT_EQ(presharedKeyVerdict("12345678"), accepted);
}

TEST(KeyRules, AcceptAnyLongerPresharedKeyExcept64Characters)
{
    EXPECT_EQ(presharedKeyVerdict(std::string(63, 'x')), accepted);
    EXPECT_EQ(presharedKeyVerdict(std::string(65, 'x')), accepted);
    EXPECT_EQ(presharedKeyVerdict(std::string(1000, 'x')), accepted);
}

TEST(KeyRules, Require64CharactersToBeHexadecimalDigitsOfEitherCase)
{
    std::string text;
    for (int i = 0; i < 4; ++i)
        text += "0123456789abcdef";
    EXPECT_EQ(presharedKeyVerdict(text), accepted);
    EXPECT_EQ(presharedKeyVerdict(std::string(64, 'F')), accepted);
    for (const std::size_t position : { 0U, 31U, 63U }) {
        std::string wrong = text;
        wrong[position] = 'g';
        EXPECT_EQ(presharedKeyVerdict(wrong), notHexadecimal) << position;
    }
}

TEST(KeyRules, DoNotCheckWepKeysForWpa)
{
    KeyControls controls = wepControls(0);
    controls.authenTypeIndex = wpaIndex;
    controls.WPAPSK = "password";
    controls.wepKeys[0].text = "123";
    EXPECT_EQ(verdict(controls), accepted);
}

TEST(KeyRules, UseWepKeysForSharedAndForOpenWithWep)
{
    EXPECT_FALSE(usesWepKeys(openIndex, noneIndex));
    EXPECT_TRUE(usesWepKeys(openIndex, wepIndex));
    EXPECT_TRUE(usesWepKeys(sharedIndex, noneIndex));
    EXPECT_TRUE(usesWepKeys(sharedIndex, wepIndex));
    EXPECT_FALSE(usesWepKeys(wpaIndex, noneIndex));
    EXPECT_FALSE(usesWepKeys(wpaIndex, wepIndex));
}

WepKey keyOf(const std::vector<std::uint8_t>& bytes)
{
    WepKey key;
    key.length = static_cast<std::uint8_t>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), key.material.begin());
    return key;
}

TEST(WepKeyOf, ConvertsHexadecimalDigits)
{
    EXPECT_EQ(wepKeyOf(hexadecimalIndex, "0aFf998877"), keyOf({ 0x0A, 0xFF, 0x99, 0x88, 0x77 }));
    EXPECT_EQ(wepKeyOf(hexadecimalIndex, "00112233445566778899AABBCC"),
        keyOf({ 0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88, 0x99, 0xAA, 0xBB, 0xCC }));
}

TEST(WepKeyOf, ConvertsInvalidDigitsWithoutAnError)
{
    EXPECT_EQ(wepKeyOf(hexadecimalIndex, "zzzzzzzzzz"), keyOf({ 0xEF, 0xEF, 0xEF, 0xEF, 0xEF }));
}

TEST(WepKeyOf, CopiesCharactersForEveryOtherFormat)
{
    EXPECT_EQ(wepKeyOf(asciiIndex, "hello"), keyOf({ 'h', 'e', 'l', 'l', 'o' }));
    EXPECT_EQ(wepKeyOf(noFormatIndex, "hello"), keyOf({ 'h', 'e', 'l', 'l', 'o' }));
    EXPECT_EQ(wepKeyOf(asciiIndex, "thirteen char"),
        keyOf({ 't', 'h', 'i', 'r', 't', 'e', 'e', 'n', ' ', 'c', 'h', 'a', 'r' }));
}

TEST(WepKeyOf, EmptyTextGivesNoKey)
{
    EXPECT_EQ(wepKeyOf(hexadecimalIndex, ""), WepKey());
    EXPECT_EQ(wepKeyOf(asciiIndex, ""), WepKey());
}

TEST(WepKeyOf, DropsAnOddDigit)
{
    EXPECT_EQ(wepKeyOf(hexadecimalIndex, "abc"), keyOf({ 0xAB }));
    EXPECT_EQ(wepKeyOf(hexadecimalIndex, "a"), WepKey());
}

TEST(WepKeyOf, TruncatesALongTextAndKeepsTheTerminatingZero)
{
    for (const int format : { hexadecimalIndex, asciiIndex, noFormatIndex })
        for (const std::size_t length : { 14U, 27U, 28U, 255U, 256U, 600U }) {
            const WepKey key = wepKeyOf(format, std::string(length, 'f'));
            EXPECT_EQ(key.length, format == hexadecimalIndex ? std::min<std::size_t>(length / 2, 13) : 13U);
            EXPECT_EQ(key.material[13], 0);
        }
}

} // namespace
