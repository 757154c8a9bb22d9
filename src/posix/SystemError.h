#pragma once

#include <cerrno>
#include <system_error>

// The reason for the system call that has just failed.
[[nodiscard]] inline std::error_code lastSystemError()
{
    return { errno, std::generic_category() };
}
