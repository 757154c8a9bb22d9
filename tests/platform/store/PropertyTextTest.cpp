#include "platform/store/PropertyText.h"

#include "tests/platform/store/RandomTexts.h"

#include <gtest/gtest.h>

namespace {

TEST(PropertyText, KeepsPlainTexts)
{
    RandomTexts texts(1);
    for (int i = 0; i < 500; ++i) {
        const QString text = texts.plain();
        EXPECT_EQ(escapeForXml(text), text);
    }
    EXPECT_EQ(escapeForXml(QStringLiteral("\t\n\r")), QStringLiteral("\t\n\r"));
}

TEST(PropertyText, EscapesUnitsThatXmlCannotRepresent)
{
    const QString escape = QChar(0xEEFF);
    EXPECT_EQ(escapeForXml(QChar(u'\x01')), escape + QStringLiteral("0001"));
    EXPECT_EQ(escapeForXml(QChar(u'\0')), escape + QStringLiteral("0000"));
    EXPECT_EQ(escapeForXml(QChar(0xDC9F)), escape + QStringLiteral("DC9F"));
    EXPECT_EQ(escapeForXml(QChar(0xD83D)), escape + QStringLiteral("D83D"));
    EXPECT_EQ(escapeForXml(QChar(0xFFFE)), escape + QStringLiteral("FFFE"));
    EXPECT_EQ(escapeForXml(QChar(0xFFFF)), escape + QStringLiteral("FFFF"));
    EXPECT_EQ(escapeForXml(escape), escape + QStringLiteral("EEFF"));
    EXPECT_EQ(escapeForXml(QChar(0xFFFD)), QString(QChar(0xFFFD)));
}

TEST(PropertyText, EscapesReversedSurrogates)
{
    const QString reversed = QString(QChar(0xDC00)) + QChar(0xD800);
    EXPECT_EQ(escapeForXml(reversed).size(), 10);
    EXPECT_EQ(unescapeFromXml(escapeForXml(reversed)), reversed);
}

TEST(PropertyText, RoundTripsAnyText)
{
    RandomTexts texts(2);
    for (int i = 0; i < 5000; ++i) {
        const QString text = texts.any();
        const QString escaped = escapeForXml(text);
        EXPECT_EQ(unescapeFromXml(escaped), text);
        EXPECT_TRUE(escaped.isValidUtf16());
        for (const QChar unit : escaped)
            EXPECT_TRUE((unit >= u' ' && unit.unicode() < 0xFFFE) || unit == u'\t' || unit == u'\n' || unit == u'\r');
    }
}

TEST(PropertyText, KeepsMalformedEscapes)
{
    const QString escape = QChar(0xEEFF);
    for (const char16_t* rest : { u"", u"004", u"00G1", u"00ff", u"-001", u" 041" }) {
        const QString text = escape + QString::fromUtf16(rest);
        EXPECT_EQ(unescapeFromXml(text), text);
    }
    EXPECT_EQ(unescapeFromXml(escape + escape + QStringLiteral("0041")), escape + QStringLiteral("A"));
}

} // namespace
