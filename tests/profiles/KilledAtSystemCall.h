#pragma once

#include <functional>

// Runs work in a process of its own and ends it (SIGKILL) where it enters its nth system call, the first being 1.
// Ended, when it was; Finished, when the work took fewer system calls; Failed when it could not be followed or ended
// otherwise.
enum class KilledOutcome { Ended, Finished, Failed };
[[nodiscard]] KilledOutcome runKilledAtSystemCall(int nth, const std::function<void()>& work);
