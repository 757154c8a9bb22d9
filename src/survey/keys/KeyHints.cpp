#include "survey/keys/KeyHints.h"

#include "crypto/HexDigits.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstddef>
#include <optional>

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("KeyHints", text);
}

struct Format {
    QString singular; // the unit of a key's length
    QString plural;
    std::size_t shortLength; // of a 40-bit key
    std::size_t longLength; // of a 104-bit key
};

std::optional<Format> formatAt(int formatIndex)
{
    if (formatIndex == 0)
        return Format { tr("hexadecimal digit"), tr("hexadecimal digits"), 10, 26 };
    if (formatIndex == 1)
        return Format { tr("character"), tr("characters"), 5, 13 };
    return std::nullopt;
}

std::size_t countInvalidDigits(std::string_view text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char character) { return BtoH(character) == 0xFF; }));
}

QString withInvalidDigits(const QString& hint, std::size_t invalid)
{
    if (invalid == 0)
        return hint;
    return invalid == 1 ? tr("%1; one is not a digit").arg(hint) : tr("%1; %2 are not digits").arg(hint).arg(invalid);
}

QString lengthHint(const Format& format, std::size_t length)
{
    if (length == 0)
        return tr("%1 or %2 %3").arg(format.shortLength).arg(format.longLength).arg(format.plural);
    if (length == format.longLength)
        return tr("%1 %2, a 104-bit key").arg(length).arg(format.plural);
    if (length > format.longLength) {
        const std::size_t excess = length - format.longLength;
        return tr("%1 %2 too many").arg(excess).arg(excess == 1 ? format.singular : format.plural);
    }
    const std::size_t goal = length < format.shortLength ? format.shortLength : format.longLength;
    const QString missing = tr("%1 of %2 %3").arg(length).arg(goal).arg(format.plural);
    return length == format.shortLength ? missing + tr(", complete as a 40-bit key") : missing;
}

// The derivation of a key refuses control characters and non-ASCII characters.
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
        return tr("Only unaccented letters, digits, blanks and ASCII signs can be used");
    if (text.size() < minPassphraseLength)
        return tr("%1 of at least %2 characters").arg(text.size()).arg(minPassphraseLength);
    return tr("%1 characters, a passphrase").arg(text.size());
}

} // namespace

QString wepKeyHint(const WepKeyControls& key, bool selected)
{
    const std::string_view text = key.text.view();
    const std::optional<Format> format = formatAt(key.formatIndex);
    if (!format || (text.empty() && !selected))
        return {};
    const QString hint = lengthHint(*format, text.size());
    return withInvalidDigits(hint, key.formatIndex == 0 ? countInvalidDigits(text) : 0);
}

QString presharedKeyHint(std::string_view text, KeyUse use)
{
    const bool acceptsDigits = use == KeyUse::Profile;
    if (text.empty() && !acceptsDigits)
        return tr("8 to 63 characters");
    if (text.empty())
        return tr("8 to 63 characters, or 64 hexadecimal digits");
    if (text.size() <= maxPassphraseLength)
        return passphraseHint(text);
    if (!acceptsDigits && text.size() == presharedKeyDigits)
        return tr("A key of 64 digits needs a profile: use Add Profile");
    if (!acceptsDigits)
        return tr("%1 characters, at most 63").arg(text.size());
    if (text.size() > presharedKeyDigits)
        return tr("%1 characters, at most 63 or 64 hexadecimal digits").arg(text.size());
    return withInvalidDigits(tr("64 hexadecimal digits"), countInvalidDigits(text));
}
