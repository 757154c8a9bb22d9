"""The simulator and the utility as processes, and what a driver's other client can ask of the simulated card."""

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

    def calls(self):
        """The structure calls so far as (name, whether it is a set)."""
        return [(request["name"], request["set"]) for request in self.requests() if request["kind"] == "structure"]

    def end(self):
        self._process.terminate()
        assert self._process.wait(10) == 0, "the simulator did not end well"

    def kill(self):
        """Harmless when it has ended."""
        self._process.kill()
        self._process.wait(10)


class Utility:
    """The program under test."""

    def __init__(self, folder, **environment):
        self.process = subprocess.Popen(
            [pathlib.Path(folder) / "vantrel"], env={**os.environ, **environment},
            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        self.window = wait_until("a window opens", self._find_window)

    def _find_window(self):
        assert self.process.poll() is None, f"the program ended: {self.process.stderr.read()}"
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^Vantrel$"],
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout.split()
        return found[0] if found else None

    def press(self, *keys):
        subprocess.run(["xdotool", "windowactivate", "--sync", self.window, "key", "--clearmodifiers", *keys], check=True)

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
