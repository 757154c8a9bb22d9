#include "platform/store/PropertyList.h"
#include "platform/store/PropertyText.h"

#include <QLatin1String>
#include <QXmlStreamWriter>

namespace {

class Writer {
public:
    explicit Writer(QByteArray& bytes)
        : m_xml(&bytes)
    {
        m_xml.setAutoFormatting(true);
        m_xml.setAutoFormattingIndent(-1); // one tab per level
    }

    bool document(const PropertyValue& root);

private:
    void element(QLatin1String name, const QString& text);
    bool value(const PropertyValue& value, int depth);

    // One overload per kind of value; false if it is nested too deep.
    bool content(const QString& text, int depth);
    bool content(bool yes, int depth);
    bool content(qint64 number, int depth);
    bool content(double number, int depth);
    bool content(const QDateTime& date, int depth);
    bool content(const QByteArray& data, int depth);
    bool content(const PropertyArray& array, int depth);
    bool content(const PropertyTree& tree, int depth);

    QXmlStreamWriter m_xml;
};

bool Writer::document(const PropertyValue& root)
{
    m_xml.writeStartDocument();
    m_xml.writeDTD(QStringLiteral("<!DOCTYPE plist>")); // without the usual URL, so that no reader fetches it
    m_xml.writeStartElement(QStringLiteral("plist"));
    m_xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
    const bool written = value(root, 0);
    m_xml.writeEndElement();
    m_xml.writeEndDocument();
    return written && !m_xml.hasError();
}

// XML readers convert a literal carriage return to a line feed; a character reference survives.
void Writer::element(QLatin1String name, const QString& text)
{
    m_xml.writeStartElement(name);
    const ClearingText escaped = escapeForXml(text);
    const auto parts = QStringView(escaped).split(u'\r');
    for (qsizetype i = 0; i < parts.size(); ++i) {
        if (i > 0)
            m_xml.writeEntityReference(QStringLiteral("#13"));
        if (!parts[i].isEmpty())
            m_xml.writeCharacters(parts.size() == 1 ? escaped : ClearingText(parts[i].toString()));
    }
    m_xml.writeEndElement();
}

bool Writer::value(const PropertyValue& value, int depth)
{
    return std::visit([this, depth](const auto& each) { return content(each, depth); }, value.content);
}

bool Writer::content(const QString& text, int)
{
    element(QLatin1String("string"), text);
    return true;
}

bool Writer::content(bool yes, int)
{
    m_xml.writeEmptyElement(yes ? QStringLiteral("true") : QStringLiteral("false"));
    return true;
}

bool Writer::content(qint64 number, int)
{
    element(QLatin1String("integer"), QString::number(number));
    return true;
}

bool Writer::content(double number, int)
{
    constexpr int digits = 17; // enough to read back any number unchanged
    element(QLatin1String("real"), QString::number(number, 'g', digits));
    return true;
}

bool Writer::content(const QDateTime& date, int)
{
    element(QLatin1String("date"), date.toUTC().toString(QStringLiteral("yyyy-MM-dd'T'HH:mm:ss'Z'")));
    return true;
}

bool Writer::content(const QByteArray& data, int)
{
    element(QLatin1String("data"), QString::fromLatin1(data.toBase64()));
    return true;
}

bool Writer::content(const PropertyArray& array, int depth)
{
    if (depth == maxPropertyListDepth)
        return false;
    m_xml.writeStartElement(QStringLiteral("array"));
    bool written = true;
    for (const PropertyValue& each : array)
        written = value(each, depth + 1) && written;
    m_xml.writeEndElement();
    return written;
}

bool Writer::content(const PropertyTree& tree, int depth)
{
    if (depth == maxPropertyListDepth)
        return false;
    m_xml.writeStartElement(QStringLiteral("dict"));
    bool written = true;
    for (const PropertyEntry& entry : tree) {
        element(QLatin1String("key"), entry.key);
        written = value(entry.value, depth + 1) && written;
    }
    m_xml.writeEndElement();
    return written;
}

} // namespace

QByteArray writePropertyList(const PropertyValue& root)
{
    constexpr qsizetype usualSize = 65536; // growing would leave copies of the keys behind
    QByteArray bytes;
    bytes.reserve(usualSize);
    return Writer(bytes).document(root) ? bytes : QByteArray();
}
