#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

#include <cstddef>
#include <span>

// A network name is bytes, usually but not always UTF-8 (IEEE 802.11 does not say). The text that stands for it can
// be shown, carried by XML 1.0 and turned back into the same bytes.
//
// Well-formed UTF-8 shows as itself. Every byte of what is not, or of a character that must not be shown or cannot
// be carried, shows as the private-use character U+EF00 + byte, whose upper half is the range in which OPTU encodings
// keep raw octets. Such characters are control characters, line and paragraph separators, bidirectional formatting,
// the byte order mark, U+FFFE and U+FFFF, and U+EF00 to U+EFFF themselves, so that no two names share a text.

// Any bytes; zero bytes are characters like others.
[[nodiscard]] QString textFromBytes(QByteArrayView bytes);
[[nodiscard]] QString textFromBytes(std::span<const std::byte> bytes);

// The bytes up to the first zero, or all of them.
[[nodiscard]] QString textUpToZero(std::span<const std::byte> bytes);

// The text as it is meant to be read: a byte that has no character of its own is U+FFFD here, so that this text no
// longer stands for the name. Any text may be given, also one that a name is part of.
[[nodiscard]] QString shownText(const QString& text);

// The bytes that a text stands for, of any text: also one that was typed. An unpaired surrogate, which is
// no character, becomes a question mark.
[[nodiscard]] QByteArray bytesFromText(QStringView text);
