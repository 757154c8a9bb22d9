#pragma once

#include "platform/AssertionHandler.h"

// Writes each failure to standard error as one line and aborts the operation.
class StandardAssertionHandler final : public AssertionHandler {
public:
    [[nodiscard]] bool handleFailureInMethod(
        const char* method, const char* object, const char* file, int lineNumber, const char* description) override;
};
