#include "platform/StandardAssertionHandler.h"

#include "app/shared/Trace.h"

bool StandardAssertionHandler::handleFailureInMethod(
    const char* method, const char* object, const char* file, int lineNumber, const char* description)
{
    traceAlways("*** Assertion failure in %s - %s, %s:%d: %s\n", object, method, file, lineNumber, description);
    return false;
}
