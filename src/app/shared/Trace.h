#pragma once

// Lines on standard error. Each text is written as it is given, its line end included.

// "#### CLASS - METHOD ####\n", when __DEBUG__ is set.
void traceEntry(const char* className, const char* method);

// A printf line, when __DEBUG__ is set.
[[gnu::format(printf, 1, 2)]] void trace(const char* format, ...);

// A printf line that is written whatever __DEBUG__ says.
[[gnu::format(printf, 1, 2)]] void traceAlways(const char* format, ...);
