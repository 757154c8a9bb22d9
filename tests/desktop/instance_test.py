"""One window per user and display, and what other programs may learn from the process."""

import os
import pathlib
import subprocess
import sys

from programs import LIMIT, Utility, wait_until

FOLDER = pathlib.Path(sys.argv[1])


def windows():
    return subprocess.run(["xdotool", "search", "--name", "^Vantrel$"], stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, text=True).stdout.split()


def active_window():
    return subprocess.run(["xdotool", "getactivewindow"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          text=True).stdout.strip()


def start_again(**environment):
    """Starts the program a second time; it ends at once."""
    second = subprocess.run([FOLDER / "vantrel"], env={**os.environ, **environment}, stdout=subprocess.DEVNULL,
                            timeout=LIMIT, check=False)
    assert second.returncode == 0, second.returncode


def shows_the_first_window_again(utility):
    subprocess.run(["xdotool", "windowminimize", "--sync", utility.window], check=True)
    wait_until("the window is not active", lambda: active_window() != utility.window)
    before = windows()
    start_again()
    wait_until("the window is in front", lambda: active_window() == utility.window)
    assert windows() == before, (before, windows())
    assert utility.process.poll() is None


def user_time(utility):
    shown = subprocess.run(["xprop", "-id", utility.window, "_NET_WM_USER_TIME"], check=True, stdout=subprocess.PIPE,
                           text=True).stdout
    return int(shown.split("=")[1]) if "=" in shown else None


def ends_the_launch_feedback_of_a_second_start(utility):
    """As a desktop does that shows a busy pointer until the launched program has a window."""
    time = (user_time(utility) or 0) + 1000
    heard = pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / "heard"
    with heard.open("w") as output:
        listener = subprocess.Popen(["stdbuf", "-oL", "xev", "-root", "-event", "property"], stdout=output)

    def listens():
        subprocess.run(["xprop", "-root", "-f", "VANTREL_TEST", "8s", "-set", "VANTREL_TEST", "x"], check=True)
        return "VANTREL_TEST" in heard.read_text()

    try:
        wait_until("the listener listens", listens)
        start_again(DESKTOP_STARTUP_ID=f"test_TIME{time}")
        wait_until("the window has the time of the launch", lambda: user_time(utility) == time)
        wait_until("the launch is ended", lambda: "_NET_STARTUP_INFO_BEGIN" in heard.read_text())
    finally:
        listener.terminate()
        listener.wait(LIMIT)


def leaves_no_core_file(utility):
    limits = pathlib.Path(f"/proc/{utility.process.pid}/limits").read_text()
    soft = next(line for line in limits.splitlines() if line.startswith("Max core file size")).split()[4]
    assert soft == "0", limits


def starts_after_a_crash(utility):
    utility.process.kill()
    utility.process.wait(LIMIT)
    wait_until("its window is gone", lambda: not windows())
    again = Utility(FOLDER)
    again.end()


def starts_without_a_runtime_directory(_utility):
    """Twice, because nothing tells one from the other."""
    del os.environ["XDG_RUNTIME_DIR"]
    first, second = Utility(FOLDER), Utility(FOLDER)
    wait_until("two windows are open", lambda: len(windows()) >= 2)
    second.end()
    first.end()


def main():
    utility = Utility(FOLDER)
    try:
        for step in (shows_the_first_window_again, ends_the_launch_feedback_of_a_second_start, leaves_no_core_file,
                     starts_after_a_crash, starts_without_a_runtime_directory):
            step(utility)
            print("the program " + step.__name__.replace("_", " "), flush=True)
    finally:
        utility.process.kill()
    return 0


if __name__ == "__main__":
    sys.exit(main())
