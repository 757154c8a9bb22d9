"""The simulator and the utility as processes, and requests of another client to the simulated card."""

import contextlib
import json
import os
import pathlib
import socket
import struct
import subprocess
import time

# Seconds. Far longer than any wait takes, so that only a hanging program reaches it, on a slow or busy machine too.
LIMIT = 120.0


def wait_until(what, question, seconds=LIMIT):
    """Repeats the question and returns its first true answer; fails after the limit."""
    deadline = time.monotonic() + seconds
    while True:
        answer = question()
        if answer:
            return answer
        assert time.monotonic() < deadline, f"not within {seconds:.0f} s: {what}"
        time.sleep(0.1)


def holds_within(seconds, question):
    """Whether the answer becomes true in this time."""
    deadline = time.monotonic() + seconds
    while not question():
        if time.monotonic() >= deadline:
            return False
        time.sleep(0.1)
    return True


class Simulator:
    def __init__(self, folder, ejected=False):
        self._folder = pathlib.Path(folder)
        self.record = pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / "requests"
        arguments = ["--quiet", "--record", str(self.record)] + (["--ejected"] if ejected else [])
        self._process = subprocess.Popen(
            [self._folder / "pellvane-sim", *arguments], stdout=subprocess.PIPE, text=True)
        first = self._process.stdout.readline()
        assert first == "ready\n", f"the simulator said {first!r}"

    def control(self, *command):
        return subprocess.run(
            [self._folder / "pellvane-simctl", *command], check=True, stdout=subprocess.PIPE, text=True).stdout

    def status(self):
        return json.loads(self.control("status"))

    def requests(self):
        """All requests so far, oldest first, without a line that is still being written."""
        return [json.loads(line) for line in self.record.read_text().splitlines(keepends=True) if line.endswith("\n")]

    def structure_calls(self, start=0):
        """The structure calls from this index on."""
        return [request for request in self.requests() if request["kind"] == "structure"][start:]

    def calls(self, start=0):
        """The same as pairs of name and whether it is a set."""
        return [(request["name"], request["set"]) for request in self.structure_calls(start)]

    def input_of(self, name, start=0):
        """The input of the latest set with this name, in hexadecimal; None if there was none."""
        inputs = [request["input"] for request in self.structure_calls(start)
                  if request["set"] and request["name"] == name]
        return inputs[-1] if inputs else None

    def link(self):
        """The SSID of the network that the card is associated with; None without a link."""
        association = self.status()["association"]
        return association["ssid"] if association["state"] == "up" else None

    def end(self):
        self._process.terminate()
        assert self._process.wait(LIMIT) == 0, "the simulator failed"

    def kill(self):
        """A no-op after it has ended."""
        self._process.kill()
        self._process.wait(LIMIT)


class Utility:
    """The program under test."""

    _front = None

    def __init__(self, folder, **environment):
        self.process = subprocess.Popen(
            [pathlib.Path(folder) / "vantrel"], env={**os.environ, **environment},
            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        self.window = wait_until("a window opens", lambda: self._find_window("Vantrel"))

    def _find_window(self, title):
        assert self.process.poll() is None, f"the program ended: {self.process.stderr.read()}"
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"],
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout.split()
        return found[0] if found else None

    def press(self, *keys):
        """Sends keys to the open sheet, or to the main window."""
        subprocess.run(["xdotool", "windowactivate", "--sync", self._front or self.window,
                        "key", "--clearmodifiers", *keys], check=True)

    @contextlib.contextmanager
    def sheet(self, title, *opening):
        """Opens a sheet with these keys; without keys, waits for one that opens by itself. Input inside the with block
        goes to the sheet and must close it."""
        if opening:
            self.press(*opening)
        self._front = wait_until(f"the sheet {title!r} opens", lambda: self._find_window(title))
        yield
        wait_until(f"the sheet {title!r} closes", lambda: not self._find_window(title))
        self._front = None

    def type(self, text):
        subprocess.run(["xdotool", "type", "--clearmodifiers", "--delay", "50", text], check=True)

    def close(self):
        """Closes the window like the close button of its title bar."""
        subprocess.run(["xdotool", "windowclose", self.window], check=True)

    def processor_seconds(self):
        """Processor time used so far, in nanosecond resolution."""
        total = 0
        for task in pathlib.Path(f"/proc/{self.process.pid}/task").iterdir():
            total += int((task / "schedstat").read_text().split()[0])
        return total / 1e9

    def end(self):
        self.process.terminate()
        try:
            self.process.wait(LIMIT)
        except subprocess.TimeoutExpired:
            self.process.kill()
            raise


OPEN, STRUCTURE_CALL, SCALAR_CALL = 0, 1, 2


def send_set(socket_path, oid, record):
    """Sends one set request as another client of the driver; fails unless the driver accepts it."""
    with socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET) as client:
        client.settimeout(LIMIT)
        client.connect(socket_path)
        for kind, selector, data in ((OPEN, 0, b""), (STRUCTURE_CALL, oid | 0x00800000, record), (SCALAR_CALL, 1, b"")):
            client.send(struct.pack("=IIII", kind, selector, len(data), 0) + data)
            result, size = struct.unpack_from("=II", client.recv(65544))
            assert result == 0 and size == 0, f"request {oid:#010x} was refused"


def join_open_network(simulator, ssid):
    """Associates the card with an open network."""
    send_set(simulator.status()["socket"], 0x0D010102, struct.pack("=I32s", len(ssid), ssid))
    wait_until("the card is associated", lambda: simulator.status()["association"]["state"] == "up")
