#include "platform/store/PropertyList.h"
#include "platform/store/PropertyText.h"

#include <QLatin1String>
#include <QSet>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// The XML reader compares each attribute with all others of its tag, so a tag of a megabyte would take minutes. Comments,
// declarations and processing instructions have no attributes.
bool hasOverlongTag(const QByteArray& bytes)
{
    for (qsizetype start = bytes.indexOf('<'); start >= 0; start = bytes.indexOf('<', start + 1)) {
        const bool isTag = start + 1 < bytes.size() && bytes[start + 1] != '!' && bytes[start + 1] != '?';
        if (isTag
            && !QByteArrayView(bytes)
                    .sliced(start)
                    .first(std::min(maxPropertyListTag, bytes.size() - start))
                    .contains('>'))
            return true;
    }
    return false;
}

// Walks the document from its first token to its last. Any error makes an operation return std::nullopt, which rejects
// the whole document.
class Reader {
public:
    explicit Reader(const QByteArray& bytes)
        : m_xml(bytes)
    {
        m_xml.setNamespaceProcessing(false);
        m_xml.setEntityExpansionLimit(0);
    }

    std::optional<PropertyValue> document();

private:
    QXmlStreamReader::TokenType nextMarkup();
    bool findRoot();
    bool isPlainElement() const { return m_xml.attributes().isEmpty(); }
    bool hasKnownEncoding() const;
    bool isPlainDoctype() const;
    bool endElement() { return nextMarkup() == QXmlStreamReader::EndElement; }

    std::optional<ClearingText> elementText();
    std::optional<PropertyValue> value(int depth);
    std::optional<PropertyValue> scalar(const QString& element);
    std::optional<PropertyValue> array(int depth);
    std::optional<PropertyValue> dictionary(int depth);

    QXmlStreamReader m_xml;
    int m_values { 0 };
};

std::optional<qint64> integerOf(const QString& text)
{
    bool valid = false;
    const qint64 number = text.trimmed().toLongLong(&valid);
    return valid ? std::optional(number) : std::nullopt;
}

std::optional<double> realOf(const QString& text)
{
    bool valid = false;
    const double number = text.trimmed().toDouble(&valid);
    return valid && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<QDateTime> dateOf(const QString& text)
{
    auto date = QDateTime::fromString(text.trimmed(), QStringLiteral("yyyy-MM-dd'T'HH:mm:ss'Z'"));
    date.setTimeSpec(Qt::UTC);
    return date.isValid() ? std::optional(date) : std::nullopt;
}

std::optional<QByteArray> dataOf(const QString& text)
{
    QByteArray digits = text.toUtf8();
    digits.removeIf([](char character) { return character == ' ' || (character >= '\t' && character <= '\r'); });
    if (digits.size() % 4 != 0)
        return std::nullopt;
    auto decoded = QByteArray::fromBase64Encoding(digits, QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? std::optional(std::move(decoded.decoded)) : std::nullopt;
}

template <typename Content> std::optional<PropertyValue> valueOf(std::optional<Content> content)
{
    return content ? std::optional(PropertyValue { *std::move(content) }) : std::nullopt;
}

// The next token, skipping comments, processing instructions and white space between elements.
QXmlStreamReader::TokenType Reader::nextMarkup()
{
    while (!m_xml.atEnd()) {
        const auto token = m_xml.readNext();
        const bool space = token == QXmlStreamReader::Characters && m_xml.isWhitespace() && !m_xml.isCDATA();
        if (!space && token != QXmlStreamReader::Comment && token != QXmlStreamReader::ProcessingInstruction)
            return token;
    }
    return QXmlStreamReader::Invalid;
}

// Internal declarations are rejected: an entity would add text that is not in the element.
bool Reader::isPlainDoctype() const
{
    return m_xml.dtdName() == QLatin1String("plist") && !m_xml.text().contains(u'[');
}

// In other encodings the bytes of a tag may not be those that hasOverlongTag() looks for.
bool Reader::hasKnownEncoding() const
{
    constexpr std::array known { QLatin1String(""), QLatin1String("UTF-8"), QLatin1String("US-ASCII"),
        QLatin1String("ISO-8859-1") };
    return std::any_of(known.begin(), known.end(),
        [this](QLatin1String name) { return m_xml.documentEncoding().compare(name, Qt::CaseInsensitive) == 0; });
}

bool Reader::findRoot()
{
    if (nextMarkup() != QXmlStreamReader::StartDocument)
        return false;
    if (!m_xml.documentVersion().isEmpty() && m_xml.documentVersion() != QLatin1String("1.0"))
        return false;
    if (!hasKnownEncoding())
        return false;
    auto token = nextMarkup();
    if (token == QXmlStreamReader::DTD && isPlainDoctype())
        token = nextMarkup();
    if (token != QXmlStreamReader::StartElement || m_xml.name() != QLatin1String("plist"))
        return false;
    const auto attributes = m_xml.attributes();
    return attributes.isEmpty()
        || (attributes.size() == 1 && attributes.value(QLatin1String("version")) == QLatin1String("1.0"));
}

std::optional<PropertyValue> Reader::document()
{
    if (!findRoot() || nextMarkup() != QXmlStreamReader::StartElement)
        return std::nullopt;
    auto root = value(0);
    if (!root || !endElement() || nextMarkup() != QXmlStreamReader::EndDocument || m_xml.hasError())
        return std::nullopt;
    return root;
}

// Reads to the end of the element, which may contain only text.
std::optional<ClearingText> Reader::elementText()
{
    ClearingText text;
    while (true) {
        switch (m_xml.readNext()) {
        case QXmlStreamReader::Characters:
            text += m_xml.text();
            break;
        case QXmlStreamReader::EndElement:
            return unescapeFromXml(text);
        case QXmlStreamReader::Comment:
        case QXmlStreamReader::ProcessingInstruction:
            break;
        default:
            return std::nullopt;
        }
    }
}

// Reads the element that has just started, to its end.
std::optional<PropertyValue> Reader::value(int depth)
{
    if (!isPlainElement() || ++m_values > maxPropertyListValues)
        return std::nullopt;
    const QString element = m_xml.name().toString();
    const bool nests = element == QLatin1String("array") || element == QLatin1String("dict");
    if (!nests)
        return scalar(element);
    if (depth == maxPropertyListDepth)
        return std::nullopt;
    return element == QLatin1String("array") ? array(depth + 1) : dictionary(depth + 1);
}

std::optional<PropertyValue> Reader::scalar(const QString& element)
{
    if (element == QLatin1String("true") || element == QLatin1String("false"))
        return endElement() ? std::optional(PropertyValue { element == QLatin1String("true") }) : std::nullopt;
    const auto text = elementText();
    if (!text)
        return std::nullopt;
    if (element == QLatin1String("string"))
        return PropertyValue { *text };
    if (element == QLatin1String("integer"))
        return valueOf(integerOf(*text));
    if (element == QLatin1String("real"))
        return valueOf(realOf(*text));
    if (element == QLatin1String("date"))
        return valueOf(dateOf(*text));
    if (element == QLatin1String("data"))
        return valueOf(dataOf(*text));
    return std::nullopt;
}

std::optional<PropertyValue> Reader::array(int depth)
{
    PropertyArray elements;
    auto token = nextMarkup();
    for (; token == QXmlStreamReader::StartElement; token = nextMarkup()) {
        auto element = value(depth);
        if (!element)
            return std::nullopt;
        elements.push_back(*std::move(element));
    }
    return token == QXmlStreamReader::EndElement ? std::optional(PropertyValue { std::move(elements) }) : std::nullopt;
}

std::optional<PropertyValue> Reader::dictionary(int depth)
{
    PropertyTree entries;
    QSet<QString> keys;
    auto token = nextMarkup();
    for (; token == QXmlStreamReader::StartElement; token = nextMarkup()) {
        if (m_xml.name() != QLatin1String("key") || !isPlainElement())
            return std::nullopt;
        const auto key = elementText();
        if (!key || keys.contains(*key) || nextMarkup() != QXmlStreamReader::StartElement)
            return std::nullopt;
        auto content = value(depth);
        if (!content)
            return std::nullopt;
        keys.insert(*key);
        entries.push_back({ *key, *std::move(content) });
    }
    return token == QXmlStreamReader::EndElement ? std::optional(PropertyValue { std::move(entries) }) : std::nullopt;
}

} // namespace

std::optional<PropertyValue> readPropertyList(const QByteArray& bytes)
{
    if (bytes.size() > maxPropertyListSize || bytes.contains('\0') || hasOverlongTag(bytes))
        return std::nullopt;
    return Reader(bytes).document();
}
