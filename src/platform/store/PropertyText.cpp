#include "platform/store/PropertyText.h"

#include <QChar>

#include <optional>

namespace {

constexpr char16_t escapeUnit = 0xEEFF;
constexpr qsizetype escapeDigits = 4;

bool isPlainUnit(char16_t unit)
{
    if (unit < 0x20)
        return unit == u'\t' || unit == u'\n' || unit == u'\r';
    return unit != escapeUnit && unit < 0xFFFE;
}

int digitValue(QChar digit)
{
    if (digit >= u'0' && digit <= u'9')
        return digit.unicode() - u'0';
    if (digit >= u'A' && digit <= u'F')
        return digit.unicode() - u'A' + 10;
    return -1;
}

QString escapedUnit(char16_t unit)
{
    return QChar(escapeUnit) + QStringLiteral("%1").arg(uint { unit }, escapeDigits, 16, QLatin1Char('0')).toUpper();
}

std::optional<char16_t> unescapedUnit(QStringView digits)
{
    if (digits.size() < escapeDigits)
        return std::nullopt;
    int unit = 0;
    for (const QChar digit : digits.first(escapeDigits)) {
        const int value = digitValue(digit);
        if (value < 0)
            return std::nullopt;
        unit = unit * 16 + value;
    }
    return static_cast<char16_t>(unit);
}

} // namespace

QString escapeForXml(const QString& text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text[i];
        if (unit.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            result += unit;
            result += text[++i];
        } else if (unit.isSurrogate() || !isPlainUnit(unit.unicode())) {
            result += escapedUnit(unit.unicode());
        } else {
            result += unit;
        }
    }
    return result;
}

QString unescapeFromXml(const QString& escaped)
{
    QString result;
    result.reserve(escaped.size());
    for (qsizetype i = 0; i < escaped.size(); ++i) {
        const auto unit
            = escaped[i] == QChar(escapeUnit) ? unescapedUnit(QStringView(escaped).sliced(i + 1)) : std::nullopt;
        result += unit ? QChar(*unit) : escaped[i];
        i += unit ? escapeDigits : 0;
    }
    return result;
}
