#include "platform/ByteText.h"

#include <QChar>

#include <algorithm>
#include <cstdint>

namespace {

constexpr char32_t rawByteBase = 0xEF00; // + the byte
constexpr char32_t rawByteLast = 0xEFFF;
constexpr char32_t byteOrderMark = 0xFEFF; // decoders drop it at the start of a text

struct DecodedCharacter {
    char32_t character { 0 };
    qsizetype length { 0 }; // bytes; 0 if malformed
};

std::uint8_t byteAt(QByteArrayView bytes, qsizetype index)
{
    return static_cast<std::uint8_t>(bytes[index]);
}

// The length of the UTF-8 sequence that starts with this byte; 0 if no sequence starts with it.
qsizetype sequenceLength(std::uint8_t first)
{
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first < 0xE0)
        return 2;
    if (first >= 0xE0 && first < 0xF0)
        return 3;
    if (first >= 0xF0 && first < 0xF5)
        return 4;
    return 0;
}

// The first character of non-empty bytes. Well-formed as Unicode defines it: shortest form, no surrogates, nothing
// above U+10FFFF.
DecodedCharacter decodeFirst(QByteArrayView bytes)
{
    const std::uint8_t first = byteAt(bytes, 0);
    const qsizetype length = sequenceLength(first);
    if (length == 0 || length > bytes.size())
        return {};
    if (length == 1)
        return { first, 1 };
    char32_t character = first & (0x7FU >> length);
    for (qsizetype i = 1; i < length; ++i) {
        const std::uint8_t next = byteAt(bytes, i);
        if ((next & 0xC0U) != 0x80)
            return {};
        character = (character << 6) | (next & 0x3FU);
    }
    constexpr char32_t minOfLength[] = { 0, 0, 0x80, 0x800, 0x10000 };
    if (character < minOfLength[length] || QChar::isSurrogate(character) || character > QChar::LastValidCodePoint)
        return {};
    return { character, length };
}

bool isBetween(char32_t character, char32_t first, char32_t last)
{
    return character >= first && character <= last;
}

bool isControl(char32_t character)
{
    return character < 0x20 || isBetween(character, 0x7F, 0x9F);
}

// Line and paragraph separators, and the characters that change the direction of the text around them (Unicode's
// Bidi_Control).
bool changesLayout(char32_t character)
{
    return isBetween(character, 0x2028, 0x202E) || isBetween(character, 0x2066, 0x2069)
        || isBetween(character, 0x200E, 0x200F) || character == 0x061C;
}

bool isDisplayable(char32_t character)
{
    return !isControl(character) && !changesLayout(character) && !isBetween(character, rawByteBase, rawByteLast)
        && character != byteOrderMark && character != 0xFFFE && character != 0xFFFF;
}

void appendRawBytes(QString& text, QByteArrayView bytes)
{
    for (qsizetype i = 0; i < bytes.size(); ++i)
        text += QChar(static_cast<char16_t>(rawByteBase + byteAt(bytes, i)));
}

void appendCharacter(QString& text, char32_t character)
{
    if (QChar::requiresSurrogates(character)) {
        text += QChar(QChar::highSurrogate(character));
        text += QChar(QChar::lowSurrogate(character));
    } else {
        text += QChar(static_cast<char16_t>(character));
    }
}

} // namespace

QString textFromBytes(QByteArrayView bytes)
{
    QString text;
    text.reserve(bytes.size());
    while (!bytes.isEmpty()) {
        const DecodedCharacter decoded = decodeFirst(bytes);
        // Only the first byte of a malformed sequence is consumed: the next byte may start a character.
        const qsizetype length = std::max<qsizetype>(decoded.length, 1);
        if (decoded.length != 0 && isDisplayable(decoded.character))
            appendCharacter(text, decoded.character);
        else
            appendRawBytes(text, bytes.first(length));
        bytes = bytes.sliced(length);
    }
    return text;
}

QString displayText(const QString& text)
{
    QString result = text;
    for (QChar& character : result) {
        if (character.category() == QChar::Other_PrivateUse)
            character = QChar::ReplacementCharacter;
    }
    return result;
}

QByteArray bytesFromText(QStringView text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    qsizetype index = 0;
    while (index < text.size()) {
        const char16_t unit = text[index].unicode();
        if (isBetween(unit, rawByteBase, rawByteLast)) {
            bytes += static_cast<char>(unit - rawByteBase);
            ++index;
            continue;
        }
        const qsizetype begin = index;
        do {
            ++index;
        } while (index < text.size() && !isBetween(text[index].unicode(), rawByteBase, rawByteLast));
        bytes += text.sliced(begin, index - begin).toUtf8();
    }
    return bytes;
}
