"""main.py BIN: runs the kernel tests inside the virtual machine with the programs in BIN. The environment variable
KERNEL_TESTS contains parts of the names of the tests to run, all if it is empty."""

import os
import pathlib
import signal
import sys
import time
import traceback

sys.path.append(str(pathlib.Path(__file__).parents[1] / "desktop"))

import crowd_test  # noqa: E402
import join_test  # noqa: E402
import link_test  # noqa: E402
import list_test  # noqa: E402
import recovery_test  # noqa: E402
import window_test  # noqa: E402
from world import World  # noqa: E402

MODULES = [list_test, join_test, link_test, recovery_test, crowd_test, window_test]
LIMIT = 400  # seconds; for a test that hangs outside of its waits
RESULTS = pathlib.Path("/run/results")


def give_up(_signal, _frame):
    raise TimeoutError(f"not over within {LIMIT} s")


def passes(test, world):
    print(f"-- {test.__name__.replace('_', ' ')}", flush=True)
    log = RESULTS / "pellvaned.log"
    start, size = time.monotonic(), log.stat().st_size if log.exists() else 0
    signal.alarm(LIMIT)
    try:
        world.tidy()
        test(world)
        signal.alarm(0)
        print(f"    passed in {time.monotonic() - start:.1f} s", flush=True)
        return True
    except BaseException as error:  # pylint: disable=broad-except
        signal.alarm(0)
        traceback.print_exc(file=sys.stdout)
        if log.exists():
            print("    pellvaned said:\n" + log.read_bytes()[size:].decode(errors="replace")[-3000:])
        print(f"    FAILED after {time.monotonic() - start:.1f} s", flush=True)
        if isinstance(error, KeyboardInterrupt):
            raise
        return False


def main():
    wanted = os.environ.get("KERNEL_TESTS", "").split()
    tests = [test for module in MODULES for test in module.TESTS
             if not wanted or any(part in test.__name__ for part in wanted)]
    if not tests:
        print("no test has such a name")
        return 1
    signal.signal(signal.SIGALRM, give_up)
    start = time.monotonic()
    world = World(sys.argv[1])
    print(f"The machine is ready after {time.clock_gettime(time.CLOCK_BOOTTIME):.0f} s, of which "
          f"{time.monotonic() - start:.0f} s for {len(world.air.access_points)} access points.", flush=True)
    failed = [test.__name__.replace("_", " ") for test in tests if not passes(test, world)]
    world.tidy()
    print(f"{len(tests) - len(failed)} of {len(tests)} tests passed in {time.monotonic() - start:.0f} s."
          + "".join(f"\n  failed: {name}" for name in failed), flush=True)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
