#pragma once

#include <QString>

// XML 1.0 cannot represent control characters other than tab, line feed and carriage return, unpaired surrogates,
// U+FFFE and U+FFFF, but a text that was typed or received may contain any of them. Each such UTF-16 unit is written as
// U+EEFF (private use) followed by four upper-case hexadecimal digits, and so is U+EEFF itself. Any other text is
// unchanged.

[[nodiscard]] QString escapeForXml(const QString& text);

// The inverse of escapeForXml. A U+EEFF that is not followed by four upper-case hexadecimal digits is kept:
// escapeForXml never writes one.
[[nodiscard]] QString unescapeFromXml(const QString& escaped);
