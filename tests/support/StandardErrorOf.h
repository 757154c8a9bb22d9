#pragma once

#include "app/shared/SharedState.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

// What an operation writes to standard error.
template <typename Operation> std::string standardErrorOf(const Operation& operation)
{
    testing::internal::CaptureStderr();
    operation();
    return testing::internal::GetCapturedStderr();
}

// The same with debug traces enabled.
template <typename Operation> std::string tracesOf(const Operation& operation)
{
    __DEBUG__ = 1;
    std::string traces = standardErrorOf(operation);
    __DEBUG__ = 0;
    return traces;
}

// The lines that mention the class, in order.
inline std::string linesOf(const std::string& className, const std::string& written)
{
    std::istringstream stream(written);
    std::string lines;
    for (std::string line; std::getline(stream, line);) {
        if (line.find(className) != std::string::npos)
            lines += line + "\n";
    }
    return lines;
}

// The entry traces of these operations.
inline std::string entryLines(const std::string& className, const std::vector<std::string>& operations)
{
    std::string lines;
    for (const std::string& operation : operations)
        lines += "#### " + className + " - " + operation + " ####\n";
    return lines;
}
