#pragma once

// Receives reports of impossible values. Throws nothing: the result tells the caller whether to continue.
class AssertionHandler {
public:
    virtual ~AssertionHandler() = default;
    // True if the caller should continue after the failed assertion, false if it must abort its operation.
    [[nodiscard]] virtual bool handleFailureInMethod(
        const char* method, const char* object, const char* file, int lineNumber, const char* description)
        = 0;
};

// The description of every failed assertion: "Invalid parameter not satisfying: %s" with the condition "FALSE".
inline constexpr char invalidParameter[] = "Invalid parameter not satisfying: FALSE";
