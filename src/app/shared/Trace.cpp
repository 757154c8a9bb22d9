#include "app/shared/Trace.h"

#include "app/shared/SharedState.h"

#include <cstdarg>
#include <cstdio>

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
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
}

void traceAlways(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
}
