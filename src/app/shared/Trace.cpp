#include "app/shared/Trace.h"

#include "app/shared/SharedState.h"
#include "app/shared/StandardStreams.h"

#include <cstdarg>
#include <cstdio>
#include <string>

namespace {

void write(const char* format, va_list arguments)
{
    va_list sameArguments;
    va_copy(sameArguments, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, sameArguments);
    va_end(sameArguments);
    if (length < 0)
        return;
    std::string text(static_cast<std::size_t>(length), '\0');
    (void)std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    writeToStandardError(text);
}

} // namespace

void traceEntry(const char* className, const char* method)
{
    trace("#### %s - %s ####\n", className, method);
}

void trace(const char* format, ...)
{
    if (__DEBUG__ == 0)
        return;
    va_list arguments;
    va_start(arguments, format);
    write(format, arguments);
    va_end(arguments);
}

void traceAlways(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    write(format, arguments);
    va_end(arguments);
}
