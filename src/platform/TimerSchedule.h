#pragma once

#include <chrono>

// When a repeating timer fires next.

// Firing times are multiples of the interval after the start. Of the times that pass while other callbacks run, the
// first is served late and the rest are skipped; times that pass during its own callback are all skipped. So
// is one that follows a late firing within a quarter of the interval: the late firing replaces it, because two readings
// so close together would show no difference.
//
// due: the firing time that was just served; fired: when it was served; now: when its callback returned.
[[nodiscard]] constexpr std::chrono::nanoseconds nextFiringTime(std::chrono::nanoseconds due,
    std::chrono::nanoseconds interval, std::chrono::nanoseconds fired, std::chrono::nanoseconds now)
{
    const auto passed = [&](std::chrono::nanoseconds time) { return time < due ? 0 : (time - due) / interval; };
    const std::chrono::nanoseconds next = due + interval * (passed(now) + 1);
    return next - fired < interval / 4 ? next + interval : next;
}
