#include "platform/ByteText.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

QString raw(std::initializer_list<int> bytes)
{
    QString text;
    for (const int byte : bytes)
        text += QChar(static_cast<char16_t>(0xEF00 + byte));
    return text;
}

QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray result;
    for (const int value : values)
        result += static_cast<char>(value);
    return result;
}

QString utf8(const char8_t* text)
{
    return QString::fromUtf8(text);
}

QByteArray utf8Of(char32_t character)
{
    return QStringView(QChar::fromUcs4(character)).toUtf8();
}

QString throughXml(const QString& text)
{
    QByteArray document;
    QXmlStreamWriter writer(&document);
    writer.writeStartDocument();
    writer.writeTextElement(QStringLiteral("string"), text);
    writer.writeEndDocument();
    EXPECT_FALSE(writer.hasError());
    QXmlStreamReader reader(document);
    EXPECT_TRUE(reader.readNextStartElement());
    QString result = reader.readElementText();
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return result;
}

// Random bytes, some of which are well-formed or truncated UTF-8 of unusual characters.
QByteArray randomName(std::mt19937& random)
{
    static constexpr std::array<char32_t, 24> oddCharacters { 0x00, 0x09, 0x0A, 0x0D, 0x1F, 0x26, 0x3C, 0x7F, 0x85,
        0x9F, 0xE9, 0x61C, 0x200E, 0x2028, 0x202E, 0x2069, 0xEF00, 0xEF7F, 0xEFFF, 0xFEFF, 0xFFFD, 0xFFFE, 0x1F600,
        0x10FFFF };
    QByteArray name;
    const int pieces = static_cast<int>(random() % 20);
    for (int piece = 0; piece < pieces; ++piece) {
        switch (random() % 4) {
        case 0:
            name += utf8Of(oddCharacters[random() % oddCharacters.size()]);
            break;
        case 1:
            name += utf8Of(oddCharacters[random() % oddCharacters.size()]).chopped(1);
            break;
        default:
            name += static_cast<char>(random() % 256);
        }
    }
    return name;
}

TEST(ByteText, MapsWellFormedUtf8ToItself)
{
    for (const char8_t* const text : { u8"", u8"home", u8"Caf\u00E9 <&>\" '", u8"  spaces ", u8"\u65E5\u672C\u8A9E",
             u8"\u00A0\uFFFD\uFDD0", u8"\uEEFF\uF000", u8"\U0001F600 net", u8"\U0010FFFF" }) {
        const QByteArray name(reinterpret_cast<const char*>(text));
        EXPECT_EQ(textFromBytes(name), utf8(text)) << name.toStdString();
        EXPECT_EQ(bytesFromText(utf8(text)), name);
    }
}

TEST(ByteText, MapsEachMalformedByteToAPrivateUseCharacter)
{
    const std::vector<std::pair<QByteArray, QString>> cases {
        { bytes({ 0xFF }), raw({ 0xFF }) }, { bytes({ 0x80 }), raw({ 0x80 }) },
        { bytes({ 'a', 0xE9, 'b' }), u"a"_qs + raw({ 0xE9 }) + u"b"_qs }, // Latin-1
        { bytes({ 0xC0, 0x80 }), raw({ 0xC0, 0x80 }) }, // overlong zero
        { bytes({ 0xC1, 0xBF }), raw({ 0xC1, 0xBF }) },
        { bytes({ 0xE0, 0x9F, 0xBF }), raw({ 0xE0, 0x9F, 0xBF }) }, // overlong U+07FF
        { bytes({ 0xF0, 0x8F, 0xBF, 0xBF }), raw({ 0xF0, 0x8F, 0xBF, 0xBF }) }, // overlong U+FFFF
        { bytes({ 0xED, 0xA0, 0x80 }), raw({ 0xED, 0xA0, 0x80 }) }, // surrogates
        { bytes({ 0xED, 0xBF, 0xBF }), raw({ 0xED, 0xBF, 0xBF }) },
        { bytes({ 0xF4, 0x90, 0x80, 0x80 }), raw({ 0xF4, 0x90, 0x80, 0x80 }) }, // U+110000
        { bytes({ 0xF5, 0x80, 0x80, 0x80 }), raw({ 0xF5, 0x80, 0x80, 0x80 }) },
        { bytes({ 0xE2, 0x82 }), raw({ 0xE2, 0x82 }) }, // truncated
        { bytes({ 0xE2, 0x82, 'x' }), raw({ 0xE2, 0x82 }) + u"x"_qs },
        { bytes({ 0xE2, 0xC3, 0xA9 }), raw({ 0xE2 }) + QChar(0xE9) }, // a character inside a malformed sequence
    };
    for (const auto& [name, text] : cases) {
        EXPECT_EQ(textFromBytes(name), text) << name.toHex().toStdString();
        EXPECT_EQ(bytesFromText(text), name) << name.toHex().toStdString();
    }
}

TEST(ByteText, MapsUndisplayableCharactersToPrivateUseCharacters)
{
    std::vector<char32_t> characters { 0x7F, 0x061C, 0x200E, 0x200F, 0x2028, 0x2029, 0x202A, 0x202E, 0x2066, 0x2069,
        0xEF00, 0xEF41, 0xEFFF, 0xFEFF, 0xFFFE, 0xFFFF };
    for (char32_t control = 0; control < 0x20; ++control)
        characters.push_back(control);
    for (char32_t control = 0x80; control < 0xA0; ++control)
        characters.push_back(control);
    for (const char32_t character : characters) {
        const QByteArray name = utf8Of(character);
        QString expected;
        for (const char byte : name)
            expected += raw({ static_cast<unsigned char>(byte) });
        EXPECT_EQ(textFromBytes(name), expected) << std::hex << static_cast<unsigned>(character);
        EXPECT_EQ(bytesFromText(expected), name);
    }
}

TEST(ByteText, DoesNotMapTheNeighboursOfUndisplayableCharacters)
{
    for (const char32_t character :
        { 0x20, 0x7E, 0xA0, 0x061B, 0x061D, 0x200D, 0x2010, 0x2027, 0x202F, 0x2065, 0x206A, 0xEEFF, 0xF000, 0xFFFD }) {
        const QByteArray name = utf8Of(character);
        EXPECT_EQ(textFromBytes(name), QString::fromUcs4(&character, 1))
            << std::hex << static_cast<unsigned>(character);
    }
}

TEST(ByteText, RestoresRandomBytesFromTextAndXml)
{
    std::mt19937 random(20240229);
    std::map<QString, QByteArray> namesByText;
    for (int round = 0; round < 20000; ++round) {
        const QByteArray name = randomName(random);
        const QString text = textFromBytes(name);
        ASSERT_TRUE(text.isValidUtf16());
        ASSERT_EQ(bytesFromText(text), name) << name.toHex().toStdString();
        ASSERT_EQ(bytesFromText(throughXml(text)), name) << name.toHex().toStdString();
        ASSERT_EQ(namesByText.try_emplace(text, name).first->second, name);
    }
}

TEST(ByteText, EverySingleCharacterSurvivesXml)
{
    QString all;
    for (char32_t character = 0; character < 0x11000; ++character) {
        if (!QChar::isSurrogate(character))
            all += textFromBytes(utf8Of(character));
    }
    EXPECT_EQ(throughXml(all), all);
}

TEST(ByteText, ConvertsTypedTextAsUtf8)
{
    EXPECT_EQ(bytesFromText(u"tab\there"), QByteArray("tab\there"));
    EXPECT_EQ(bytesFromText(QStringView()), QByteArray());
    const char16_t unpaired[] { u'a', 0xD800, u'b', 0xDC00 };
    EXPECT_EQ(bytesFromText(QStringView(unpaired, 4)), QByteArray("a?b?"));
}

TEST(ByteText, DisplaysAReplacementForEachUnmappableByte)
{
    EXPECT_EQ(displayText(u"café 中 😀"_qs), u"café 中 😀"_qs);
    EXPECT_EQ(displayText(textFromBytes(bytes({ 'a', 0xFF, 'b', '\n' }))), u"a�b�"_qs);
    EXPECT_EQ(displayText(u"Connected to "_qs + raw({ 0x80 }) + u"."_qs), u"Connected to �."_qs);
    EXPECT_EQ(displayText(QString()), QString());
}

TEST(ByteText, AZeroByteDoesNotEndTheText)
{
    EXPECT_EQ(textFromBytes(bytes({ 'a', 0, 'c' })), u"a"_qs + raw({ 0 }) + u"c"_qs);
}

} // namespace
