"""The simulator and the utility as processes, and what a driver's other client can ask of the simulated card."""

import contextlib
import json
import os
import pathlib
import socket
import struct
import subprocess
import time


def wait_until(what, question, seconds=20.0):
    """The first true answer to the question, asked again and again; fails when the time is up."""
    deadline = time.monotonic() + seconds
    while True:
        answer = question()
        if answer:
            return answer
        assert time.monotonic() < deadline, f"not within {seconds:.0f} s: {what}"
        time.sleep(0.1)


def holds_within(seconds, question):
    """Whether the answer is true before the time is up."""
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
        """Every request so far, oldest first; a line that is still being written is left out."""
        return [json.loads(line) for line in self.record.read_text().splitlines(keepends=True) if line.endswith("\n")]

    def structure_calls(self, start=0):
        """The structure calls from this one on; from the first one, where none is told."""
        return [request for request in self.requests() if request["kind"] == "structure"][start:]

    def calls(self, start=0):
        """The same as (name, whether it is a set)."""
        return [(request["name"], request["set"]) for request in self.structure_calls(start)]

    def input_of(self, name, start=0):
        """The bytes of the newest set of this name, as hexadecimal digits; None where there was none."""
        inputs = [request["input"] for request in self.structure_calls(start)
                  if request["set"] and request["name"] == name]
        return inputs[-1] if inputs else None

    def link(self):
        """The name of the network that the card is associated with; None without a link."""
        association = self.status()["association"]
        return association["ssid"] if association["state"] == "up" else None

    def end(self):
        self._process.terminate()
        assert self._process.wait(10) == 0, "the simulator did not end well"

    def kill(self):
        """Harmless when it has ended."""
        self._process.kill()
        self._process.wait(10)


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
        """Keys for the main window, or for the sheet that is open over it."""
        subprocess.run(["xdotool", "windowactivate", "--sync", self._front or self.window,
                        "key", "--clearmodifiers", *keys], check=True)

    @contextlib.contextmanager
    def sheet(self, title, *opening):
        """The keys open the sheet; what is pressed and typed inside goes to it, and is to close it."""
        self.press(*opening)
        self._front = wait_until(f"the sheet {title!r} opens", lambda: self._find_window(title))
        yield
        wait_until(f"the sheet {title!r} closes", lambda: not self._find_window(title))
        self._front = None

    def type(self, text):
        subprocess.run(["xdotool", "type", "--clearmodifiers", "--delay", "50", text], check=True)

    def close(self):
        """As the close button of the title bar does."""
        subprocess.run(["xdotool", "windowclose", self.window], check=True)

    def processor_seconds(self):
        """What the process has used so far, in the kernel's own resolution."""
        total = 0
        for task in pathlib.Path(f"/proc/{self.process.pid}/task").iterdir():
            total += int((task / "schedstat").read_text().split()[0])
        return total / 1e9

    def end(self):
        self.process.terminate()
        self.process.wait(10)


OPEN, STRUCTURE_CALL, SCALAR_CALL = 0, 1, 2


def send_set(socket_path, oid, record):
    """One set request, as another program would send it; fails unless the driver accepts it."""
    with socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET) as client:
        client.settimeout(5)
        client.connect(socket_path)
        for kind, selector, data in ((OPEN, 0, b""), (STRUCTURE_CALL, oid | 0x00800000, record), (SCALAR_CALL, 1, b"")):
            client.send(struct.pack("=IIII", kind, selector, len(data), 0) + data)
            result, size = struct.unpack_from("=II", client.recv(65544))
            assert result == 0 and size == 0, f"request {oid:#010x} was refused"


def join_open_network(simulator, ssid):
    """Associates the card with an open network."""
    send_set(simulator.status()["socket"], 0x0D010102, struct.pack("=I32s", len(ssid), ssid))
    wait_until("the card is associated", lambda: simulator.status()["association"]["state"] == "up")
