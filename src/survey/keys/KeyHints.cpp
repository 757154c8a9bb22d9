#include "survey/keys/KeyHints.h"

#include "crypto/HexDigits.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace {

constexpr std::size_t shortestPassphrase = 8; // characters
constexpr std::size_t longestPassphrase = 63;
constexpr std::size_t presharedKeyDigits = 64;

// What the key of a format is made of, and how much of it a key takes.
struct Format {
    QString one;
    QString many;
    std::size_t shortLength; // of a 40-bit key
    std::size_t longLength; // of a 104-bit key
};

std::optional<Format> formatAt(int formatIndex)
{
    if (formatIndex == 0)
        return Format { QStringLiteral("hexadecimal digit"), QStringLiteral("hexadecimal digits"), 10, 26 };
    if (formatIndex == 1)
        return Format { QStringLiteral("character"), QStringLiteral("characters"), 5, 13 };
    return std::nullopt;
}

std::size_t strangersAmongDigits(std::string_view text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char character) { return BtoH(character) == 0xFF; }));
}

QString withStrangers(const QString& hint, std::size_t strangers)
{
    if (strangers == 0)
        return hint;
    return strangers == 1 ? QStringLiteral("%1; one is not a digit").arg(hint)
                          : QStringLiteral("%1; %2 are not digits").arg(hint).arg(strangers);
}

QString lengthHint(const Format& format, std::size_t length)
{
    if (length == 0)
        return QStringLiteral("%1 or %2 %3").arg(format.shortLength).arg(format.longLength).arg(format.many);
    if (length == format.longLength)
        return QStringLiteral("%1 %2, a 104-bit key").arg(length).arg(format.many);
    if (length > format.longLength) {
        const std::size_t excess = length - format.longLength;
        return QStringLiteral("%1 %2 too many").arg(excess).arg(excess == 1 ? format.one : format.many);
    }
    const std::size_t goal = length < format.shortLength ? format.shortLength : format.longLength;
    const QString missing = QStringLiteral("%1 of %2 %3").arg(length).arg(goal).arg(format.many);
    return length == format.shortLength ? missing + QStringLiteral(", complete as a 40-bit key") : missing;
}

// What the derivation of a key can take: no control characters, nothing beyond ASCII.
bool isHashable(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char character) {
        const auto code = static_cast<unsigned char>(character);
        return code >= 32 && code < 128;
    });
}

QString passphraseHint(std::string_view text)
{
    if (!isHashable(text))
        return QStringLiteral("Only unaccented letters, digits, blanks and ASCII signs can be used");
    if (text.size() < shortestPassphrase)
        return QStringLiteral("%1 of at least %2 characters").arg(text.size()).arg(shortestPassphrase);
    return QStringLiteral("%1 characters, a passphrase").arg(text.size());
}

} // namespace

QString wepKeyHint(const WepKeyControls& key, bool selected)
{
    const std::string_view text = key.text;
    const std::optional<Format> format = formatAt(key.formatIndex);
    if (!format || (text.empty() && !selected))
        return {};
    const QString hint = lengthHint(*format, text.size());
    return withStrangers(hint, key.formatIndex == 0 ? strangersAmongDigits(text) : 0);
}

QString presharedKeyHint(std::string_view text)
{
    if (text.empty())
        return QStringLiteral("8 to 63 characters, or 64 hexadecimal digits");
    if (text.size() <= longestPassphrase)
        return passphraseHint(text);
    if (text.size() > presharedKeyDigits)
        return QStringLiteral("%1 characters, at most 63 or 64 hexadecimal digits").arg(text.size());
    return withStrangers(QStringLiteral("64 hexadecimal digits"), strangersAmongDigits(text));
}
