#pragma once

// Trace output on standard error. Texts are written unchanged and include their line end.

// Writes "#### CLASS - METHOD ####\n" if __DEBUG__ is set.
void traceEntry(const char* className, const char* method);

// Writes a formatted line if __DEBUG__ is set.
[[gnu::format(printf, 1, 2)]] void trace(const char* format, ...);

// Writes a formatted line always.
[[gnu::format(printf, 1, 2)]] void traceAlways(const char* format, ...);
