#include "platform/NetworkName.h"

#include <QChar>

#include <algorithm>
#include <cstdint>

namespace {

constexpr char32_t rawByteBase = 0xEF00; // + the byte
constexpr char32_t rawByteLast = 0xEFFF;
constexpr char32_t byteOrderMark = 0xFEFF; // swallowed by decoders at the head of a text

struct DecodedCharacter {
    char32_t character { 0 };
    qsizetype length { 0 }; // bytes; 0 when they are not well-formed
};

std::uint8_t byteAt(QByteArrayView bytes, qsizetype index)
{
    return static_cast<std::uint8_t>(bytes[index]);
}

// The length of a sequence by its first byte, 0 for one that starts none.
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

// The first character of bytes, which are not empty. Well-formed is what Unicode calls so: shortest form, no
// surrogates, nothing above U+10FFFF.
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
    constexpr char32_t leastOfLength[] = { 0, 0, 0x80, 0x800, 0x10000 };
    if (character < leastOfLength[length] || QChar::isSurrogate(character) || character > QChar::LastValidCodePoint)
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

// U+2028, U+2029 and what turns the direction of the text around it (Unicode's Bidi_Control).
bool changesLayout(char32_t character)
{
    return isBetween(character, 0x2028, 0x202E) || isBetween(character, 0x2066, 0x2069)
        || isBetween(character, 0x200E, 0x200F) || character == 0x061C;
}

bool showsAsItself(char32_t character)
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
        // Of bytes that are not well-formed only the first is taken: a character may begin at the next.
        const qsizetype length = std::max<qsizetype>(decoded.length, 1);
        if (decoded.length != 0 && showsAsItself(decoded.character))
            appendCharacter(text, decoded.character);
        else
            appendRawBytes(text, bytes.first(length));
        bytes = bytes.sliced(length);
    }
    return text;
}

QString textFromBytes(std::span<const std::byte> bytes)
{
    return textFromBytes(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

QString textUpToZero(std::span<const std::byte> bytes)
{
    const auto zero = std::find(bytes.begin(), bytes.end(), std::byte { 0 });
    return textFromBytes(bytes.first(static_cast<std::size_t>(zero - bytes.begin())));
}

QString shownText(const QString& text)
{
    QString shown = text;
    for (QChar& character : shown) {
        if (character.category() == QChar::Other_PrivateUse)
            character = QChar::ReplacementCharacter;
    }
    return shown;
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
