#pragma once

#include "platform/AssertionHandler.h"

#include <string>
#include <vector>

// Records every failed assertion.
class RecordingAssertionHandler final : public AssertionHandler {
public:
    struct Failure {
        std::string method;
        std::string object;
        std::string file;
        int lineNumber;
        std::string description;
        bool operator==(const Failure&) const = default;
    };

    [[nodiscard]] bool handleFailureInMethod(
        const char* method, const char* object, const char* file, int lineNumber, const char* description) override
    {
        failures.push_back({ method, object, file, lineNumber, description });
        return goOn;
    }

    std::vector<Failure> failures;
    bool goOn { false }; // the handler's result; false in the product
};
