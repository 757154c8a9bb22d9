#pragma once

#include "app/shared/SharedState.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

// What is written to standard error while an action runs, with the debug traces on or off.
inline std::string traced(bool debug, const std::function<void()>& action)
{
    testing::internal::CaptureStderr();
    __DEBUG__ = debug ? 1 : 0;
    action();
    __DEBUG__ = 0;
    return testing::internal::GetCapturedStderr();
}

// The lines of these operations, in this order.
inline std::string entries(const std::string& className, const std::vector<std::string>& methods)
{
    std::string lines;
    for (const std::string& method : methods)
        lines += "#### " + className + " - " + method + " ####\n";
    return lines;
}
