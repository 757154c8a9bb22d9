#pragma once

#include <cerrno>
#include <system_error>

// The error of the system call that has just failed.
[[nodiscard]] inline std::error_code lastError()
{
    return { errno, std::generic_category() };
}
