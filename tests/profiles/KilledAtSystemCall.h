#pragma once

#include <functional>

// Runs work in a child process and kills it (SIGKILL) on entry to its nth system call, starting with 1.
// Ended: killed there. Finished: the work made fewer system calls. Failed: the child could not be traced or ended
// otherwise.
enum class KilledOutcome { Ended, Finished, Failed };
[[nodiscard]] KilledOutcome runKilledAtSystemCall(int nth, const std::function<void()>& work);
