#pragma once

#include <cstdlib>

// What must hold for every input. Also checked in builds without assertions.
inline void require(bool condition)
{
    if (!condition)
        std::abort();
}
