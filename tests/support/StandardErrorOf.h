#pragma once

#include "app/shared/SharedState.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

// What an operation writes to standard error.
template <typename Operation> std::string standardErrorOf(const Operation& operation)
{
    testing::internal::CaptureStderr();
    operation();
    return testing::internal::GetCapturedStderr();
}

// The same with traces asked for.
template <typename Operation> std::string tracesOf(const Operation& operation)
{
    __DEBUG__ = 1;
    std::string traces = standardErrorOf(operation);
    __DEBUG__ = 0;
    return traces;
}

// The lines of one class among the traces, in their order.
inline std::string linesOf(const std::string& className, const std::string& traces)
{
    std::istringstream stream(traces);
    std::string lines;
    for (std::string line; std::getline(stream, line);) {
        if (line.rfind("#### " + className + " - ", 0) == 0)
            lines += line + "\n";
    }
    return lines;
}
