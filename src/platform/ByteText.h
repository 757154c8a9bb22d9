#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

// A lossless mapping between bytes, which are usually but not always UTF-8, and text that can be displayed and
// stored in XML 1.0.
//
// Well-formed UTF-8 maps to itself. Each byte of a malformed sequence, or of a character that must not be displayed or
// stored, maps to the private-use character U+EF00 + byte. Such characters are control characters, line and paragraph
// separators, bidirectional formatting, the byte order mark, U+FFFE and U+FFFF, and U+EF00 to U+EFFF themselves, so
// that different bytes never share a text.

// Accepts any bytes; a zero byte does not end the text.
[[nodiscard]] QString textFromBytes(QByteArrayView bytes);

// The inverse; accepts any text, also text typed by the user. An unpaired surrogate becomes a question mark.
[[nodiscard]] QByteArray bytesFromText(QStringView text);

// The text for display: private-use characters are replaced by U+FFFD, so this text cannot be converted back.
// The text may contain more than the converted bytes.
[[nodiscard]] QString displayText(const QString& text);
