#pragma once

// Where values that no code path can produce are reported. Nothing is thrown: the caller asks whether to go on.
class AssertionHandler {
public:
    virtual ~AssertionHandler() = default;
    // True when the caller is to continue behind the failed assertion, false when it must end its operation.
    [[nodiscard]] virtual bool handleFailureInMethod(
        const char* method, const char* object, const char* file, int lineNumber, const char* description)
        = 0;
};

// The description of every failed assertion: "Invalid parameter not satisfying: %s" with the condition "FALSE".
inline constexpr char invalidParameter[] = "Invalid parameter not satisfying: FALSE";
