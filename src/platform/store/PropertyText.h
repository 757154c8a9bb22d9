#pragma once

#include <QString>

// Texts on their way into a file and back. XML carries no control characters but tab, line feed and carriage return,
// no half of a surrogate pair and neither U+FFFE nor U+FFFF; a text that was typed or received may hold any of them.
// Each such UTF-16 unit is written as U+EEFF (private use) and four hexadecimal digits, and U+EEFF itself likewise.
// Every other text stands as it is.

[[nodiscard]] QString carriableText(const QString& text);

// The text that carriableText was given. A U+EEFF without four upper-case hexadecimal digits behind it, which
// carriableText never writes, stands as it is.
[[nodiscard]] QString textOfCarriable(const QString& carriable);

// One UTF-16 unit in the written form.
[[nodiscard]] QString escapedUnit(char16_t unit);

inline constexpr char16_t escapeUnit = 0xEEFF;
