#pragma once

#include "platform/AssertionHandler.h"

// Writes each failure as one line to standard error and lets no operation go on.
class StandardAssertionHandler final : public AssertionHandler {
public:
    [[nodiscard]] bool handleFailureInMethod(
        const char* method, const char* object, const char* file, int lineNumber, const char* description) override;
};
