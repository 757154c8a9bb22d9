// Whatever bytes a network calls itself by: its text is one that XML carries and that leads back to the same bytes.

#include "platform/ByteText.h"
#include "tests/fuzz/Require.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <cstdint>

namespace {

QString throughXml(const QString& text)
{
    QByteArray document;
    QXmlStreamWriter writer(&document);
    writer.writeTextElement(QStringLiteral("string"), text);
    QXmlStreamReader reader(document);
    require(reader.readNextStartElement());
    QString result = reader.readElementText();
    require(!reader.hasError());
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray name(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString text = textFromBytes(name);
    require(text.isValidUtf16());
    require(throughXml(text) == text);
    require(bytesFromText(text) == name);
    // Also text that comes from elsewhere leads to some bytes and not out of its bounds.
    const QStringView units(reinterpret_cast<const char16_t*>(name.constData()), name.size() / 2);
    require(units.isEmpty() || !bytesFromText(units).isEmpty());
    return 0;
}
