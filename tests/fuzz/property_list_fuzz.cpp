#include "platform/store/PropertyList.h"
#include "platform/store/PropertyText.h"
#include "tests/fuzz/Require.h"

#include <cstring>

// Whatever is read is written and read again as the same. The input is taken for a text as well, in UTF-16 with all
// that may be wrong in it, which has to come back from a file.

namespace {

void exchange(const QByteArray& document)
{
    const auto root = readPropertyList(document);
    if (!root)
        return;
    const QByteArray written = writePropertyList(*root);
    require(readPropertyList(written) == root);
    require(writePropertyList(*readPropertyList(written)) == written);
    const auto dictionaries = dictionariesOf(*root);
    require(dictionaries || !areDictionariesOfTexts(*root));
    if (dictionaries)
        require(dictionariesOf(propertyValueOf(*dictionaries)) == dictionaries);
}

void carry(const QByteArray& bytes)
{
    QString text(bytes.size() / 2, Qt::Uninitialized);
    std::memcpy(text.data(), bytes.constData(), static_cast<std::size_t>(text.size()) * 2);
    require(unescapeFromXml(escapeForXml(text)) == text);
    const PropertyValue value { text };
    require(readPropertyList(writePropertyList(value)) == value);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    exchange(bytes);
    carry(bytes);
    return 0;
}
