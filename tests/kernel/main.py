"""main.py BIN: runs the kernel tests inside the virtual machine with the programs in BIN. Tests that do not disturb each
other run at the same time: each lane has a card of its own and its tests run one after the other. Two environment
variables: KERNEL_TESTS contains parts of the names of the tests to run, all if it is empty. KERNEL_LANE is set for a
process that runs only this lane, in a desktop session that was started for it."""

import fcntl
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import time
import traceback

sys.path.append(str(pathlib.Path(__file__).parents[1] / "desktop"))

import crowd_test  # noqa: E402
import join_test  # noqa: E402
import link_test  # noqa: E402
import list_test  # noqa: E402
import neighbourhood  # noqa: E402
import radios  # noqa: E402
import recovery_test  # noqa: E402
from access_points import Neighbourhood  # noqa: E402
from programs import wait_until  # noqa: E402
from world import REGISTRY, RESULTS, TREE, World  # noqa: E402

class Milestone:
    """Something for which the processes of the other lanes wait."""

    def __init__(self, name):
        self._file = pathlib.Path(f"/run/{name}")

    def reach(self):
        self._file.touch()

    def wait(self):
        wait_until(f"{self._file.name} is reached", self._file.exists, 300)


LIMIT = 600  # seconds; for a test that hangs outside of its waits
# What the windows and the tests do must not keep the kernel's radios waiting.
TEST_NICE = 10
OUTCOMES = RESULTS / "outcomes"
READY = Milestone("ready")

# The lanes start in this order, the longest first.
SESSION_LANES = ["sheets", "profiles"]
LANES = {
    "sheets": ["lists_the_networks_in_the_window", "joins_networks_from_the_sheets", "follows_the_link_in_the_window"],
    "profiles": ["joins_profiles_of_every_kind", "connects_the_active_profile_by_itself"],
    "joins": join_test.TESTS + crowd_test.TESTS,
    "lists": list_test.TESTS + recovery_test.TESTS,
    "link": link_test.TESTS,
}
# After the lanes: these need the whole machine.
LAST = crowd_test.LAST + recovery_test.LAST


def name_of(test):
    return test if isinstance(test, str) else test.__name__


def wanted(tests):
    parts = os.environ.get("KERNEL_TESTS", "").split()
    return [test for test in tests if not parts or any(part in name_of(test) for part in parts)]


def world_of(lane, folder):
    """The windows find the cards in the registries that the utility searches, the other lanes have registries of their
    own: a window must not meet their cards."""
    number = 0xC000 + 16 * (1 + [*LANES, "last"].index(lane))
    roots = {"sheets": pathlib.Path(os.environ.get("XDG_RUNTIME_DIR", "/run")) / "io-registry", "profiles": REGISTRY}
    return World(folder, f"card-{lane}", number, roots.get(lane, pathlib.Path(f"/run/registry-{lane}")))


def give_up(_signal, _frame):
    raise TimeoutError(f"not over within {LIMIT} s")


def report(lines):
    """Prints the lines without mixing them with those of other lanes."""
    with (RESULTS / "lock").open("w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        os.write(1, ("\n".join(lines) + "\n").encode(errors="backslashreplace"))


def run(test, world, lane, is_last):
    name = name_of(test).replace("_", " ")
    start, size = time.monotonic(), world.log.stat().st_size if world.log.exists() else 0
    outcome, details = "passed", []
    signal.alarm(LIMIT)
    try:
        test(world)
        if is_last or not world.window:
            world.tidy()
        signal.alarm(0)
    except Exception as error:  # pylint: disable=broad-except
        signal.alarm(0)
        outcome = "FAILED"
        details = traceback.format_exception(error)
        if world.window:
            details += world.window.describe_failure()
        if world.service:
            details += [world.service.describe_state()]
        if world.log.exists():
            details += ["pellvaned said:", world.log.read_bytes()[size:].decode(errors="replace")[-3000:]]
        world.abandon()
    lines = [line for text in world.said() + details for line in text.rstrip("\n").split("\n")]
    report([f"-- {name} ({lane}): {outcome} in {time.monotonic() - start:.1f} s", *(f"    {line}" for line in lines)])
    with OUTCOMES.open("a") as outcomes:
        outcomes.write(f"{outcome} {name_of(test)}\n")


def run_lane(lane, tests, folder):
    signal.signal(signal.SIGALRM, give_up)
    READY.wait()
    radios.connect()
    world = world_of(lane, folder)
    for test in tests:
        run(test, world, lane, test is tests[-1])
    world.leave()


def start_lane(lane, folder):
    """A process for the lane: a copy of this one, or one with a desktop session."""
    if lane in SESSION_LANES:
        return subprocess.Popen([TREE / "tests/desktop/in-virtual-display", folder, __file__],
                                env={**os.environ, "KERNEL_LANE": lane}, preexec_fn=lambda: os.nice(TEST_NICE)).pid
    child = os.fork()
    if child == 0:
        os.nice(TEST_NICE)
        try:
            run_lane(lane, wanted(LANES[lane]), folder)
        except BaseException:  # pylint: disable=broad-except
            report([f"The lane {lane} failed:", traceback.format_exc()])
        finally:
            os._exit(0)
    return child


def prepare(folder):
    radios.prepare()
    radios.run("insmod", TREE / "build/kernel/tree/controls.ko")
    radios.run("modprobe", "button")  # the power button ends a suspend
    # Several cards may have addresses of the same network.
    pathlib.Path("/proc/sys/net/ipv4/conf/all/arp_ignore").write_text("1")
    # Reading a program and its libraries for the first time takes seconds in the machine.
    for program in ("wpa_supplicant", "pellvaned"):
        subprocess.Popen([shutil.which(program) or f"{folder}/{program}", "-h"],
                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    Neighbourhood(neighbourhood.ALL)
    READY.reach()


def main(folder):
    lanes = [lane for lane in LANES if wanted(LANES[lane])]
    last = wanted(LAST)
    expected = [name_of(test) for test in [test for lane in lanes for test in wanted(LANES[lane])] + last]
    if not expected:
        print("no test has such a name")
        return 1
    start = time.monotonic()
    # The desktop sessions start meanwhile.
    processes = [start_lane(lane, folder) for lane in lanes if lane in SESSION_LANES]
    prepare(folder)
    report([f"The machine is ready after {time.clock_gettime(time.CLOCK_BOOTTIME):.0f} s, of which "
            f"{time.monotonic() - start:.0f} s for {len(neighbourhood.ALL)} access points."])
    processes += [start_lane(lane, folder) for lane in lanes if lane not in SESSION_LANES]
    for process in processes:
        os.waitpid(process, 0)
    if last:
        run_lane("last", last, folder)
    outcomes = dict(reversed(line.split()) for line in OUTCOMES.read_text().splitlines()) if OUTCOMES.exists() else {}
    failed = [name for name in expected if outcomes.get(name) != "passed"]
    report([f"{len(expected) - len(failed)} of {len(expected)} tests passed in {time.monotonic() - start:.0f} s.",
            *(f"  failed: {name.replace('_', ' ')}" for name in failed)])
    return 1 if failed else 0


def main_of_session(lane, folder):
    import window_test  # pylint: disable=import-outside-toplevel # needs the session
    run_lane(lane, [getattr(window_test, name) for name in wanted(LANES[lane])], folder)
    return 0


if __name__ == "__main__":
    session = os.environ.get("KERNEL_LANE")
    sys.exit(main_of_session(session, sys.argv[1]) if session else main(sys.argv[1]))
